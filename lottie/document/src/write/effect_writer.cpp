// A layer's effects in its text.
#include "write/effect_writer.h"

#include <array>

#include "document/json_text.h"
#include "document/object_edit.h"
#include "shared/effect_places.h"
#include "write/property_writer.h"

namespace lottie::document {
namespace {

constexpr std::array<std::string_view, 7> kEffectOrder = {"ty", "nm", "np", "mn", "ix", "en", "ef"};

// An effect's object, in the layer or in the pattern for fresh instances, edited to say what the effect has become.
class EffectEdit {
  public:
    EffectEdit(Patch& patch, const WriteContext& context, const ReadContext& base, const JsonNode& node,
               const host::model::Effect& effect)
        : patch_(patch),
          context_(context),
          base_(base),
          node_(node),
          effect_(effect),
          edit_(base.tree, node, kEffectOrder) {}

    ObjectEdit& members() { return edit_; }

    void finish(bool is_fresh) {
        const bool was_active = number_member(base_.tree, node_, "en").value_or(1) != 0;
        const bool is_active = (effect_.flags() & host::model::kEffectActive) != 0;
        if (was_active != is_active) edit_.set("en", is_active ? "1" : "0");
        edit_.apply(patch_);
        const std::vector<ParameterPlace> places = parameters_of(base_.tree, node_);
        for (std::size_t i = 0; i < places.size() && i + 1 < effect_.parameter_count(); ++i) {
            const host::model::Stream& stream = effect_.parameter(i + 1);
            // The number of a layer may differ although the layer is the same.
            const bool may_differ =
                is_fresh || stream.is_changed() || stream.type() == host::model::StreamType::layer_id;
            if (places[i].property == nullptr || !may_differ) continue;
            const host::model::Value missing = stream.type() == host::model::StreamType::color
                                                   ? host::model::Value{{0, 0, 0, 1}}
                                                   : host::model::Value{};
            edit_property(patch_, context_, base_, *places[i].property,
                          {stream.type(), stream.data(), effect_.owner().offset(), missing, 0});
        }
    }

  private:
    Patch& patch_;
    const WriteContext& context_;
    const ReadContext& base_;
    const JsonNode& node_;
    const host::model::Effect& effect_;
    ObjectEdit edit_;
};

// The stored form of this very instance; null if it is not one of that layer's.
const StoredEffect* stored_in(const host::model::Effect& effect, const StoredLayer& layer) {
    const auto* stored = dynamic_cast<const StoredEffect*>(effect.format_data().get());
    return stored != nullptr && stored->layer == &layer ? stored : nullptr;
}

// A copy of the first instance that the file has, with this one's name, place and values.
std::string fresh_text(const WriteContext& context, const host::model::Effect& effect, std::size_t place) {
    const auto* pattern = dynamic_cast<const StoredEffectKind*>(effect.kind().format_data.get());
    if (pattern == nullptr) return {};
    const std::string& text = context.store.text;
    const JsonTree tree(text, pattern->text);
    const ReadContext base{*pattern->layer, tree};
    Patch patch;
    EffectEdit edit(patch, context, base, tree.root(), effect);
    if (string_member(tree, tree.root(), "nm") != effect.name()) edit.members().set("nm", encode_string(effect.name()));
    if (number_member(tree, tree.root(), "ix") != static_cast<double>(place))
        edit.members().set("ix", std::to_string(place));
    edit.finish(true);
    OutputText out;
    patch.write(text, pattern->text, out);
    return out.text();
}

}  // namespace

void edit_effects(Patch& patch, ObjectEdit& root, const WriteContext& context, const ReadContext& base,
                  const host::model::Layer& layer) {
    const auto& effects = layer.loaded_effects();
    const JsonTree& tree = base.tree;
    const JsonNode* list = tree.member(&tree.root(), "ef");
    if (list == nullptr) {
        std::string text = effects_text(context, layer);
        if (!text.empty()) root.set("ef", std::move(text));
        return;
    }
    const std::vector<const JsonNode*> nodes = tree.children(*list);
    std::vector<Slice> units;
    for (const JsonNode* node : nodes) units.push_back(node->text);
    SequenceEdit sequence(tree.whole_text(), list->text, std::move(units));
    std::vector<bool> stays(nodes.size(), false);
    std::size_t place = 0;
    for (std::size_t i = 0; i < effects.size(); ++i) {
        if (const StoredEffect* stored = stored_in(*effects[i], base.layer)) {
            EffectEdit(patch, context, base, *nodes[stored->index], *effects[i]).finish(false);
            stays[stored->index] = true;
            place = stored->index + 1;
        } else if (std::string text = fresh_text(context, *effects[i], i + 1); !text.empty()) {
            sequence.insert_before(place, std::move(text));
        }
    }
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        if (!stays[i]) sequence.remove(i);
    }
    sequence.apply(patch);
}

std::string effects_text(const WriteContext& context, const host::model::Layer& layer) {
    std::string all;
    std::size_t place = 0;
    for (const auto& effect : layer.loaded_effects()) {
        const std::string text = fresh_text(context, *effect, ++place);
        if (!text.empty()) all += (all.empty() ? "[" : ",") + text;
    }
    return all.empty() ? all : all + "]";
}

}  // namespace lottie::document
