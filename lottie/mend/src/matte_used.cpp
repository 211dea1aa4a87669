// Applies to nests whose matte is one area within a hard edge, such as a filled path or a solid with a mask, and whose
// clock runs evenly: that area as a mask of each layer leaves of it what the matte left of all together. Players draw
// masks more alike than mattes.
#include "cut.h"
#include "remedies.h"

namespace lottie::mend {
namespace {

constexpr int kAlpha = 1;
constexpr int kAlphaInverted = 2;

bool has_other_users(Unnested& unnested, std::size_t matte) {
    for (std::size_t place = 0; place < unnested.stack().size(); ++place) {
        if (unnested.stack()[place].now != nullptr && unnested.matte_in_stack(place) == matte) return true;
    }
    return false;
}

}  // namespace

void mend_matte_used(Unnested& unnested, Nest& nest) {
    const auto place = unnested.matte_in_stack(nest.place);
    const int type = nest.facts().matte_type;
    if (!place || (type != kAlpha && type != kAlphaInverted) || nest.layer.before.is_set("hasMask") ||
        nest.facts().remaps_time || nest.facts().stretch <= 0) {
        return;
    }
    KeptLayer& matte = unnested.stack()[*place];
    if (matte.now == nullptr || matte.facts.matte_type != 0) return;
    const auto outline = unnested.evaluation().only_outline(unnested.composition(), *place);
    if (!outline) return;
    nest.matte.emplace(Nest::Matte{matte, *place, *outline});
    mend_trim(unnested, nest);
    cut_layers(unnested, nest, FrameCut::left_aside);
    // Without a user some players would draw it.
    if (has_other_users(unnested, *place)) return;
    matte.now->set("hd", "true");
}

}  // namespace lottie::mend
