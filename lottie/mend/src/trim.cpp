// Applies to nests that show each layer once at most: a layer was seen where both it and its nest were on, so its copy
// is on in what their two ranges have in common.
#include <algorithm>
#include <cmath>

#include "remedies.h"

namespace lottie::mend {
namespace {

// Where a layer begins or ends, on a clock that may miss whole frames by rounding: after one that `comes_before` it.
template <class Test>
double edge(double frame, Test comes_before) {
    constexpr double kJustAfter = 0.001;
    const double rounded = rounded_frame(frame);
    const bool is_whole = rounded == std::round(rounded);
    return is_whole && comes_before(rounded) ? rounded + kJustAfter : rounded;
}

// The frames at which a layer was seen; nothing if they are not one range.
std::optional<NestClock::Range> seen(const Nest& nest, const document::ScannedLayer& layer) {
    const double in = layer.in.value_or(0);
    const double out = layer.out.value_or(0);
    if (nest.facts().remaps_time || nest.facts().stretch <= 0) {
        auto range = nest.clock ? nest.clock->when(in, out) : std::nullopt;
        if (!range || range->in >= range->out) return range;
        const auto is_on = [&](double frame) {
            const double inner = nest.clock->inner(frame);
            return nest.facts().in <= frame && frame < nest.facts().out && in <= inner && inner < out;
        };
        range->in = edge(range->in, [&](double frame) { return !is_on(frame); });
        range->out = edge(range->out, is_on);
        return range;
    }
    return NestClock::Range{std::max(nest.facts().in.value_or(0), nest.outer_frame(in)),
                            std::min(nest.facts().out.value_or(0), nest.outer_frame(out))};
}

void mend_copy(const Nest& nest, CopiedLayer& copy) {
    auto range = seen(nest, copy.facts);
    if (!range) return;
    if (nest.matte) {
        range->in = std::max(range->in, nest.matte->layer.facts.in.value_or(0));
        range->out = std::min(range->out, nest.matte->layer.facts.out.value_or(0));
    }
    if (range->in < range->out) {
        copy.now->set_number("ip", range->in);
        copy.now->set_number("op", range->out);
        return;
    }
    // Never seen. Some players show the frame at which a layer ends, so an empty range is not enough.
    const double nest_in = nest.facts().in.value_or(0);
    const double at = std::clamp(range->in, nest_in, std::max(nest_in, nest.facts().out.value_or(0)));
    copy.now->set_number("ip", at);
    copy.now->set_number("op", at);
    if (!copy.now->is_set("td")) copy.now->set("hd", "true");
}

}  // namespace

void mend_trim(Unnested&, Nest& nest) {
    for (CopiedLayer& copy : nest.copies) {
        if (copy.now != nullptr) mend_copy(nest, copy);
    }
}

}  // namespace lottie::mend
