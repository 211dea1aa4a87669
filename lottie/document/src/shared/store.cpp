// Finding what the file says of the model's objects.
#include "shared/store.h"

#include <algorithm>
#include <type_traits>
#include <typeinfo>

#include "read/content_reader.h"
#include "shared/layer_types.h"

namespace lottie::document {

void StoredLayer::load(host::model::Layer& into) const {
    read_content(*this, into);
}

std::string StoredLayer::pointer() const {
    const std::string asset = comp->asset < 0 ? "" : comp->store->outline.asset_pointer(comp->asset);
    return asset + "/layers/" + std::to_string(position);
}

bool StoredLayer::is_3d() const {
    return (flags & host::model::kIs3D) != 0 || type == kCameraType || type == kLightType;
}

const StoredLayer* StoredComp::layer_of(std::int64_t ind) const {
    const auto found = std::lower_bound(inds.begin(), inds.end(), std::pair{ind, std::uint32_t{0}});
    return found == inds.end() || found->first != ind ? nullptr : &layers[found->second];
}

const StoredComp* Store::stored(const host::model::Comp& comp) const {
    const auto found = comp_of.find(&comp);
    return found == comp_of.end() ? nullptr : found->second;
}

const StoredLayer* base_of(const host::model::Layer& layer) {
    const host::model::LayerContent* content = layer.content().get();
    // No class derives from it, and this is asked of every layer.
    static_assert(std::is_final_v<StoredLayer>);
    return content != nullptr && typeid(*content) == typeid(StoredLayer) ? static_cast<const StoredLayer*>(content)
                                                                         : nullptr;
}

bool is_from_file(const host::model::Layer& layer) {
    if (layer.copied_from() != 0) return false;
    const StoredLayer* base = base_of(layer);
    return base != nullptr && base->layer == &layer;
}

}  // namespace lottie::document
