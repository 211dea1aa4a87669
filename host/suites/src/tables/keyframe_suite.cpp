// Keyframe suite 4: keyframes one by one. Batches are in keyframe_batches.h.
#include <bit>
#include <cmath>
#include <tuple>

#include "calls/slot.h"
#include "model/keyframe_edit.h"
#include "refusals.h"
#include "tables/keyframe_batches.h"
#include "tables/stream_values.h"
#include "tables/trapped_suite.h"

namespace host::suites {

namespace {

using model::Keyframe;
using model::Stream;

int keyframe_count(HostState& host, StreamRef ref) {
    if (!ref.stream->can_vary_over_time()) return AEGP_NumKF_NO_DATA;
    return keeps_keys_in_followers(host, *ref.stream) ? 0 : static_cast<int>(ref.stream->keyframe_count());
}

Keyframe keyframe(const HostState& host, StreamRef ref, AEGP_KeyframeIndex index) {
    require_keyframes_here(host, *ref.stream);
    if (index < 0) refuse_argument("There is no keyframe " + std::to_string(index) + ".");
    return ref.stream->keyframe(static_cast<std::size_t>(index));
}

// Changes one keyframe through `change`; nothing is written if it throws.
template <class Change>
void edit(const HostState& host, StreamRef ref, AEGP_KeyframeIndex index, Change change) {
    Keyframe edited = keyframe(host, ref, index);
    change(edited);
    ref.stream->set_keyframe(static_cast<std::size_t>(index), edited);
}

A_Time keyframe_time(HostState& host, StreamRef ref, AEGP_KeyframeIndex index, TimeMode mode) {
    return to_plugin(from_stream_time(keyframe(host, ref, index).time, mode, *ref.layer), *ref.layer);
}

int insert(HostState& host, StreamRef ref, TimeMode mode, const A_Time& time) {
    require_keyframes_here(host, *ref.stream);
    return static_cast<int>(ref.stream->insert_keyframe(to_stream_time(from_plugin(time), mode, *ref.layer)));
}

NewValue value_of(HostState& host, Caller, StreamRef ref, AEGP_KeyframeIndex index) {
    require_values(host, *ref.stream);
    return {ref, keyframe(host, ref, index).value};
}

void set_value(HostState& host, StreamRef ref, AEGP_KeyframeIndex index, const AEGP_StreamValue2& value) {
    require_values(host, *ref.stream);
    edit(host, ref, index, [&](Keyframe& k) { k.value = value_for(host, *ref.stream, value); });
}

int temporal_dimensions(StreamRef ref) {
    return model::temporal_dimensions(ref.stream->type());
}

void require_spatial(const Stream& stream) {
    if (!model::is_spatial(stream.type())) refuse_argument("The stream is not spatial.");
}

std::tuple<OrNull<NewValue>, OrNull<NewValue>> tangents(HostState& host, Caller, StreamRef ref,
                                                        AEGP_KeyframeIndex index) {
    require_spatial(*ref.stream);
    const Keyframe k = keyframe(host, ref, index);
    return {{{ref, k.tangent_in}}, {{ref, k.tangent_out}}};
}

void set_tangents(HostState& host, StreamRef ref, AEGP_KeyframeIndex index, const AEGP_StreamValue2* in,
                  const AEGP_StreamValue2* out) {
    require_spatial(*ref.stream);
    edit(host, ref, index, [&](Keyframe& k) {
        const model::Value new_in = in ? value_for(host, *ref.stream, *in) : k.tangent_in;
        const model::Value new_out = out ? value_for(host, *ref.stream, *out) : k.tangent_out;
        model::set_tangents(k, new_in, new_out, host.project.rules());
    });
}

std::size_t ease_place(const Stream& stream, A_long dimension) {
    if (dimension < 0 || dimension >= model::temporal_dimensions(stream.type()))
        refuse_argument("The stream has no temporal dimension " + std::to_string(dimension) + ".");
    return static_cast<std::size_t>(dimension);
}

AEGP_KeyframeEase to_plugin(const model::Ease& ease) {
    return {ease.speed, ease.influence};
}

model::Ease from_plugin(const AEGP_KeyframeEase& ease) {
    if (!std::isfinite(ease.speedF) || !std::isfinite(ease.influenceF))
        refuse_argument("The ease is not a finite number.");
    return {ease.speedF, ease.influenceF};
}

std::tuple<OrNull<AEGP_KeyframeEase>, OrNull<AEGP_KeyframeEase>> ease(HostState& host, StreamRef ref,
                                                                      AEGP_KeyframeIndex index, A_long dimension) {
    const Keyframe k = keyframe(host, ref, index);
    const std::size_t place = ease_place(*ref.stream, dimension);
    return {{to_plugin(k.ease_in[place])}, {to_plugin(k.ease_out[place])}};
}

void set_ease(HostState& host, StreamRef ref, AEGP_KeyframeIndex index, A_long dimension, const AEGP_KeyframeEase* in,
              const AEGP_KeyframeEase* out) {
    const std::size_t place = ease_place(*ref.stream, dimension);
    edit(host, ref, index, [&](Keyframe& k) {
        const model::Ease new_in = in ? from_plugin(*in) : k.ease_in[place];
        const model::Ease new_out = out ? from_plugin(*out) : k.ease_out[place];
        model::set_ease(k, place, new_in, new_out, host.project.rules());
    });
}

int flags_of(HostState& host, StreamRef ref, AEGP_KeyframeIndex index) {
    return static_cast<int>(keyframe(host, ref, index).flags);
}

// One flag, or none: then nothing happens.
void set_flag(HostState& host, StreamRef ref, AEGP_KeyframeIndex index, AEGP_KeyframeFlags flag, bool on) {
    const auto bit = static_cast<std::uint32_t>(flag);
    if (bit > model::kRoving || (bit != 0 && !std::has_single_bit(bit)))
        refuse_argument(std::to_string(flag) + " is not one keyframe flag.");
    edit(host, ref, index, [&](Keyframe& k) { k.flags = on ? k.flags | bit : k.flags & ~bit; });
}

std::tuple<OrNull<int>, OrNull<int>> interpolation(HostState& host, StreamRef ref, AEGP_KeyframeIndex index) {
    const Keyframe k = keyframe(host, ref, index);
    return {{static_cast<int>(k.in)}, {static_cast<int>(k.out)}};
}

model::Interpolation interpolation_from(AEGP_KeyframeInterpolationType type) {
    if (type < AEGP_KeyInterp_NONE || type > AEGP_KeyInterp_HOLD)
        refuse_argument("There is no interpolation " + std::to_string(type) + ".");
    return static_cast<model::Interpolation>(type);
}

void set_interpolation(HostState& host, StreamRef ref, AEGP_KeyframeIndex index, AEGP_KeyframeInterpolationType in,
                       AEGP_KeyframeInterpolationType out) {
    edit(host, ref, index, [&](Keyframe& k) {
        k.in = interpolation_from(in);
        k.out = interpolation_from(out);
    });
}

}  // namespace

template <>
AEGP_KeyframeSuite4 make_suite() {
    using Suite = AEGP_KeyframeSuite4;
    Suite s = trapped_suite<Suite>();
    s.AEGP_GetStreamNumKFs = slot<&Suite::AEGP_GetStreamNumKFs, keyframe_count>;
    s.AEGP_GetKeyframeTime = slot<&Suite::AEGP_GetKeyframeTime, keyframe_time>;
    s.AEGP_InsertKeyframe = slot<&Suite::AEGP_InsertKeyframe, insert>;
    s.AEGP_GetNewKeyframeValue = slot<&Suite::AEGP_GetNewKeyframeValue, value_of>;
    s.AEGP_SetKeyframeValue = slot<&Suite::AEGP_SetKeyframeValue, set_value>;
    s.AEGP_GetStreamTemporalDimensionality = slot<&Suite::AEGP_GetStreamTemporalDimensionality, temporal_dimensions>;
    s.AEGP_GetNewKeyframeSpatialTangents = slot<&Suite::AEGP_GetNewKeyframeSpatialTangents, tangents>;
    s.AEGP_SetKeyframeSpatialTangents = slot<&Suite::AEGP_SetKeyframeSpatialTangents, set_tangents>;
    s.AEGP_GetKeyframeTemporalEase = slot<&Suite::AEGP_GetKeyframeTemporalEase, ease>;
    s.AEGP_SetKeyframeTemporalEase = slot<&Suite::AEGP_SetKeyframeTemporalEase, set_ease>;
    s.AEGP_GetKeyframeFlags = slot<&Suite::AEGP_GetKeyframeFlags, flags_of>;
    s.AEGP_SetKeyframeFlag = slot<&Suite::AEGP_SetKeyframeFlag, set_flag>;
    s.AEGP_GetKeyframeInterpolation = slot<&Suite::AEGP_GetKeyframeInterpolation, interpolation>;
    s.AEGP_SetKeyframeInterpolation = slot<&Suite::AEGP_SetKeyframeInterpolation, set_interpolation>;
    s.AEGP_StartAddKeyframes = slot<&Suite::AEGP_StartAddKeyframes, start_batch>;
    s.AEGP_AddKeyframes = slot<&Suite::AEGP_AddKeyframes, add_to_batch>;
    s.AEGP_SetAddKeyframe = slot<&Suite::AEGP_SetAddKeyframe, set_in_batch>;
    s.AEGP_EndAddKeyframes = slot<&Suite::AEGP_EndAddKeyframes, end_batch>;
    return s;
}

}  // namespace host::suites
