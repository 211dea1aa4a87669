// An effect's parameters in the file, as the flat list that hosts number.
#include "shared/effect_places.h"

#include <algorithm>
#include <array>

#include "document/json_text.h"
#include "shared/stream_places.h"

namespace lottie::document {
namespace {

using host::model::StreamType;

// Exporters write masks as if they were layers; the name of the parameter tells them apart.
bool names_mask(const JsonTree& tree, const JsonNode& parameter) {
    const std::string match_name = string_member(tree, parameter, "mn");
    const std::string name = string_member(tree, parameter, "nm");
    constexpr std::array<std::string_view, 3> kLayers = {"ADBE Layer Control-0001", "ADBE Set Matte3-0001",
                                                         "ADBE Displacement Map-0001"};
    constexpr std::array<std::string_view, 2> kMasks = {"ADBE Fill-0001", "ADBE Stroke-0001"};
    if (std::find(kLayers.begin(), kLayers.end(), match_name) != kLayers.end()) return false;
    if (std::find(kMasks.begin(), kMasks.end(), match_name) != kMasks.end()) return true;
    return name.find("Mask") != std::string::npos || name.find("Path") != std::string::npos;
}

StreamType type_of(const JsonTree& tree, const JsonNode& parameter, const JsonNode* property) {
    const std::size_t numbers = count_numbers(tree, property);
    const auto type = whole_number(number_member(tree, parameter, "ty").value_or(-1));
    if (numbers == 0) return StreamType::no_data;
    switch (type.value_or(-1)) {
        case 0:
        case 1:
        case 4:
        case 7:
            return StreamType::one_d;
        case 2:
            return StreamType::color;
        case 3:
            return numbers > 2 ? StreamType::three_d_spatial : StreamType::two_d_spatial;
        case 10:
            return names_mask(tree, parameter) ? StreamType::mask_id : StreamType::layer_id;
        case 11:
            return StreamType::mask_id;
        default:
            return StreamType::no_data;
    }
}

// The part of a parameter that a copy made call by call does not get; null if it gets all.
const JsonNode* left_out_by_copies(const JsonTree& tree, const ParameterPlace& place) {
    if (place.property == nullptr) return tree.member(place.node, "v");
    const JsonNode* expression = tree.member(place.property, "x");
    if (expression == nullptr || expression->kind != JsonKind::string) return nullptr;
    const JsonNode* value = tree.member(place.property, "k");
    const bool is_keyed = value != nullptr && value->kind == JsonKind::array && tree.first(*value) != nullptr &&
                          tree.first(*value)->kind == JsonKind::object;
    return is_keyed ? nullptr : value;
}

}  // namespace

std::string string_member(const JsonTree& tree, const JsonNode& object, std::string_view key) {
    const JsonNode* node = tree.member(&object, key);
    return node != nullptr && node->kind == JsonKind::string ? decode_string(tree.text(*node)) : std::string();
}

std::optional<double> number_member(const JsonTree& tree, const JsonNode& object, std::string_view key) {
    const JsonNode* node = tree.member(&object, key);
    return node != nullptr && node->kind == JsonKind::number ? std::optional(tree.number(*node)) : std::nullopt;
}

std::string fresh_name(const std::string& name) {
    const std::size_t digits = name.find_last_not_of("0123456789") + 1;
    return digits < name.size() && digits > 1 && name[digits - 1] == ' ' ? name.substr(0, digits - 1) : name;
}

std::vector<ParameterPlace> parameters_of(const JsonTree& tree, const JsonNode& effect) {
    std::vector<ParameterPlace> places;
    std::vector<const JsonNode*> open;  // what is still to be visited, next one last
    const auto visit_later = [&tree, &open](const JsonNode& group) {
        const JsonNode* list = tree.member(&group, "ef");
        if (list == nullptr || list->kind != JsonKind::array) return;
        const std::vector<const JsonNode*> inside = tree.children(*list);
        open.insert(open.end(), inside.rbegin(), inside.rend());
    };
    visit_later(effect);
    while (!open.empty()) {
        const JsonNode* node = open.back();
        open.pop_back();
        ParameterPlace& place = places.emplace_back();
        const JsonNode* property = tree.member(node, "v");
        place.node = node;
        place.type = type_of(tree, *node, property);
        if (place.type != StreamType::no_data) place.property = property;
        visit_later(*node);
    }
    return places;
}

std::string structure_of(const JsonTree& tree, const JsonNode& effect, const std::vector<ParameterPlace>& parameters) {
    std::string structure = string_member(tree, effect, "mn");
    const std::string separator = "\n";
    const bool has_match_name = !structure.empty();
    if (!has_match_name) structure = separator + std::to_string(number_member(tree, effect, "ty").value_or(-1));
    structure += separator + fresh_name(string_member(tree, effect, "nm"));
    for (const ParameterPlace& place : parameters) {
        structure += separator + std::to_string(static_cast<int>(place.type)) + separator +
                     string_member(tree, *place.node, has_match_name ? "mn" : "nm");
        if (const JsonNode* fixed = left_out_by_copies(tree, place))
            structure += separator + std::string(tree.text(*fixed));
    }
    return structure;
}

}  // namespace lottie::document
