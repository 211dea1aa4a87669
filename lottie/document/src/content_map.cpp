// Where a layer's streams stand in the file.
#include "content_map.h"

namespace lottie::document {

const StreamPlace* place_of(int number, bool is_3d) {
    for (const StreamPlace& place : kStreamPlaces) {
        if (place.number == number && (place.needs == 0 || place.needs == (is_3d ? 3 : 2))) return &place;
    }
    return nullptr;
}

const Tree::Node* node_at(const Tree& tree, const StreamPlace& place) {
    const Tree::Node* group = place.group.empty() ? &tree.root() : tree.member(&tree.root(), place.group);
    const Tree::Node* node = tree.member(group, place.key);
    if (node != nullptr || place.number != host::model::kRotation) return node;
    return tree.member(group, place.key == "r" ? "rz" : "r");
}

host::model::Value default_value(int number) {
    switch (number) {
        case host::model::kScale:
            return {{100, 100, 100, 0}};
        case host::model::kOpacity:
            return {{100, 0, 0, 0}};
        default:
            return {};
    }
}

}  // namespace lottie::document
