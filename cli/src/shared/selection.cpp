// Finds the composition and the nests that the arguments name.
#include "cli/shared/selection.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <unordered_set>

#include "cli/shared/console.h"
#include "cli/shared/suggestions.h"

namespace cli {
namespace {

using host::model::Comp;
using host::model::Layer;

constexpr std::string_view kSeeList = " (exflate list shows them all)";

// The number in "#12"; nothing for any other text.
std::optional<int> stack_number(std::string_view text) {
    if (text.size() < 2 || text.front() != '#') return std::nullopt;
    int number = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data() + 1, end, number);
    if (stop != end || error != std::errc()) return std::nullopt;
    return number;
}

SelectionNotFound not_a_nest(const Layer& layer) {
    return SelectionNotFound{"layer #" + std::to_string(layer.index() + 1) + " " + in_quotes(layer.display_name()) +
                             " is not a nest: its source is not a composition" + std::string(kSeeList)};
}

Layer& layer_at(const Comp& comp, int number) {
    if (number < 1 || number > comp.layer_count()) {
        throw SelectionNotFound("composition " + in_quotes(comp.name()) + " has no layer #" + std::to_string(number) +
                                ", only " + counted(static_cast<std::size_t>(comp.layer_count()), "layer"));
    }
    Layer& layer = comp.layer_at(number - 1);
    if (!is_nest(layer)) throw not_a_nest(layer);
    return layer;
}

std::vector<Layer*> nests_named(const Comp& comp, const std::string& name) {
    std::vector<Layer*> found;
    Layer* other = nullptr;
    std::vector<std::string> nest_names;
    for (Layer* layer : comp.stack().to_vector()) {
        const bool has_name = layer->display_name() == name;
        if (is_nest(*layer)) {
            nest_names.push_back(layer->display_name());
            if (has_name) found.push_back(layer);
        } else if (has_name && other == nullptr) {
            other = layer;
        }
    }
    if (found.empty() && other != nullptr) throw not_a_nest(*other);
    if (found.empty()) {
        throw SelectionNotFound("composition " + in_quotes(comp.name()) + " has no layer named " + in_quotes(name) +
                                did_you_mean(name, nest_names) + std::string(kSeeList));
    }
    return found;
}

}  // namespace

bool is_nest(const Layer& layer) {
    return layer.kind() == host::model::LayerKind::av && layer.source() != nullptr && layer.source()->comp() != nullptr;
}

std::vector<Layer*> nests_of(const Comp& comp) {
    std::vector<Layer*> layers = comp.stack().to_vector();
    std::erase_if(layers, [](const Layer* layer) { return !is_nest(*layer); });
    return layers;
}

std::vector<Layer*> layers_since(const Comp& comp, host::model::LayerId newest_before) {
    const host::model::Project& project = comp.project();
    std::vector<Layer*> layers;
    for (host::model::LayerId id = newest_before + 1; id <= project.newest_layer_id(); ++id) {
        Layer* layer = project.layer_by_id(id);
        if (layer != nullptr && &layer->comp() == &comp) layers.push_back(layer);
    }
    return layers;
}

std::vector<Layer*> new_nests_of(const Comp& comp, host::model::LayerId newest_before) {
    std::vector<Layer*> nests = layers_since(comp, newest_before);
    std::erase_if(nests, [](const Layer* layer) { return !is_nest(*layer); });
    std::sort(nests.begin(), nests.end(), [](const Layer* a, const Layer* b) { return a->index() < b->index(); });
    return nests;
}

Comp& find_composition(const lottie::document::Document& document, const std::string& name_or_id) {
    if (name_or_id.empty()) return document.main_comp();
    std::vector<Comp*> found;
    std::vector<std::string> names;
    for (Comp* comp : document.project().comps()) {
        const std::string id = document.comp_id(*comp);
        if (id == name_or_id) return *comp;
        if (comp->name() == name_or_id) found.push_back(comp);
        names.push_back(comp->name());
        if (!id.empty()) names.push_back(id);
    }
    if (found.empty()) {
        throw SelectionNotFound("there is no composition " + in_quotes(name_or_id) + did_you_mean(name_or_id, names) +
                                std::string(kSeeList));
    }
    if (found.size() > 1) {
        std::string ways;
        for (const Comp* comp : found) {
            const bool is_main = comp == &document.main_comp();
            ways += (ways.empty() ? "" : " or ") + (is_main ? "no --comp at all" : "--comp " + document.comp_id(*comp));
        }
        throw Failure(ExitCode::usage, std::to_string(found.size()) + " compositions are named " +
                                           in_quotes(name_or_id) + ": give " + ways);
    }
    return *found.front();
}

std::vector<Layer*> find_nests(const Comp& comp, const std::vector<std::string>& texts) {
    if (texts.empty()) return nests_of(comp);
    std::vector<Layer*> chosen;
    std::unordered_set<const Layer*> seen;
    const auto choose = [&](Layer* layer) {
        if (seen.insert(layer).second) chosen.push_back(layer);
    };
    for (const std::string& text : texts) {
        if (const std::optional<int> number = stack_number(text)) {
            choose(&layer_at(comp, *number));
        } else {
            for (Layer* layer : nests_named(comp, text)) choose(layer);
        }
    }
    return chosen;
}

}  // namespace cli
