// A layer's own streams (transform, time remapping, zoom, levels) in its text.
#include "write/stream_writer.h"

#include <array>
#include <map>
#include <memory>

#include "document/object_edit.h"
#include "shared/stream_places.h"
#include "write/position_dimensions.h"
#include "write/property_writer.h"

namespace lottie::document {
namespace {

using host::model::Layer;
using host::model::Stream;

constexpr std::array<std::string_view, 9> kTransformOrder = {"o", "rx", "ry", "r", "rz", "or", "p", "a", "s"};
constexpr std::array<std::string_view, 4> kSeparatedOrder = {"s", "x", "y", "z"};
constexpr int kFirstDimensionIx = 3;
constexpr std::size_t kSpaceDimensions = 3;

// Exporters say of a layer's place how many of its numbers count.
int counted_numbers(int number, bool is_3d) {
    const bool is_place =
        number == host::model::kPosition || number == host::model::kAnchorPoint || number == host::model::kScale;
    return is_place ? (is_3d ? 3 : 2) : 0;
}

bool applies(const StreamPlace& place, const Layer& layer) {
    if (place.number == host::model::kTimeRemapStream) return layer.has_flag(host::model::kTimeRemap);
    return place.needs != 3 || place.number == host::model::kRotation || layer.is_3d();
}

CurrentStream now_of(const Stream& stream, const StreamPlace& place, const Layer& layer) {
    return {place.type, stream.data(), layer.offset(), default_value(place.number), 0};
}

std::string new_property(const WriteContext& context, Layer& layer, const StreamPlace& place) {
    return property_text(context, now_of(layer.stream(place.number), place, layer), place.ix,
                         counted_numbers(place.number, layer.is_3d()));
}

class LayerStreams {
  public:
    LayerStreams(Patch& patch, ObjectEdit& root, const WriteContext& context, const ReadContext& base, Layer& layer)
        : patch_(patch),
          root_(root),
          context_(context),
          base_(base),
          tree_(base.tree),
          layer_(layer),
          was_3d_(base.layer.is_3d()) {}

    void edit() {
        if (has_turned()) turn();
        for (const StreamPlace& place : kStreamPlaces) {
            if (&place == place_of(place.number, was_3d_)) edit_stream(place);
        }
        finish_groups();
    }

  private:
    bool has_turned() const { return layer_.is_3d() != was_3d_; }

    // The group's edit; null if the layer has no such group.
    ObjectEdit* group(std::string_view name) {
        if (name.empty()) return &root_;
        auto& edit = groups_[name];
        const JsonNode* node = tree_.member(&tree_.root(), name);
        if (edit == nullptr && node != nullptr) edit = std::make_unique<ObjectEdit>(tree_, *node, kTransformOrder);
        return edit.get();
    }

    void add(const StreamPlace& place) {
        std::string text = new_property(context_, layer_, place);
        if (ObjectEdit* edit = group(place.group)) {
            edit->set(place.key, std::move(text));
        } else {
            new_members_[place.group] +=
                (new_members_[place.group].empty() ? "\"" : ",\"") + std::string(place.key) + "\":" + text;
        }
    }

    void edit_stream(const StreamPlace& place) {
        const Stream* stream = layer_.existing_stream(place.number);
        const JsonNode* node = node_at(tree_, place);
        if (!applies(place, layer_)) {
            if (node != nullptr && place.number == host::model::kTimeRemapStream) root_.remove(place.key);
            return;
        }
        if (node == nullptr) {
            if (is_missing(place, stream)) add(place);
            return;
        }
        const bool needs_depth = has_turned() && layer_.is_3d() && counted_numbers(place.number, true) != 0;
        const bool is_separate = place.number == host::model::kPosition && is_separated(tree_, node);
        if (stream == nullptr || !stream->is_changed()) {
            if (!needs_depth || is_separate) return;
            stream = &layer_.stream(place.number);
        }
        if (is_separate) {
            if (stream->loaded() != nullptr && is_same(stream->data(), *stream->loaded())) return;
            edit_separated(place, *node, *stream);
            return;
        }
        CurrentStream now = now_of(*stream, place, layer_);
        if (needs_depth) now.least_numbers = kSpaceDimensions;
        edit_property(patch_, context_, base_, *node, now);
    }

    const Stream* other_stream(const std::string& pointer) const {
        for (const auto& stream : layer_.other_streams()) {
            if (stream->name() == pointer) return stream.get();
        }
        return nullptr;
    }

    // One property for all dimensions, unless expressions act on single ones.
    void edit_separated(const StreamPlace& place, const JsonNode& node, const Stream& position) {
        if (!has_expressions(tree_, node) || has_tangents(position.data())) {
            patch_.replace(node.text, new_property(context_, layer_, place));
            return;
        }
        ObjectEdit edit(tree_, node, kSeparatedOrder);
        const Dimensions dimensions = separate(position.data());
        for (std::size_t d = 0; d < dimensions.size(); ++d) {
            host::model::StreamData data = dimensions[d];
            const JsonNode* old = tree_.member(&node, kDimensionKeys[d]);
            if (old != nullptr) {
                if (const Stream* own = other_stream(tree_.pointer(*old))) {
                    data.expression = own->data().expression;
                    data.expression_enabled = own->data().expression_enabled;
                }
                edit_property(patch_, context_, base_, *old,
                              {host::model::StreamType::one_d, data, layer_.offset(), {}, 0});
            } else if (!data.keyframes.empty() || data.static_value != host::model::Value{}) {
                edit.set(kDimensionKeys[d],
                         property_text(context_, {host::model::StreamType::one_d, data, layer_.offset(), {}, 0},
                                       kFirstDimensionIx + static_cast<int>(d), 0));
            }
        }
        edit.apply(patch_);
    }

    // Streams that nobody set exist with their defaults and need not be written.
    bool is_missing(const StreamPlace& place, const Stream* stream) const {
        if (place.number == host::model::kTimeRemapStream) return true;
        if (stream == nullptr || (has_turned() && place.needs != 0)) return false;
        host::model::StreamData untouched;
        untouched.static_value = default_value(place.number);
        return !is_same(stream->data(), untouched);
    }

    // Players tell 3D layers by their members, so all of them must be there, or none.
    void turn() {
        ObjectEdit* transform = group("ks");
        for (const int number :
             {int{host::model::kRotateX}, int{host::model::kRotateY}, int{host::model::kOrientation}}) {
            const StreamPlace& place = *place_of(number, true);
            if (layer_.is_3d()) {
                if (node_at(tree_, place) == nullptr) add(place);
            } else if (transform != nullptr) {
                transform->remove(place.key);
            }
        }
        const StreamPlace& rotation = *place_of(host::model::kRotation, layer_.is_3d());
        const JsonNode* node = node_at(tree_, rotation);
        if (node == nullptr) {
            add(rotation);
        } else if (!tree_.has_key(*node, rotation.key)) {
            transform->rename(place_of(host::model::kRotation, !layer_.is_3d())->key, rotation.key);
        }
    }

    void finish_groups() {
        for (auto& [name, edit] : groups_) {
            if (edit != nullptr) edit->apply(patch_);
        }
        for (const auto& [name, members] : new_members_) root_.set(name, "{" + members + "}");
    }

    Patch& patch_;
    ObjectEdit& root_;
    const WriteContext& context_;
    const ReadContext& base_;
    const JsonTree& tree_;
    Layer& layer_;
    bool was_3d_;
    std::map<std::string_view, std::unique_ptr<ObjectEdit>> groups_;
    std::map<std::string_view, std::string> new_members_;  // of groups that the layer lacks
};

}  // namespace

void edit_layer_streams(Patch& patch, ObjectEdit& root, const WriteContext& context, const ReadContext& base,
                        Layer& layer) {
    LayerStreams(patch, root, context, base, layer).edit();
}

std::string transform_text(const WriteContext& context, Layer& layer) {
    std::string out = "{";
    for (const StreamPlace& place : kStreamPlaces) {
        if (place.group != "ks" || &place != place_of(place.number, layer.is_3d())) continue;
        out += (out.size() == 1 ? "\"" : ",\"") + std::string(place.key) + "\":" + new_property(context, layer, place);
    }
    return out + "}";
}

std::string time_remap_text(const WriteContext& context, Layer& layer) {
    return new_property(context, layer, *place_of(host::model::kTimeRemapStream, false));
}

void edit_other_expressions(Patch& patch, const JsonTree& tree, const Layer& layer) {
    for (const auto& stream : layer.other_streams()) {
        if (!stream->is_changed()) continue;
        const JsonNode* property = tree.at(stream->name());
        if (property != nullptr) edit_expression(patch, tree, *property, stream->data());
    }
}

void shift_keyframes(Patch& patch, const ReadContext& base, host::model::Time shift) {
    const JsonTree& tree = base.tree;
    std::vector<const JsonNode*> open = {&tree.root()};
    while (!open.empty()) {
        const JsonNode& node = *open.back();
        open.pop_back();
        const JsonNode* keys = tree.member(&node, "k");
        if (keys != nullptr && keys->kind == JsonKind::array) {
            for (const JsonNode* key = tree.first(*keys); key != nullptr; key = tree.next(*key)) {
                const JsonNode* time = tree.member(key, "t");
                if (time == nullptr || time->kind != JsonKind::number) continue;
                patch.replace(time->text, base.clock().text(base.key_time(*time) + shift));
            }
        }
        for (const JsonNode* child = tree.first(node); child != nullptr; child = tree.next(*child))
            open.push_back(child);
    }
}

}  // namespace lottie::document
