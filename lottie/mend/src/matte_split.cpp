// Applies to layers that had a matte beside them, inside of the nest or around it: the matte is put directly above its
// user again where nothing but layers without a picture came between, and else named by its number.
#include "remedies.h"

namespace lottie::mend {
namespace {

void join(Unnested& unnested, const LayerText& before, LayerText& user, LayerText& matte) {
    user.set("tt", std::string(before.member("tt")));
    if (!matte.is_set("td")) matte.set("td", "1");
    matte.remove("hd");
    const std::size_t at = unnested.place_of(user);
    if (at > 0 && unnested.order()[at - 1] == &matte && before.member("tp").empty()) {
        user.remove("tp");
    } else {
        user.set("tp", std::to_string(unnested.number_of(matte)));
    }
}

}  // namespace

void mend_matte_split(Unnested& unnested, Nest& nest) {
    for (CopiedLayer& copy : nest.copies) {
        const auto matte = matte_inside(nest, copy);
        if (!matte || copy.now == nullptr || nest.copies[*matte].now == nullptr) continue;
        join(unnested, copy.before, *copy.now, *nest.copies[*matte].now);
    }
    for (std::size_t place = 0; place < unnested.stack().size(); ++place) {
        KeptLayer& layer = unnested.stack()[place];
        const auto matte = unnested.matte_in_stack(place);
        if (!matte || layer.now == nullptr || unnested.stack()[*matte].now == nullptr) continue;
        join(unnested, layer.before, *layer.now, *unnested.stack()[*matte].now);
    }
}

}  // namespace lottie::mend
