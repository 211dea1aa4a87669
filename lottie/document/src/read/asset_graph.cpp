// Which composition uses which asset, and whether that goes round in a circle.
#include "read/asset_graph.h"

#include <algorithm>

#include "document/json_text.h"
#include "shared/layer_types.h"
#include "shared/refuse.h"

namespace lottie::document {

AssetGraph::AssetGraph(const std::string& text, const DocumentOutline& outline)
    : text_(text), outline_(outline), first_users_(outline.assets.size()), longest_uses_(outline.assets.size()) {
    for (std::size_t i = 0; i < outline_.assets.size(); ++i) {
        const JsonToken& id = outline_.assets[i].id;
        const bool is_missing = id.kind == JsonKind::none || id.kind == JsonKind::null;
        if (id.kind != JsonKind::string && !is_missing) {
            refuse(text_, id.text.begin, outline_.asset_pointer(static_cast<int>(i)) + "/id",
                   "The \"id\" of an asset must be text in quotes.");
        }
        if (!is_missing) assets_.emplace(decode_string(id.text.of(text_)), static_cast<int>(i));
    }
    for (const ScannedComp& comp : outline_.comps) {
        for (const ScannedLayer& layer : comp.list) {
            const int shown = comp_shown_by(layer);
            if (shown < 0) continue;
            const auto asset = static_cast<std::size_t>(shown);
            if (first_users_[asset] == nullptr) first_users_[asset] = &layer;
            longest_uses_[asset] =
                std::max(longest_uses_[asset], (layer.out.value_or(0) - layer.start) / layer.stretch);
        }
    }
    check_cycles();
}

int AssetGraph::asset_of(const std::string& id) const {
    const auto found = assets_.find(id);
    return found == assets_.end() ? -1 : found->second;
}

int AssetGraph::comp_shown_by(const ScannedLayer& layer) const {
    if (layer.type != kCompType || layer.ref_id.empty()) return -1;
    const int asset = asset_of(decode_string(layer.ref_id.of(text_)));
    return asset >= 0 && outline_.assets[static_cast<std::size_t>(asset)].comp >= 0 ? asset : -1;
}

// Depth first over the compositions, with a path of its own: they may nest very deep.
void AssetGraph::check_cycles() const {
    struct NestingStep {
        std::size_t comp;
        std::size_t next_layer;
    };
    enum class VisitState : unsigned char { unvisited, on_path, done };
    std::vector<VisitState> states(outline_.comps.size(), VisitState::unvisited);
    std::vector<NestingStep> steps;
    for (std::size_t start = 0; start < outline_.comps.size(); ++start) {
        if (states[start] != VisitState::unvisited) continue;
        steps.push_back({start, 0});
        states[start] = VisitState::on_path;
        while (!steps.empty()) {
            NestingStep& step = steps.back();
            const ScannedComp& comp = outline_.comps[step.comp];
            if (step.next_layer == comp.list.size()) {
                states[step.comp] = VisitState::done;
                steps.pop_back();
                continue;
            }
            const std::size_t layer = step.next_layer++;
            const int asset = comp_shown_by(comp.list[layer]);
            if (asset < 0) continue;
            const auto inner = static_cast<std::size_t>(outline_.assets[static_cast<std::size_t>(asset)].comp);
            if (states[inner] == VisitState::on_path) {
                std::vector<std::size_t> path;
                for (const NestingStep& on_path : steps) path.push_back(on_path.comp);
                path.erase(path.begin(), std::find(path.begin(), path.end(), inner));
                refuse_cycle(path, step.comp, layer);
            }
            if (states[inner] == VisitState::unvisited) {
                states[inner] = VisitState::on_path;
                steps.push_back({inner, 0});
            }
        }
    }
}

std::string AssetGraph::name_of(std::size_t comp) const {
    const int asset = outline_.comps[comp].asset;
    return asset < 0 ? "the animation"
                     : quoted_name(decode_string(outline_.assets[static_cast<std::size_t>(asset)].id.text.of(text_)));
}

void AssetGraph::refuse_cycle(const std::vector<std::size_t>& path, std::size_t comp, std::size_t layer) const {
    constexpr std::size_t kMaxNames = 6;
    std::string round;
    for (std::size_t i = 0; i < path.size(); ++i) {
        if (i == kMaxNames) round += ", ...";
        if (i < kMaxNames) round += (i == 0 ? "" : ", ") + name_of(path[i]);
    }
    refuse(text_, outline_.comps[comp].list[layer].ref_id.begin,
           outline_.layer_pointer(outline_.comps[comp], layer) + "/refId",
           "A composition contains itself: " + round +
               (path.size() == 1 ? " uses itself." : " use one another in a circle."));
}

}  // namespace lottie::document
