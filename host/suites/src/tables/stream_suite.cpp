// Stream suite 4: streams of layers and effects, their values and expressions.
#include "calls/slot.h"
#include "refusals.h"
#include "tables/stream_values.h"
#include "tables/trapped_suite.h"

namespace host::suites {

namespace {

using model::Layer;

bool is_legal(Layer& layer, AEGP_LayerStream number) {
    return Layer::is_stream_number(number) && layer.is_stream_legal(number);
}

StreamRef layer_stream(HostState& host, Caller, Layer& layer, AEGP_LayerStream number) {
    const bool strict = host.project.rules().inapplicable_stream == model::InapplicableStream::error;
    if (strict && !is_legal(layer, number))
        refuse_state("Stream " + std::to_string(number) + " does not apply to layer " + std::to_string(layer.id()) +
                     ".");
    return {&layer, nullptr, &layer.stream(number)};
}

int parameter_count(EffectRef ref) {
    return static_cast<int>(ref.effect->parameter_count());
}

StreamRef effect_stream(Caller, EffectRef ref, PF_ParamIndex index) {
    if (index < 0) refuse_argument("There is no parameter " + std::to_string(index) + ".");
    return {ref.layer, ref.effect, &ref.effect->parameter(static_cast<std::size_t>(index))};
}

void dispose(HostState& host, HandleOf<StreamRef> handle) {
    host.ledger.dispose<StreamRef>(handle.handle);
}

bool can_vary(StreamRef ref) {
    return ref.stream->can_vary_over_time();
}
bool is_time_varying(StreamRef ref) {
    return ref.stream->is_time_varying();
}
int type_of(StreamRef ref) {
    return static_cast<int>(ref.stream->type());
}

// The host does not evaluate expressions; it only has the values before them.
NewValue value_at(HostState& host, Caller, StreamRef ref, TimeMode mode, const A_Time& time, bool pre_expression) {
    require_values(host, *ref.stream);
    if (!pre_expression && ref.stream->expression_state())
        refuse_as_unsupported("The host does not evaluate expressions; it has the value from before them.");
    return {ref, ref.stream->value_at(to_stream_time(from_plugin(time), mode, *ref.layer))};
}

// A record that was cleared, or filled by the plug-in, has nothing to dispose of.
void dispose_value(HostState& host, AEGP_StreamValue2& value) {
    const auto parts = decode(raw(value.streamH));
    if (!value.streamH || (parts && parts->kind == HandleKind::stream)) return;
    host.ledger.dispose<ValueRef>(raw(value.streamH));
}

void set_value(HostState& host, Caller, StreamRef ref, const AEGP_StreamValue2& value) {
    require_values(host, *ref.stream);
    if (ref.stream->is_time_varying()) refuse_state("The stream varies over time, so it takes no static value.");
    if (has_numbers(ref.stream->type())) ref.stream->set_static_value(value_for(host, *ref.stream, value));
}

bool expression_state(Caller, StreamRef ref) {
    return ref.stream->expression_state();
}

void set_expression_state(Caller, StreamRef ref, bool enabled) {
    ref.stream->set_expression_state(enabled);
}

Maybe<MemoryBlock> expression(HostState& host, Caller, StreamRef ref) {
    const bool null_if_none = host.project.rules().missing_expression == model::MissingExpression::null_handle;
    if (!ref.stream->has_expression() && null_if_none) return {};
    return {MemoryBlock::of_text("expression", ref.stream->data().expression)};
}

void set_expression(Caller, StreamRef ref, std::string_view text) {
    ref.stream->set_expression(text);
}

}  // namespace

template <>
AEGP_StreamSuite4 make_suite() {
    using Suite = AEGP_StreamSuite4;
    Suite s = trapped_suite<Suite>();
    s.AEGP_IsStreamLegal = slot<&Suite::AEGP_IsStreamLegal, is_legal>;
    s.AEGP_CanVaryOverTime = slot<&Suite::AEGP_CanVaryOverTime, can_vary>;
    s.AEGP_GetNewLayerStream = slot<&Suite::AEGP_GetNewLayerStream, layer_stream>;
    s.AEGP_GetEffectNumParamStreams = slot<&Suite::AEGP_GetEffectNumParamStreams, parameter_count>;
    s.AEGP_GetNewEffectStreamByIndex = slot<&Suite::AEGP_GetNewEffectStreamByIndex, effect_stream>;
    s.AEGP_DisposeStream = slot<&Suite::AEGP_DisposeStream, dispose>;
    s.AEGP_IsStreamTimevarying = slot<&Suite::AEGP_IsStreamTimevarying, is_time_varying>;
    s.AEGP_GetStreamType = slot<&Suite::AEGP_GetStreamType, type_of>;
    s.AEGP_GetNewStreamValue = slot<&Suite::AEGP_GetNewStreamValue, value_at>;
    s.AEGP_DisposeStreamValue = slot<&Suite::AEGP_DisposeStreamValue, dispose_value>;
    s.AEGP_SetStreamValue = slot<&Suite::AEGP_SetStreamValue, set_value>;
    s.AEGP_GetExpressionState = slot<&Suite::AEGP_GetExpressionState, expression_state>;
    s.AEGP_SetExpressionState = slot<&Suite::AEGP_SetExpressionState, set_expression_state>;
    s.AEGP_GetExpression = slot<&Suite::AEGP_GetExpression, expression>;
    s.AEGP_SetExpression = slot<&Suite::AEGP_SetExpression, set_expression>;
    return s;
}

}  // namespace host::suites
