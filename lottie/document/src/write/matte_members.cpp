// How a layer's matte, and being a matte, is told in the file.
#include "write/matte_members.h"

namespace lottie::document {

bool names_matte(const host::model::Layer& layer, const host::model::Layer* above) {
    if (layer.matte() == nullptr) return false;
    const StoredLayer* base = base_of(layer);
    return (base != nullptr && base->matte) || above != layer.matte();
}

bool keeps_empty_matte(const host::model::Layer& layer, const StoredLayer& base, const host::model::Layer* above) {
    return base.uses_matte && base.matte_layer == nullptr && layer.matte() == nullptr && above == nullptr;
}

MatteMarks marks_of(const host::model::Layer& layer, const StoredLayer& base) {
    const bool has_users = !layer.matte_users().empty();
    const bool is_visible = layer.has_flag(host::model::kVideoActive);
    MatteMarks marks;
    // What was odd in the file stays so: mattes that nobody uses, users of layers that are not marked.
    marks.is_matte = has_users ? base.is_matte || !base.had_matte_users : base.is_matte && !base.had_matte_users;
    marks.is_hidden = marks.is_matte ? base.is_hidden : !is_visible;
    return marks;
}

}  // namespace lottie::document
