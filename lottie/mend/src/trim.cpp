// Applies to nests whose clock runs evenly forward: a layer was seen where both it and its nest were on, so its copy is
// on in what their two ranges have in common.
#include <algorithm>

#include "remedies.h"

namespace lottie::mend {
namespace {

void mend_copy(const Nest& nest, CopiedLayer& copy) {
    const double nest_in = nest.facts().in.value_or(0);
    const double nest_out = nest.facts().out.value_or(0);
    const double in = std::max(nest_in, nest.outer_frame(copy.facts.in.value_or(0)));
    const double out = std::min(nest_out, nest.outer_frame(copy.facts.out.value_or(0)));
    if (in < out) {
        copy.now->set_number("ip", in);
        copy.now->set_number("op", out);
        return;
    }
    // Never seen. Some players show the frame at which a layer ends, so an empty range is not enough.
    const double at = std::clamp(in, nest_in, std::max(nest_in, nest_out));
    copy.now->set_number("ip", at);
    copy.now->set_number("op", at);
    if (!copy.now->is_set("td")) copy.now->set("hd", "true");
}

}  // namespace

void mend_trim(Unnested&, Nest& nest) {
    if (nest.facts().remaps_time || nest.facts().stretch <= 0) return;
    for (CopiedLayer& copy : nest.copies) {
        if (copy.now != nullptr) mend_copy(nest, copy);
    }
}

}  // namespace lottie::mend
