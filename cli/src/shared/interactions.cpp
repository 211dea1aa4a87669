// What state machines and themes around an animation expect of its layers, and what becomes of that in a run.
#include "cli/shared/interactions.h"

#include <algorithm>
#include <iterator>
#include <tuple>

#include "cli/shared/console.h"
#include "document/json_text.h"
#include "document/json_tree.h"
#include "shared/filled_slots.h"

namespace cli {
namespace {

using host::model::Layer;
using lottie::looks::Finding;

// Whether it is ever shown: un-nested compositions often stay in the project, and nests as hidden layers.
bool is_shown(const Layer& layer, const host::model::Comp& main) {
    const host::model::Comp& comp = layer.comp();
    return layer.is_alive() && layer.has_flag(host::model::kVideoActive) && (&comp == &main || !comp.users().empty());
}

Finding finding(const std::string& layer, const std::string& what, const std::string& way_out) {
    return {.reason = lottie::looks::Reason::interaction,
            .weight = lottie::looks::Weight::change,
            .sentence = "a state machine reacts to layer " + in_quotes(layer) + ", which " + what,
            .way_out = way_out,
            .layer = layer,
            .property = "",
            .frame = {}};
}

Finding goes_away(const std::string& layer) {
    return finding(layer, "goes away", "let the state machine name a layer inside it, or keep it nested");
}

std::string name_of(std::string_view layer) {
    const std::string text(layer);
    const lottie::document::JsonTree tree(text, {0, static_cast<std::uint32_t>(text.size())});
    const lottie::document::JsonNode* name = tree.member(&tree.root(), "nm");
    return name == nullptr || name->kind != lottie::document::JsonKind::string
               ? ""
               : lottie::document::decode_string(tree.text(*name));
}

// Identifies layers of a changed stack; those made by runs and remedies have no place before.
auto place_of(const lottie::looks::Origin& origin) {
    return std::tuple(origin.kind, origin.nest, origin.layer);
}

}  // namespace

Finding has_several_names(const std::string& layer) {
    return finding(layer, "has several names afterwards", "leave out the prefix, or keep the nest");
}

ReferencedLayers::ReferencedLayers(const lottie::document::Document& document,
                                   const lottie::packed::References& references)
    : document_(document) {
    if (references.layers.empty()) return;
    for (const host::model::Comp* comp : document.project().comps()) {
        for (const Layer* layer : comp->stack().to_vector()) {
            const std::string& name = layer->display_name();
            if (references.layers.contains(name) && is_shown(*layer, document.main_comp()))
                layers_[name].push_back(layer);
        }
    }
}

std::vector<const host::model::Comp*> ReferencedLayers::homes(const std::string& name) const {
    std::vector<const host::model::Comp*> homes;
    if (const auto found = layers_.find(name); found != layers_.end()) {
        for (const Layer* layer : found->second) homes.push_back(&layer->comp());
    }
    return homes;
}

ReferencedLayers::Outcome ReferencedLayers::outcome() const {
    Outcome outcome;
    if (layers_.empty()) return outcome;
    std::map<host::model::LayerId, std::set<std::string>> names;  // current names of a layer and its copies
    for (const host::model::Comp* comp : document_.project().comps()) {
        for (const Layer* layer : comp->stack().to_vector()) {
            if (!is_shown(*layer, document_.main_comp())) continue;
            names[layer->id()].insert(layer->display_name());
            names[layer->copied_from()].insert(layer->display_name());
        }
    }
    for (const auto& [name, layers] : layers_) {
        std::set<std::string>& now = outcome.names[name];
        bool is_any_gone = false;
        for (const Layer* layer : layers) {
            const std::set<std::string>& its = names[layer->id()];
            now.insert(its.begin(), its.end());
            is_any_gone = is_any_gone || its.empty();
        }
        if (is_any_gone) outcome.losses.push_back(goes_away(name));
        if (now.size() > 1) outcome.losses.push_back(has_several_names(name));
    }
    return outcome;
}

void ReferencedLayers::add(const Outcome& mended, Outcome& run) const {
    run.losses.insert(run.losses.end(), mended.losses.begin(), mended.losses.end());
    for (auto& [name, now] : run.names) {
        const bool had_one = now.size() == 1;
        for (const auto& [before, after] : mended.names) {
            if (!now.contains(before)) continue;
            if (homes(name).size() == 1) now.erase(before);
            now.insert(after.begin(), after.end());
        }
        if (had_one && now.size() > 1) run.losses.push_back(has_several_names(name));
    }
}

CurrentNames names_in(std::string_view animation, const lottie::packed::References& references) {
    CurrentNames names;
    if (references.layers.empty()) return names;
    for (const std::string_view literal : literals_under("\"nm\"", animation)) {
        const std::string name = lottie::document::decode_string(literal);
        if (references.layers.contains(name)) names[name] = {name};
    }
    return names;
}

NewNames new_layer_names(const std::vector<CurrentNames>& animations) {
    CurrentNames all;
    std::set<std::string> told;  // by just one animation
    for (const CurrentNames& animation : animations) {
        for (const auto& [name, now] : animation) {
            all[name].insert(now.begin(), now.end());
            if (now.size() > 1) told.insert(name);
        }
    }
    NewNames result;
    for (const auto& [name, now] : all) {
        if (now.size() == 1 && *now.begin() != name) result.names[name] = *now.begin();
        if (now.size() > 1 && !told.contains(name)) result.losses.push_back(has_several_names(name));
    }
    return result;
}

ReferencedLayers::Outcome follow_mending(const ReferencedLayers::Outcome& after_run, const ChangedStack& run,
                                         const ChangedStack& mended, const lottie::packed::References& references) {
    ReferencedLayers::Outcome outcome;
    if (references.layers.empty() && references.slots.empty()) return outcome;
    std::set<std::string> names;
    for (const auto& [before, now] : after_run.names) names.insert(now.begin(), now.end());
    std::map<std::tuple<lottie::looks::Origin::Kind, std::size_t, std::size_t>, std::string_view> now;
    for (std::size_t i = 0; i < mended.layers.size(); ++i) now[place_of(mended.change.after[i])] = mended.layers[i];
    std::set<std::string> lost;
    for (std::size_t i = 0; i < run.layers.size(); ++i) {
        if (run.change.after[i].kind == lottie::looks::Origin::Kind::made) continue;
        const auto found = now.find(place_of(run.change.after[i]));
        const std::string_view layer = found == now.end() ? "{}" : found->second;
        if (layer == run.layers[i]) continue;
        if (const std::string name = name_of(run.layers[i]); names.contains(name)) {
            if (found == now.end()) {
                outcome.losses.push_back(goes_away(name));
            } else {
                outcome.names[name].insert(name_of(layer));
            }
        }
        const std::set<std::string> before = slots_in(run.layers[i], references.slots);
        const std::set<std::string> after = slots_in(layer, references.slots);
        std::set_difference(before.begin(), before.end(), after.begin(), after.end(), std::inserter(lost, lost.end()));
    }
    for (const std::string& slot : lost) outcome.losses.push_back(loses_value(slot));
    return outcome;
}

}  // namespace cli
