// Layers: streams and effects, loaded on demand.
#include <algorithm>

#include "expressions/expression_index.h"
#include "layers/layer_parameter_index.h"
#include "model/comp.h"
#include "model/error.h"
#include "model/layer.h"
#include "model/project.h"
#include "streams/interpolation.h"
#include "streams/stream_kinds.h"

namespace host::model {
namespace {

// Streams of a layer from a file: the transform of a 2D layer.
constexpr std::size_t kUsualStreams = 5;

}  // namespace

// Loading

void Layer::set_content(std::shared_ptr<const LayerContent> content) {
    content_ = std::move(content);
    if (!awaits_loading() || !alive_) return;
    if (content_->has_expressions()) project().expressions().await(*this);
    if (content_->has_layer_parameters()) comp_->unloaded_layer_parameters_.push_back(this);
}

void Layer::ensure_loaded() {
    if (!awaits_loading() || loading_) return;
    loading_ = true;
    try {
        content_->load(*this);
    } catch (...) {
        loading_ = false;
        streams_.clear();
        if (extras_ != nullptr) {
            extras_->effects.clear();
            extras_->other_streams.clear();
        }
        throw;
    }
    loading_ = false;
    content_loaded_ = true;
    attach_all();
}

void Layer::attach_all() {
    for (NumberedStream& numbered : streams_) {
        if (numbered.stream != nullptr) attach(*numbered.stream);
    }
    for (const auto& effect : extras().effects) attach(*effect);
    for (const auto& stream : extras().other_streams) attach(*stream);
}

void Layer::attach(Effect& effect) {
    effect.attached_ = true;
    for (const auto& parameter : effect.parameters_) attach(*parameter);
}

// Streams of a layer that is loading are attached later, by attach_all().
void Layer::attach(Stream& stream) {
    if (loading_ || stream.attached_) return;
    stream.attached_ = true;
    stream.serial_ = ++project().last_stream_serial_;
    if (stream.has_expression()) project().expressions().touch(stream);
    if (stream.failed_) project().expressions().set_failed(stream, true);
    if (stream.type() == StreamType::layer_id) project().layer_parameters().touch(stream);
}

void Layer::detach(Stream& stream) {
    if (!stream.attached_) return;
    stream.attached_ = false;
    project().expressions().forget(stream);
    project().layer_parameters().forget(stream);
}

void Layer::load_stream(int number, std::shared_ptr<const StreamData> data, bool separated) {
    if (!is_stream_number(number)) throw Error(ErrorKind::bad_argument, "There is no layer stream of that number.");
    if (data == nullptr) data = project().still_data({});
    if (streams_.empty()) streams_.reserve(kUsualStreams);
    auto place = std::find_if(streams_.begin(), streams_.end(),
                              [number](const NumberedStream& numbered) { return numbered.number == number; });
    if (place == streams_.end()) {
        place = streams_.emplace(place);
    } else if (place->stream != nullptr) {
        detach(*place->stream);
    }
    *place = {number, separated, std::move(data)};
    if (!place->loaded->expression.empty()) created(*place);  // the indexes need it
}

void Layer::load_effect(std::unique_ptr<Effect> effect) {
    for (const auto& parameter : effect->parameters_) parameter->mark_loaded();
    mutable_extras().effects.push_back(std::move(effect));
    if (!loading_) attach_all();
}

Stream& Layer::load_other_stream(std::string name, std::shared_ptr<const StreamData> data) {
    auto stream = std::make_unique<Stream>(*this, StreamType::arbitrary, std::move(name), std::move(data));
    stream->mark_loaded();
    mutable_extras().other_streams.push_back(std::move(stream));
    attach(*mutable_extras().other_streams.back());
    return *mutable_extras().other_streams.back();
}

void Layer::copy_content(const Layer& original) {
    content_ = original.content_;
    if (original.awaits_loading()) return;
    content_loaded_ = original.content_loaded_;
    streams_.reserve(original.streams_.size());
    for (const NumberedStream& numbered : original.streams_) {
        streams_.push_back({numbered.number, numbered.separated, numbered.loaded});
        if (numbered.stream != nullptr) streams_.back().stream = std::make_unique<Stream>(*this, *numbered.stream);
    }
    for (const auto& effect : original.extras().effects)
        mutable_extras().effects.push_back(std::make_unique<Effect>(*this, *effect));
    for (const auto& stream : original.extras().other_streams) {
        mutable_extras().other_streams.push_back(std::make_unique<Stream>(*this, *stream));
    }
}

void Layer::map_layer_parameters(const std::function<LayerId(LayerId)>& map) {
    for (const auto& effect : extras().effects) {
        for (const auto& parameter : effect->parameters_) {
            if (parameter->type() != StreamType::layer_id) continue;
            parameter->data_ = with_mapped_layers(parameter->data_, map);
            parameter->changed(false);
        }
    }
}

// Streams

const Stream* Layer::existing_stream(int number) const {
    for (const NumberedStream& numbered : streams_) {
        if (numbered.number == number) return numbered.stream.get();
    }
    return nullptr;
}

bool Layer::has_changed_streams() const {
    return std::any_of(streams_.begin(), streams_.end(), [](const NumberedStream& numbered) {
        return numbered.stream != nullptr && numbered.stream->is_changed();
    });
}

bool Layer::is_stream_legal(int number) const {
    return is_stream_number(number) && is_stream_legal_for(number, *this);
}

Layer::NumberedStream& Layer::numbered_stream(int number) {
    if (!is_stream_number(number)) throw Error(ErrorKind::bad_argument, "There is no layer stream of that number.");
    ensure_loaded();
    for (NumberedStream& numbered : streams_) {
        if (numbered.number == number) return numbered;
    }
    streams_.push_back({number, false, default_stream_data(number)});
    return streams_.back();
}

Stream& Layer::created(NumberedStream& numbered) {
    if (numbered.stream == nullptr) {
        const StreamKind& kind = stream_kind(numbered.number);
        numbered.stream = std::make_unique<Stream>(*this, kind.type, kind.name, std::move(numbered.loaded));
        numbered.stream->set_separated(numbered.separated);
        numbered.stream->mark_loaded();
        attach(*numbered.stream);
    }
    return *numbered.stream;
}

Stream& Layer::stream(int number) {
    return created(numbered_stream(number));
}

Value Layer::stream_value(int number, Time t) {
    return value_at(numbered_stream(number).data(), stream_kind(number).type, t);
}

void Layer::set_own_stream(int number, const Value& value) {
    const StreamKind& kind = stream_kind(number);
    auto stream = std::make_unique<Stream>(*this, kind.type, kind.name, project().still_data(value));
    streams_.push_back({.number = number, .stream = std::move(stream)});
}

std::vector<Stream*> Layer::expression_streams() {
    ensure_loaded();
    std::vector<Stream*> all;
    const auto add = [&all](Stream& stream) {
        if (stream.can_vary_over_time()) all.push_back(&stream);
    };
    for (NumberedStream& numbered : streams_) add(created(numbered));
    for (const auto& effect : extras().effects) {
        for (const auto& parameter : effect->parameters_) add(*parameter);
    }
    for (const auto& stream : extras().other_streams) add(*stream);
    return all;
}

// A 2D layer has no depth and rotates about one axis only.
void Layer::drop_third_dimension() {
    ensure_loaded();
    for (NumberedStream& numbered : streams_) {
        const StreamData& data = numbered.data();
        switch (numbered.number) {
            case kAnchorPoint:
            case kPosition:
            case kScale: {
                const double depth = numbered.number == kScale ? 100 : 0;
                Value value = data.static_value;
                value.n[2] = depth;
                KeyframeList keyframes = data.keyframes;
                keyframes.for_each([depth](Keyframe& keyframe) {
                    keyframe.value.n[2] = depth;
                    keyframe.tangent_in.n[2] = 0;
                    keyframe.tangent_out.n[2] = 0;
                });
                if (value != data.static_value || keyframes != data.keyframes) {
                    created(numbered).replace(value, keyframes);
                }
                break;
            }
            case kRotateX:
            case kRotateY:
            case kOrientation:
                if (!data.expression.empty()) created(numbered).replace_expression_text({});
                if (!numbered.data().keyframes.empty() || numbered.data().static_value != Value{}) {
                    created(numbered).replace({}, {});
                }
                break;
            default:
                break;
        }
    }
}

// Effects

std::size_t Layer::effect_count() {
    ensure_loaded();
    return extras().effects.size();
}

Effect& Layer::effect(std::size_t index) {
    ensure_loaded();
    if (index >= extras().effects.size())
        throw Error(ErrorKind::bad_argument, "The layer has no effect of that index.");
    return *extras().effects[index];
}

std::string Layer::new_effect_name(const std::string& wanted) {
    Extras& all = mutable_extras();
    EffectNames& names = all.effect_names;
    if (names.count != all.effects.size()) {
        names = {};
        for (const auto& effect : all.effects) names.taken.insert(effect->name());
    }
    names.count = all.effects.size() + 1;
    if (names.taken.insert(wanted).second) return wanted;
    int& number = names.next_number.try_emplace(wanted, 2).first->second;
    std::string name;
    do {
        name = wanted + " " + std::to_string(number++);
    } while (!names.taken.insert(name).second);
    return name;
}

Effect& Layer::apply_effect(int kind_key) {
    require_editable();
    if (kind_ == LayerKind::camera || kind_ == LayerKind::light) {
        throw Error(ErrorKind::bad_argument, "Cameras and lights take no effects.");
    }
    auto kind = project().effect_kind(kind_key);
    if (kind == nullptr) throw Error(ErrorKind::bad_argument, "No effect of that key is installed.");
    ensure_loaded();
    std::string name = new_effect_name(kind->display_name);
    mutable_extras().effects.push_back(std::make_unique<Effect>(*this, std::move(kind), std::move(name)));
    attach(*mutable_extras().effects.back());
    note_change();
    project().undo().note([this] {
        note_change();
        Effect& undone = *mutable_extras().effects.back();
        undone.attached_ = false;
        for (const auto& parameter : undone.parameters_) detach(*parameter);
        project().retired_effects_.push_back(std::move(mutable_extras().effects.back()));
        mutable_extras().effects.pop_back();
    });
    return *mutable_extras().effects.back();
}

}  // namespace host::model
