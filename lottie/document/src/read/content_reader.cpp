// A layer's streams and effects, read when the model first asks for them.
#include "read/content_reader.h"

#include <unordered_set>

#include "document/json_text.h"
#include "model/error.h"
#include "read/property_reader.h"
#include "read/separated_position.h"
#include "shared/effect_places.h"
#include "shared/stream_places.h"

namespace lottie::document {
namespace {

using host::model::StreamType;

class ContentReader {
  public:
    ContentReader(const StoredLayer& stored, host::model::Layer& layer)
        : stored_(stored),
          store_(*stored.comp->store),
          layer_(layer),
          tree_(store_.text, stored.text,
                stored.contains_expressions ? JsonTree::Depth::all : JsonTree::Depth::own_streams, stored.shapes),
          context_{stored, tree_} {}

    void read() {
        read_layer_streams();
        read_effects();
        if (stored_.contains_expressions) read_other_expressions();
    }

  private:
    void read_layer_streams() {
        for (const StreamPlace& place : kStreamPlaces) {
            if (&place != place_of(place.number, stored_.is_3d())) continue;
            const int number = place.number;
            const JsonNode* node = node_at(tree_, place);
            if (node == nullptr) continue;
            if (number == host::model::kPosition && is_separated(tree_, node)) {
                layer_.load_stream(number, read_separated_position(context_, *node, layer_));
                continue;
            }
            layer_.load_stream(number, read_property(*node, place.type, default_value(number)));
        }
    }

    std::shared_ptr<const host::model::StreamData> read_property(const JsonNode& node, StreamType type,
                                                                 const host::model::Value& missing) {
        read_properties_.insert(&node);
        const ParsedProperty property = parse_property(context_, node, type, missing);
        return property.is_still() ? store_.project->still_data(property.static_value) : property.data();
    }

    void read_effects() {
        const JsonNode* list = tree_.member(&tree_.root(), "ef");
        if (list == nullptr) return;
        std::size_t index = 0;
        for (const JsonNode* node = tree_.first(*list); node != nullptr; node = tree_.next(*node))
            read_effect(*node, index++);
    }

    void read_effect(const JsonNode& node, std::size_t index) {
        const std::vector<ParameterPlace> places = parameters_of(tree_, node);
        std::vector<std::unique_ptr<host::model::Stream>> streams;
        for (const ParameterPlace& place : places) {
            auto data = place.property == nullptr
                            ? std::make_shared<host::model::StreamData>()
                            : read_property(*place.property, place.type, missing_value(place.type));
            auto stream = std::make_unique<host::model::Stream>(
                layer_, place.type, string_member(tree_, *place.node, "nm"), std::move(data));
            stream->set_can_vary(place.property != nullptr);
            streams.push_back(std::move(stream));
        }
        std::string name = string_member(tree_, node, "nm");
        auto effect = std::make_unique<host::model::Effect>(layer_, kind_of(node, places, streams), std::move(name));
        for (std::size_t i = 0; i < streams.size(); ++i) effect->load_parameter(i + 1, std::move(streams[i]));
        if (number_member(tree_, node, "en").value_or(1) == 0) effect->load_flags(0);
        effect->set_format_data(std::make_shared<StoredEffect>(stored_, index, effect->flags()));
        layer_.load_effect(std::move(effect));
    }

    static host::model::Value missing_value(StreamType type) {
        return type == StreamType::color ? host::model::Value{{0, 0, 0, 1}} : host::model::Value{};
    }

    // An effect that the file uses is installed when it is met first; that instance is the pattern for fresh ones.
    std::shared_ptr<const host::model::EffectKind> kind_of(
        const JsonNode& node, const std::vector<ParameterPlace>& places,
        const std::vector<std::unique_ptr<host::model::Stream>>& streams) {
        auto& known = store_.effect_kinds[structure_of(tree_, node, places)];
        if (known != nullptr) return known;
        host::model::EffectKind kind;
        kind.display_name = fresh_name(string_member(tree_, node, "nm"));
        kind.match_name = string_member(tree_, node, "mn");
        if (kind.match_name.empty()) kind.match_name = kind.display_name;
        kind.parameters.push_back({"", StreamType::layer_id, true, {}});
        for (const auto& stream : streams) {
            const bool names_something =
                stream->type() == StreamType::layer_id || stream->type() == StreamType::mask_id;
            kind.parameters.push_back({stream->name(), stream->type(), stream->can_vary_over_time(),
                                       names_something ? host::model::Value{} : stream->data().static_value});
        }
        kind.format_data = std::make_shared<StoredEffectKind>(stored_, node.text);
        known = store_.project->install_effect(std::move(kind));
        return known;
    }

    // Shapes, masks and text keep their shape as bytes; only their expressions are known to the host.
    void read_other_expressions() {
        std::vector<const JsonNode*> open = {&tree_.root()};
        while (!open.empty()) {
            const JsonNode& node = *open.back();
            open.pop_back();
            const JsonNode* expression = tree_.member(&node, "x");
            const bool is_property =
                expression != nullptr && expression->kind == JsonKind::string && tree_.member(&node, "k") != nullptr;
            if (is_property && read_properties_.count(&node) == 0) read_other_expression(node, *expression);
            const std::vector<const JsonNode*> inside = tree_.children(node);
            open.insert(open.end(), inside.rbegin(), inside.rend());
        }
    }

    void read_other_expression(const JsonNode& property, const JsonNode& expression) {
        auto data = std::make_shared<host::model::StreamData>();
        data->expression = decode_string(tree_.text(expression));
        data->expression_enabled = !data->expression.empty();
        layer_.load_other_stream(tree_.pointer(property), std::move(data));
    }

    const StoredLayer& stored_;
    Store& store_;
    host::model::Layer& layer_;
    JsonTree tree_;
    ReadContext context_;
    std::unordered_set<const JsonNode*> read_properties_;
};

}  // namespace

void read_content(const StoredLayer& stored, host::model::Layer& layer) {
    ContentReader(stored, layer).read();
}

}  // namespace lottie::document
