// Where a layer's streams stand in the file.
#include "shared/stream_places.h"

namespace lottie::document {

const StreamPlace* place_of(int number, bool is_3d) {
    for (const StreamPlace& place : kStreamPlaces) {
        if (place.number == number && (place.needs == 0 || place.needs == (is_3d ? 3 : 2))) return &place;
    }
    return nullptr;
}

const JsonNode* node_at(const JsonTree& tree, const StreamPlace& place) {
    const JsonNode* group = place.group.empty() ? &tree.root() : tree.member(&tree.root(), place.group);
    const JsonNode* node = tree.member(group, place.key);
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

bool is_separated(const JsonTree& tree, const JsonNode* position) {
    const JsonNode* mark = tree.member(position, "s");
    const JsonNode* x = tree.member(position, "x");
    return mark != nullptr && (mark->kind == JsonKind::yes || mark->kind == JsonKind::number) && x != nullptr &&
           x->kind == JsonKind::object;
}

std::size_t count_numbers(const JsonTree& tree, const JsonNode* property) {
    const JsonNode* value = tree.member(property, "k");
    if (value == nullptr) return 0;
    if (value->kind == JsonKind::number || value->is_numeric) return tree.number_slices(*value).size();
    const JsonNode* first_key = value->kind == JsonKind::array ? tree.first(*value) : nullptr;
    const JsonNode* start = tree.member(first_key, "s");
    return start == nullptr ? 0 : tree.number_slices(*start).size();
}

}  // namespace lottie::document
