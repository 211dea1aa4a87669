// The `ind` of each layer of a composition as it is written.
#include "write/numbering.h"

#include <unordered_set>
#include <utility>

#include "document/json_text.h"
#include "write/matte_members.h"

namespace lottie::document {
namespace {

const host::model::Layer* layer_of_id(const host::model::Project& project, double id) {
    const auto whole = whole_number(id);
    return whole && std::in_range<host::model::LayerId>(*whole)
               ? project.layer_by_id(static_cast<host::model::LayerId>(*whole))
               : nullptr;
}

void add_layer_parameters(const host::model::Layer& layer, std::unordered_set<const host::model::Layer*>& referred) {
    const auto add = [&layer, &referred](const host::model::Value& value) {
        const host::model::Layer* named = layer_of_id(layer.project(), value.n[0]);
        if (named != nullptr) referred.insert(named);
    };
    for (const auto& effect : layer.loaded_effects()) {
        for (std::size_t i = 0; i < effect->parameter_count(); ++i) {
            const host::model::Stream& stream = effect->parameter(i);
            if (stream.type() != host::model::StreamType::layer_id) continue;
            add(stream.data().static_value);
            for (const host::model::Keyframe& key : stream.data().keyframes) add(key.value);
        }
    }
}

std::unordered_set<const host::model::Layer*> referred_layers(const std::vector<host::model::Layer*>& stack) {
    std::unordered_set<const host::model::Layer*> referred;
    const host::model::Layer* above = nullptr;
    for (const host::model::Layer* layer : stack) {
        if (layer->parent() != nullptr) referred.insert(layer->parent());
        if (names_matte(*layer, above)) referred.insert(layer->matte());
        add_layer_parameters(*layer, referred);
        above = layer;
    }
    return referred;
}

}  // namespace

Numbering::Numbering(const StoredComp* comp, const std::vector<host::model::Layer*>& stack) {
    const auto lacks_number = [](const host::model::Layer& layer) {
        return is_from_file(layer) && !base_of(layer)->ind;
    };
    std::unordered_set<const host::model::Layer*> referred;
    if (comp != nullptr && comp->inds.size() < comp->layers.size()) referred = referred_layers(stack);
    std::int64_t last = comp == nullptr ? 0 : comp->largest_ind();
    for (const host::model::Layer* layer : stack) {
        if (is_from_file(*layer) && !(lacks_number(*layer) && referred.count(layer) != 0)) continue;
        new_numbers_[layer] = ++last;
    }
    if (!stack.empty()) comp_ = &stack.front()->comp();
}

std::optional<std::int64_t> Numbering::number(const host::model::Layer& layer) const {
    const auto found = new_numbers_.find(&layer);
    if (found != new_numbers_.end()) return found->second;
    return is_from_file(layer) ? base_of(layer)->ind : std::nullopt;
}

std::int64_t Numbering::number_of_id(double id) const {
    const host::model::Layer* layer = comp_ == nullptr ? nullptr : layer_of_id(comp_->project(), id);
    if (layer == nullptr || &layer->comp() != comp_) return 0;
    return number(*layer).value_or(0);
}

}  // namespace lottie::document
