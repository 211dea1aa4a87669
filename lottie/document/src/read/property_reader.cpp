// Reading a property: static value or keyframes, eases, expression.
#include "read/property_reader.h"

#include <algorithm>
#include <array>
#include <optional>

#include "document/json_text.h"
#include "model/error.h"
#include "model/layer.h"
#include "shared/ease.h"
#include "shared/refuse.h"

namespace lottie::document {
namespace {

using host::model::Interpolation;
using host::model::Keyframe;
using host::model::StreamType;
using host::model::Time;
using host::model::Value;

class PropertyParser {
  public:
    PropertyParser(const ReadContext& context, StreamType type, const Value& missing)
        : context_(context), tree_(context.tree), type_(type), missing_(missing) {}

    ParsedProperty parse(const JsonNode& node) {
        if (node.kind != JsonKind::object) context_.fail(node, "it must be an object");
        ParsedProperty property;
        property.node = &node;
        property.value = tree_.member(&node, "k");
        property.expression = tree_.member(&node, "x");
        if (property.expression != nullptr && property.expression->kind == JsonKind::string) {
            property.expression_text = decode_string(tree_.text(*property.expression));
        }
        property.static_value = missing_;
        if (property.value == nullptr) return property;  // a slot may hold the value
        const JsonNode& k = *property.value;
        const bool is_number = k.kind == JsonKind::number || (k.kind == JsonKind::array && k.is_numeric);
        if (is_number) {
            property.static_value = value_of(k);
        } else if (k.kind == JsonKind::array) {
            parse_keys(property);
        } else {
            context_.fail(k, "it must be a number or an array");
        }
        return property;
    }

  private:
    // Players differ on how exactly an animated number may be spelled; all spellings met are read.
    Value value_of(const JsonNode& node) const {
        const std::vector<double> numbers = tree_.numbers(node);
        const auto dimensions = static_cast<std::size_t>(host::model::value_dimensions(type_));
        Value value = missing_;
        for (std::size_t d = 0; d < std::min(numbers.size(), dimensions); ++d) value.n[d] = numbers[d];
        if (type_ == StreamType::layer_id) {
            const auto ind = whole_number(value.n[0]);
            const StoredLayer* named = ind.value_or(0) == 0 ? nullptr : context_.layer.comp->layer_of(*ind);
            value.n[0] = named == nullptr ? 0 : named->layer->id();
        }
        return value;
    }

    const JsonNode* value_node(const JsonNode& key, const char* name) const {
        const JsonNode* node = tree_.member(&key, name);
        if (node != nullptr && node->kind != JsonKind::number && !node->is_numeric)
            context_.fail(*node, "it must be an array of numbers");
        return node;
    }

    bool is_set(const JsonNode* node) const {
        return node != nullptr &&
               (node->kind == JsonKind::yes || (node->kind == JsonKind::number && tree_.number(*node) != 0));
    }

    void parse_keys(ParsedProperty& property) {
        for (const JsonNode* node : tree_.children(*property.value)) {
            if (node->kind != JsonKind::object) context_.fail(*node, "a keyframe must be an object");
            ParsedKey& parsed = property.keys.emplace_back();
            const JsonNode* time = tree_.member(node, "t");
            if (time == nullptr || time->kind != JsonKind::number)
                context_.fail(*node, "a keyframe must have a time \"t\"");
            parsed.node = node;
            parsed.file_time = context_.key_time(*time);
            parsed.key.time = parsed.file_time - context_.layer.offset;
        }
        read_values(property);
        const auto is_earlier = [](const ParsedKey& a, const ParsedKey& b) { return a.file_time < b.file_time; };
        property.is_in_order = std::is_sorted(property.keys.begin(), property.keys.end(), is_earlier);
        if (!property.is_in_order) std::stable_sort(property.keys.begin(), property.keys.end(), is_earlier);
        // Two keys at one time are a jump; the model has them one tick apart.
        for (std::size_t i = 1; i < property.keys.size(); ++i) {
            Time& time = property.keys[i].key.time;
            const Time before = property.keys[i - 1].key.time;
            if (time <= before) time = before + Time{1};
        }
        read_segments(property);
    }

    // Old files give a segment's end value instead of the next key's own.
    void read_values(ParsedProperty& property) const {
        const JsonNode* previous_end = nullptr;
        const ParsedKey* previous = nullptr;
        for (ParsedKey& parsed : property.keys) {
            const JsonNode* start = value_node(*parsed.node, "s");
            if (start == nullptr) start = previous_end;
            parsed.key.value = start != nullptr      ? value_of(*start)
                               : previous != nullptr ? previous->key.value
                                                     : missing_;
            previous_end = value_node(*parsed.node, "e");
            previous = &parsed;
        }
    }

    void read_segments(ParsedProperty& property) const {
        for (std::size_t i = 0; i < property.keys.size(); ++i) {
            const JsonNode& node = *property.keys[i].node;
            Keyframe& from = property.keys[i].key;
            Keyframe* to = i + 1 < property.keys.size() ? &property.keys[i + 1].key : nullptr;
            if (is_set(tree_.member(&node, "h"))) {
                from.out = Interpolation::hold;
            } else if (to != nullptr) {
                read_tangents(node, from, *to);
                read_eases(node, from, *to);
            }
            // Behind a hold nothing says how a key is entered; it is taken to be left the same way.
            const bool is_behind_hold = i > 0 && property.keys[i - 1].key.out == Interpolation::hold;
            if (is_behind_hold && from.out != Interpolation::hold) from.in = from.out;
        }
    }

    void read_tangents(const JsonNode& node, Keyframe& from, Keyframe& to) const {
        if (!host::model::is_spatial(type_)) return;
        const auto read = [this, &node](const char* name, Value& tangent) {
            const JsonNode* numbers = value_node(node, name);
            if (numbers == nullptr) return;
            const std::vector<double> all = tree_.numbers(*numbers);
            const auto dimensions = static_cast<std::size_t>(host::model::value_dimensions(type_));
            for (std::size_t d = 0; d < std::min(all.size(), dimensions); ++d) tangent.n[d] = all[d];
        };
        read("to", from.tangent_out);
        read("ti", to.tangent_in);
    }

    // A coordinate for one dimension; a missing one takes the first.
    std::optional<double> coordinate(const JsonNode& handle, const char* name, std::size_t dimension) const {
        const JsonNode* node = value_node(handle, name);
        if (node == nullptr) return std::nullopt;
        const std::vector<double> all = tree_.numbers(*node);
        if (all.empty()) return std::nullopt;
        return all[dimension < all.size() ? dimension : 0];
    }

    std::optional<EaseHandle> handle(const JsonNode& key, const char* name, std::size_t dimension) const {
        const JsonNode* node = tree_.member(&key, name);
        if (node == nullptr) return std::nullopt;
        if (node->kind != JsonKind::object) context_.fail(*node, "a keyframe's easing must be an object with x and y");
        const auto x = coordinate(*node, "x", dimension);
        const auto y = coordinate(*node, "y", dimension);
        if (!x || !y) return std::nullopt;
        return EaseHandle{*x, *y};
    }

    void read_eases(const JsonNode& node, Keyframe& from, Keyframe& to) const {
        const auto dimensions = static_cast<std::size_t>(host::model::temporal_dimensions(type_));
        bool is_linear = true;
        for (std::size_t d = 0; d < dimensions; ++d) {
            const double share = host::model::Ease{}.influence;
            const EaseHandle out = handle(node, "o", d).value_or(EaseHandle{share, share});
            const EaseHandle in = handle(node, "i", d).value_or(EaseHandle{1 - share, 1 - share});
            const SegmentMeasure segment = measure(type_, d, from, to);
            from.ease_out[d] = ease_out(out, segment);
            to.ease_in[d] = ease_in(in, segment);
            if (!can_hold(segment, from.ease_out[d], to.ease_in[d]))
                context_.fail(node, "the easing of a keyframe comes to a speed that no number can hold");
            is_linear = is_linear && out.is_diagonal() && in.is_diagonal();
        }
        from.out = to.in = is_linear ? Interpolation::linear : Interpolation::bezier;
    }

    const ReadContext& context_;
    const JsonTree& tree_;
    StreamType type_;
    Value missing_;
};

// The property that stands in the place of this one; null if it is its own.
const JsonNode* slot_of(const ReadContext& context, const JsonNode& property) {
    const JsonTree* slots = context.layer.comp->store->slots.get();
    const JsonNode* id = slots == nullptr ? nullptr : context.tree.member(&property, "sid");
    if (id == nullptr || id->kind != JsonKind::string) return nullptr;
    const JsonNode* slot = slots->member(&slots->root(), decode_string(context.tree.text(*id)));
    const JsonNode* value = slots->member(slot, "p");
    return slots->member(value, "k") == nullptr ? nullptr : value;
}

}  // namespace

void ReadContext::fail(const JsonNode& at, const std::string& fault) const {
    const std::string name = quoted_name(decode_string(layer.name.of(tree.whole_text())));
    const std::string pointer = layer.pointer() + JsonTree(tree.whole_text(), layer.text).pointer(at);
    const std::string sentence = "The content of layer " + name + " cannot be read: at " + pointer + ", " + fault + ".";
    try {
        refuse(tree.whole_text(), at.text.begin, pointer, sentence);
    } catch (const InputError& refusal) {
        std::optional<InputError>& first = layer.comp->store->content_fault;
        if (!first.has_value()) first = refusal;
    }
    throw host::model::Error(host::model::ErrorKind::bad_argument, sentence);
}

Time ReadContext::key_time(const JsonNode& time) const {
    const std::optional<Time> in_range = clock().time(tree.number(time));
    if (!in_range) fail(time, "the time of a keyframe " + std::string(kTooFar));
    return *in_range;
}

std::shared_ptr<const host::model::StreamData> ParsedProperty::data() const {
    auto data = std::make_shared<host::model::StreamData>();
    data->static_value = keys.empty() ? static_value : keys.front().key.value;
    std::vector<Keyframe> keyframes;
    keyframes.reserve(keys.size());
    for (const ParsedKey& parsed : keys) keyframes.push_back(parsed.key);
    data->keyframes = keyframes;
    data->expression = expression_text;
    data->expression_enabled = !expression_text.empty();
    return data;
}

ParsedProperty parse_property(const ReadContext& context, const JsonNode& node, StreamType type, const Value& missing) {
    const JsonNode* slot = slot_of(context, node);
    if (slot == nullptr) return PropertyParser(context, type, missing).parse(node);
    const ReadContext in_slots{context.layer, *context.layer.comp->store->slots};
    ParsedProperty property = PropertyParser(in_slots, type, missing).parse(*slot);
    property.node = &node;
    property.is_in_slot = true;
    return property;
}

}  // namespace lottie::document
