// JSON pointers to what an outline lists.
#include "document/outline.h"

namespace lottie::document {

std::string DocumentOutline::asset_pointer(int asset) const {
    return "/assets/" + std::to_string(asset);
}

std::string DocumentOutline::layers_pointer(const ScannedComp& comp) const {
    return comp.asset < 0 ? "/layers" : asset_pointer(comp.asset) + "/layers";
}

std::string DocumentOutline::layer_pointer(const ScannedComp& comp, std::size_t layer) const {
    return layers_pointer(comp) + "/" + std::to_string(layer);
}

}  // namespace lottie::document
