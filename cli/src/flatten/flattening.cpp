// Making an animation flat, from the innermost composition outward, as far as it keeps its look.
#include "cli/flatten/flattening.h"

#include <algorithm>
#include <iterator>
#include <set>

#include "cli/shared/animation_file.h"
#include "cli/shared/selection.h"
#include "flatten/composition_work.h"

namespace cli {
namespace {

using Places = std::set<std::size_t>;

// Those of one composition that the options name.
Places selected_places(const host::model::Comp& comp, const Options& options) {
    Places places;
    for (const host::model::Layer* nest : options.layers.empty() ? nests_of(comp) : find_nests(comp, options.layers))
        places.insert(static_cast<std::size_t>(nest->index()));
    return places;
}

void work_on(FlatteningState& state, std::size_t composition, const Places& places, std::vector<FlattenedNest>& nests) {
    try {
        std::vector<FlattenedNest> more = CompositionWork(state, composition).work(places);
        nests.insert(nests.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
    } catch (const Failure& failure) {  // its place is one in the composition alone
        throw Failure(failure.code(),
                      "composition " + in_quotes(state.bench.name(composition)) + ": " + failure.what());
    }
}

void work_on_all(FlatteningState& state, std::vector<FlattenedNest>& nests) {
    for (const std::size_t composition : state.bench.innermost_first()) {
        Places places;
        for (const auto& nest : state.bench.nests(composition)) places.insert(nest.place);
        if (!places.empty()) work_on(state, composition, places, nests);
    }
}

}  // namespace

bool Flattened::is_as_asked() const {
    return std::none_of(nests.begin(), nests.end(),
                        [](const FlattenedNest& nest) { return nest.is_kept() || nest.changes(); });
}

Flattened flatten_animation(const std::string& text, const host::runner::PluginModule& plugin, const Options& options) {
    const lottie::document::Document document = parse_input(text);
    Flattened flattened{text, {}, 0, document.warnings()};
    if (document.is_passed_on()) return flattened;
    FlatteningState state(text, plugin, options);
    if (options.composition.empty() && options.layers.empty()) {
        work_on_all(state, flattened.nests);
    } else {
        const host::model::Comp& comp = find_composition(document, options.composition);
        work_on(state, *state.bench.find(document.comp_id(comp)), selected_places(comp, options), flattened.nests);
    }
    for (const std::size_t composition : state.bench.innermost_first())
        flattened.nests_left += state.bench.nests(composition).size();
    flattened.text = state.bench.text(options.keep_unused);
    return flattened;
}

}  // namespace cli
