// Reading a property: static value or keyframes, eases, expression.
#include "property.h"

#include <algorithm>
#include <array>
#include <optional>

#include "ease.h"
#include "json_text.h"
#include "model/error.h"
#include "model/layer.h"
#include "refuse.h"

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

    ParsedProperty parse(const Tree::Node& node) {
        if (node.kind != Kind::object) context_.fail(node, "it must be an object");
        ParsedProperty property;
        property.node = &node;
        property.value = tree_.member(&node, "k");
        property.expression = tree_.member(&node, "x");
        if (property.expression != nullptr && property.expression->kind == Kind::string) {
            property.expression_text = decode_string(tree_.text(*property.expression));
        }
        property.static_value = missing_;
        if (property.value == nullptr) return property;  // a slot may hold the value
        const Tree::Node& k = *property.value;
        const bool is_number = k.kind == Kind::number || (k.kind == Kind::array && k.is_numeric);
        if (is_number) {
            property.static_value = value_of(k);
        } else if (k.kind == Kind::array) {
            parse_keys(property);
        } else {
            context_.fail(k, "it must be a number or an array");
        }
        return property;
    }

  private:
    // Players differ on how exactly an animated number may be spelled; all spellings met are read.
    Value value_of(const Tree::Node& node) const {
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

    const Tree::Node* value_node(const Tree::Node& key, const char* name) const {
        const Tree::Node* node = tree_.member(&key, name);
        if (node != nullptr && node->kind != Kind::number && !node->is_numeric)
            context_.fail(*node, "it must be an array of numbers");
        return node;
    }

    bool is_set(const Tree::Node* node) const {
        return node != nullptr && (node->kind == Kind::yes || (node->kind == Kind::number && tree_.number(*node) != 0));
    }

    void parse_keys(ParsedProperty& property) {
        for (const Tree::Node* node : tree_.children(*property.value)) {
            if (node->kind != Kind::object) context_.fail(*node, "a keyframe must be an object");
            ParsedKey& parsed = property.keys.emplace_back();
            const Tree::Node* time = tree_.member(node, "t");
            if (time == nullptr || time->kind != Kind::number)
                context_.fail(*node, "a keyframe must have a time \"t\"");
            parsed.node = node;
            parsed.file_time = context_.clock().clamped_time(tree_.number(*time));
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
        const Tree::Node* previous_end = nullptr;
        const ParsedKey* previous = nullptr;
        for (ParsedKey& parsed : property.keys) {
            const Tree::Node* start = value_node(*parsed.node, "s");
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
            const Tree::Node& node = *property.keys[i].node;
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

    void read_tangents(const Tree::Node& node, Keyframe& from, Keyframe& to) const {
        if (!host::model::is_spatial(type_)) return;
        const auto read = [this, &node](const char* name, Value& tangent) {
            const Tree::Node* numbers = value_node(node, name);
            if (numbers == nullptr) return;
            const std::vector<double> all = tree_.numbers(*numbers);
            const auto dimensions = static_cast<std::size_t>(host::model::value_dimensions(type_));
            for (std::size_t d = 0; d < std::min(all.size(), dimensions); ++d) tangent.n[d] = all[d];
        };
        read("to", from.tangent_out);
        read("ti", to.tangent_in);
    }

    // A coordinate for one dimension; a missing one takes the first.
    std::optional<double> coordinate(const Tree::Node& handle, const char* name, std::size_t dimension) const {
        const Tree::Node* node = value_node(handle, name);
        if (node == nullptr) return std::nullopt;
        const std::vector<double> all = tree_.numbers(*node);
        if (all.empty()) return std::nullopt;
        return all[dimension < all.size() ? dimension : 0];
    }

    std::optional<Handle> handle(const Tree::Node& key, const char* name, std::size_t dimension) const {
        const Tree::Node* node = tree_.member(&key, name);
        if (node == nullptr) return std::nullopt;
        if (node->kind != Kind::object) context_.fail(*node, "a keyframe's easing must be an object with x and y");
        const auto x = coordinate(*node, "x", dimension);
        const auto y = coordinate(*node, "y", dimension);
        if (!x || !y) return std::nullopt;
        return Handle{*x, *y};
    }

    void read_eases(const Tree::Node& node, Keyframe& from, Keyframe& to) const {
        const auto dimensions = static_cast<std::size_t>(host::model::temporal_dimensions(type_));
        bool is_linear = true;
        for (std::size_t d = 0; d < dimensions; ++d) {
            const double share = host::model::Ease{}.influence;
            const Handle out = handle(node, "o", d).value_or(Handle{share, share});
            const Handle in = handle(node, "i", d).value_or(Handle{1 - share, 1 - share});
            const SegmentMeasure segment = measure(type_, d, from, to);
            from.ease_out[d] = ease_out(out, segment);
            to.ease_in[d] = ease_in(in, segment);
            is_linear = is_linear && out.is_diagonal() && in.is_diagonal();
        }
        from.out = to.in = is_linear ? Interpolation::linear : Interpolation::bezier;
    }

    const ReadContext& context_;
    const Tree& tree_;
    StreamType type_;
    Value missing_;
};

// The property that stands in the place of this one; null if it is its own.
const Tree::Node* slot_of(const ReadContext& context, const Tree::Node& property) {
    const Tree* slots = context.layer.comp->store->slots.get();
    const Tree::Node* id = slots == nullptr ? nullptr : context.tree.member(&property, "sid");
    if (id == nullptr || id->kind != Kind::string) return nullptr;
    const Tree::Node* slot = slots->member(&slots->root(), decode_string(context.tree.text(*id)));
    const Tree::Node* value = slots->member(slot, "p");
    return slots->member(value, "k") == nullptr ? nullptr : value;
}

}  // namespace

void ReadContext::fail(const Tree::Node& at, const std::string& fault) const {
    const std::string name = quoted_name(decode_string(layer.name.of(tree.whole_text())));
    const std::string pointer = layer.pointer() + Tree(tree.whole_text(), layer.text).pointer(at);
    const std::string sentence = "The content of layer " + name + " cannot be read: at " + pointer + ", " + fault + ".";
    try {
        refuse(tree.whole_text(), at.text.begin, pointer, sentence);
    } catch (const InputError& refusal) {
        std::optional<InputError>& first = layer.comp->store->content_fault;
        if (!first.has_value()) first = refusal;
    }
    throw host::model::Error(host::model::ErrorKind::bad_argument, sentence);
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

ParsedProperty parse_property(const ReadContext& context, const Tree::Node& node, StreamType type,
                              const Value& missing) {
    const Tree::Node* slot = slot_of(context, node);
    if (slot == nullptr) return PropertyParser(context, type, missing).parse(node);
    const ReadContext in_slots{context.layer, *context.layer.comp->store->slots};
    ParsedProperty property = PropertyParser(in_slots, type, missing).parse(*slot);
    property.node = &node;
    property.is_in_slot = true;
    return property;
}

std::size_t count_numbers(const Tree& tree, const Tree::Node* property) {
    const Tree::Node* value = tree.member(property, "k");
    if (value == nullptr) return 0;
    if (value->kind == Kind::number || value->is_numeric) return tree.number_slices(*value).size();
    const Tree::Node* first_key = value->kind == Kind::array ? tree.first(*value) : nullptr;
    const Tree::Node* start = tree.member(first_key, "s");
    return start == nullptr ? 0 : tree.number_slices(*start).size();
}

}  // namespace lottie::document
