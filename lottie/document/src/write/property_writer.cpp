// Properties as the file spells them: new ones, and changes to those it has.
#include "write/property_writer.h"

#include <algorithm>
#include <array>

#include "document/json_text.h"
#include "document/object_edit.h"
#include "shared/stream_places.h"
#include "write/keyframe_writer.h"

namespace lottie::document {
namespace {

constexpr std::array<std::string_view, 5> kPropertyOrder = {"a", "k", "ix", "l", "x"};

std::string expression_of(const host::model::StreamData& data) {
    return data.expression_enabled ? data.expression : std::string();
}

// A property with one keyframe is static, to exporters and to players.
bool is_animated(const host::model::StreamData& data) {
    return data.keyframes.size() > 1;
}

host::model::Value static_value(const host::model::StreamData& data) {
    return data.keyframes.empty() ? data.static_value : data.keyframes.front().value;
}

std::size_t dimensions_of(host::model::StreamType type) {
    return static_cast<std::size_t>(host::model::value_dimensions(type));
}

// As many numbers as the file has in a value, and as many more as the value needs.
std::size_t count_needed(const CurrentStream& now, std::size_t in_file) {
    std::size_t needed = std::max(in_file, now.least_numbers);
    const auto look_at = [&needed, &now](const host::model::Value& value, const host::model::Value& missing) {
        for (std::size_t d = 0; d < dimensions_of(now.type); ++d) {
            if (value.n[d] != missing.n[d]) needed = std::max(needed, d + 1);
        }
    };
    look_at(static_value(now.data), now.missing);
    for (const host::model::Keyframe& key : now.data.keyframes) {
        look_at(key.value, now.missing);
        look_at(key.tangent_in, {});
        look_at(key.tangent_out, {});
    }
    return std::min(needed, dimensions_of(now.type));
}

void set_expression(ObjectEdit& edit, const JsonTree& tree, const JsonNode& property,
                    const host::model::StreamData& data) {
    const JsonNode* node = tree.member(&property, "x");
    const bool has_text = node != nullptr && node->kind == JsonKind::string;
    const std::string text = expression_of(data);
    if (has_text ? string_equals(tree.text(*node), text) : text.empty()) return;
    if (text.empty()) {
        edit.remove("x");
    } else {
        edit.set("x", encode_string(text));
    }
}

std::string static_text(const WriteContext& context, const CurrentStream& now, std::size_t numbers, bool as_array,
                        const JsonTree* tree = nullptr, const JsonNode* spelled = nullptr) {
    const std::string array = value_text(context, now.type, static_value(now.data), numbers, tree, spelled);
    return as_array || numbers > 1 ? array : array.substr(1, array.size() - 2);
}

}  // namespace

std::string property_text(const WriteContext& context, const CurrentStream& now, int ix, int l) {
    const std::size_t numbers = dimensions_of(now.type);
    const bool animated = is_animated(now.data);
    std::string out = animated ? "{\"a\":1,\"k\":" + keyframes_text(context, now, numbers)
                               : "{\"a\":0,\"k\":" + static_text(context, now, numbers, false);
    out += ",\"ix\":" + std::to_string(ix);
    if (l != 0) out += ",\"l\":" + std::to_string(l);
    const std::string expression = expression_of(now.data);
    if (!expression.empty()) out += ",\"x\":" + encode_string(expression);
    return out + "}";
}

void edit_property(Patch& patch, const WriteContext& context, const ReadContext& base, const JsonNode& node,
                   const CurrentStream& now) {
    const JsonTree& tree = base.tree;
    const ParsedProperty old = parse_property(base, node, now.type, now.missing);
    if (old.is_in_slot && is_same(now.data, *old.data())) return;
    ObjectEdit edit(tree, node, kPropertyOrder);
    if (old.is_in_slot) edit.remove("sid");  // the slot's value is no longer the property's
    set_expression(edit, tree, node, now.data);
    const std::size_t in_file = count_numbers(tree, &node);
    const std::size_t numbers = count_needed(now, in_file == 0 ? dimensions_of(now.type) : in_file);
    const bool was_animated = !old.is_in_slot && !old.keys.empty();
    if (is_animated(now.data) && was_animated) {
        edit_keyframes(patch, context, base, old, now, numbers);
    } else if (is_animated(now.data)) {
        if (edit.has("a")) edit.set("a", "1");
        edit.set("k", keyframes_text(context, now, numbers));
    } else {
        // A single keyframe of the file stays one while it is the same.
        const bool is_same_key = was_animated && old.keys.size() == 1 && now.data.keyframes.size() == 1 &&
                                 old.keys[0].key == now.data.keyframes[0];
        const bool is_same_value =
            !was_animated && !old.is_in_slot &&
            (old.value == nullptr ? static_value(now.data) == now.missing
                                  : is_spelled(context, now.type, static_value(now.data), numbers, tree, *old.value));
        if (!is_same_key && !is_same_value) {
            const bool was_static = !was_animated && !old.is_in_slot;
            if (!was_static && edit.has("a")) edit.set("a", "0");
            const bool as_array = was_static && old.value != nullptr && old.value->kind == JsonKind::array;
            edit.set("k", static_text(context, now, numbers, as_array, &tree, was_static ? old.value : nullptr));
        }
    }
    edit.apply(patch);
}

bool is_same(const host::model::StreamData& a, const host::model::StreamData& b) {
    return a.static_value == b.static_value && a.keyframes == b.keyframes && a.expression == b.expression &&
           a.expression_enabled == b.expression_enabled;
}

void edit_expression(Patch& patch, const JsonTree& tree, const JsonNode& property,
                     const host::model::StreamData& data) {
    ObjectEdit edit(tree, property, kPropertyOrder);
    set_expression(edit, tree, property, data);
    edit.apply(patch);
}

}  // namespace lottie::document
