// Layers: offset, trim, stretch.
#include <algorithm>
#include <cmath>
#include <optional>

#include "model/comp.h"
#include "model/error.h"
#include "model/layer.h"
#include "model/project.h"

namespace host::model {
namespace {

Time scaled(Time t, double factor) {
    return {std::llround(static_cast<double>(t.ticks) * factor)};
}

// The duration of a layer's source, if it limits the layer. Stills and layers without a source are unlimited, as are
// layers with time remapping.
std::optional<Time> limiting_duration(const Layer& layer) {
    Item* source = layer.source();
    if (source == nullptr || layer.has_flag(kTimeRemap)) return std::nullopt;
    if (const Comp* comp = source->comp()) {
        return comp->duration() > Time{} ? std::optional(comp->duration()) : std::nullopt;
    }
    if (source->footage().has_duration) return source->footage().duration;
    return std::nullopt;
}

}  // namespace

Time Layer::to_layer_time(Time comp_time) const {
    const Time since = comp_time - state_.offset;
    return stretch_ == 1 ? since : scaled(since, 1 / stretch_);
}

Time Layer::to_comp_time(Time layer_time) const {
    return state_.offset + (stretch_ == 1 ? layer_time : scaled(layer_time, stretch_));
}

void Layer::set_offset(Time offset) {
    require_editable();
    if (offset == state_.offset) return;
    State& state = writable_state();
    state.in_point += offset - state.offset;
    state.offset = offset;
}

void Layer::set_in_point_and_duration(Time in_point, Time duration) {
    require_editable();
    Time in = in_point;
    Time out = in_point + duration;
    if (out <= in) out = in + comp_->frame_duration();
    const Time least = std::min(comp_->frame_duration(), out - in);
    if (const auto source_duration = limiting_duration(*this)) {
        const Time end = to_comp_time(*source_duration);
        const Time earliest = std::min(state_.offset, end);
        const Time latest = std::max({state_.offset, end, earliest + least});
        in = std::clamp(in, earliest, latest - least);
        out = std::clamp(out, in + least, latest);
    }
    const bool as_asked = in == in_point && out == in_point + duration;
    if (!as_asked && project().rules().illegal_trim == IllegalTrim::error) {
        throw Error(ErrorKind::not_allowed, "The layer \"" + display_name() + "\" cannot be trimmed like that.");
    }
    if (in == state_.in_point && out - in == state_.duration) return;
    State& state = writable_state();
    state.in_point = in;
    state.duration = out - in;
}

void Layer::load_timing(Time offset, Time in_point, Time duration, double stretch) {
    state_.offset = offset;
    state_.in_point = in_point;
    state_.duration = duration;
    stretch_ = stretch == 0 ? 1 : stretch;
}

}  // namespace host::model
