// Where the layers of a stack changed by an un-nesting come from.
#include "cli/shared/origins.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace cli {
namespace {

using host::model::Comp;
using host::model::Layer;
using host::model::LayerId;
using lottie::looks::Origin;
using lottie::looks::StackChange;

// Unlike addresses, ids are never used again.
std::vector<LayerId> ids_of(const Comp& comp) {
    std::vector<LayerId> ids;
    for (const Layer* layer : comp.stack().to_vector()) ids.push_back(layer->id());
    return ids;
}

}  // namespace

Origins::Origins(const Comp& comp, const std::vector<Layer*>& nests) : before_(ids_of(comp)) {
    const std::unordered_set<const Layer*> wanted(nests.begin(), nests.end());
    std::size_t place = 0;
    for (const Layer* layer : comp.stack().to_vector()) {
        if (wanted.contains(layer)) {
            nests_.push_back(place);  // copies keep the order of the stack
            std::size_t inner_place = 0;
            for (const LayerId inner : ids_of(*layer->source()->comp()))
                originals_[inner].push_back({Origin::Kind::copied, inner_place++, place});
        }
        ++place;
    }
}

StackChange Origins::change_to(const Comp& comp, std::string id) {
    const auto after = comp.stack().to_vector();
    StackChange change;
    change.composition = std::move(id);
    change.nests = nests_;
    // Most of the stack is unchanged; only what lies between is looked up.
    const std::size_t shorter = std::min(before_.size(), after.size());
    std::size_t top = 0;
    while (top < shorter && before_[top] == after[top]->id()) ++top;
    std::size_t bottom = 0;
    while (bottom < shorter - top && before_[before_.size() - 1 - bottom] == after[after.size() - 1 - bottom]->id()) {
        ++bottom;
    }
    for (std::size_t i = top; i < before_.size() - bottom; ++i) kept_[before_[i]] = i;
    for (std::size_t i = 0; i < top; ++i) change.after.push_back({Origin::Kind::kept, i, 0});
    for (std::size_t i = top; i < after.size() - bottom; ++i) change.after.push_back(origin_of(*after[i]));
    for (std::size_t i = before_.size() - bottom; i < before_.size(); ++i) {
        change.after.push_back({Origin::Kind::kept, i, 0});
    }
    return change;
}

Origin Origins::origin_of(const Layer& layer) {
    if (const auto kept = kept_.find(layer.id()); kept != kept_.end()) return {Origin::Kind::kept, kept->second, 0};
    const auto copied = originals_.find(layer.copied_from());
    if (copied == originals_.end()) return {};
    // Nests that share a composition give several copies of one layer.
    const std::size_t number = copies_met_[layer.copied_from()]++;
    return number < copied->second.size() ? copied->second[number] : Origin{};
}

}  // namespace cli
