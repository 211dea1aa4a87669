// Making an animation flat, from the innermost composition outward, as far as it keeps its look.
#include "cli/flatten/flattening.h"

#include <algorithm>
#include <limits>
#include <map>
#include <set>
#include <utility>
#include <vector>

#include "cli/shared/animation_file.h"
#include "cli/shared/selection.h"
#include "flatten/composition_work.h"

namespace cli {
namespace {

using Places = std::set<std::size_t>;

// First a few nests are given up; then all that differ at all.
constexpr std::size_t kMostTimes = 3;

// The nests of one composition that the options name.
Places selected_places(const host::model::Comp& comp, const Options& options) {
    Places places;
    for (const host::model::Layer* nest : options.layers.empty() ? nests_of(comp) : find_nests(comp, options.layers))
        places.insert(static_cast<std::size_t>(nest->index()));
    return places;
}

// Places in a composition by itself are not those in the file, so a fault found in it is looked up in the file.
[[noreturn]] void refuse(const Failure& failure, FlatteningState& state, lottie::document::Document& document,
                         std::size_t composition) {
    host::model::Comp& comp = find_composition(document, state.bench.id(composition));
    const DialogAnswers answers;
    if (failure.code() == ExitCode::bad_input && !nests_of(comp).empty())
        Trials(document, state.plugin, answers, state.limits).run(comp, nests_of(comp));
    throw Failure(failure.code(), "composition " + in_quotes(state.bench.name(composition)) + ": " + failure.what());
}

void work_on(FlatteningState& state, lottie::document::Document& document, std::size_t composition,
             const Places& places, bool goes_deeper) {
    state.accumulating.erase(composition);
    try {
        CompositionWork(state, composition).work(places, goes_deeper);
    } catch (const Failure& failure) {
        refuse(failure, state, document, composition);
    }
}

// A nest must keep its look wherever its composition is shown. Once that is fewer times, what had to stay may go.
void work_until_settled(FlatteningState& state, lottie::document::Document& document) {
    std::vector<double> shown_then(state.shown.size(), std::numeric_limits<double>::infinity());
    bool is_settled = false;
    while (!std::exchange(is_settled, true)) {
        state.count_showings();
        for (const std::size_t composition : state.bench.innermost_first()) {
            if (state.shown[composition] >= shown_then[composition]) continue;
            shown_then[composition] = state.shown[composition];
            Places places;
            for (const auto& nest : state.bench.nests(composition)) places.insert(nest.place);
            if (places.empty()) continue;
            work_on(state, document, composition, places, true);
            is_settled = false;
        }
    }
}

// What had to stay inside a composition may have become flat in each composition that it came out into.
void take_nests(FlatteningState& state, Flattened& flattened) {
    std::set<std::size_t> left;
    flattened.nests_left = 0;
    for (const std::size_t composition : state.bench.innermost_first()) {
        for (const auto& nest : state.bench.nests(composition)) {
            left.insert(nest.origin);
            ++flattened.nests_left;
        }
    }
    flattened.nests = std::move(state.nests);
    for (FlattenedNest& nest : flattened.nests) {
        if (state.flat.contains(nest.origin) && !left.contains(nest.origin)) nest.kept_because.clear();
    }
}

bool adds_up(const FlatteningState& state) {
    for (const auto& [composition, origins] : state.accumulating) {
        if (state.shown[composition] == 0) continue;
        for (const auto& nest : state.bench.nests(composition)) {
            if (origins.contains(nest.origin)) return true;
        }
    }
    return false;
}

void work_on_all(FlatteningState& state, lottie::document::Document& document) {
    work_until_settled(state, document);
    if (state.learned.unseen != FlatteningState::Learned::Unseen::allowed_at_end) return;
    state.mends_unseen = false;
    state.unseen_left = 1;
    work_until_settled(state, document);
}

// One attempt with what was learned so far. If it learned more, another one is needed.
bool try_to_flatten(FlatteningState& state, lottie::document::Document& document, FlatteningState::Learned& learned,
                    Flattened& flattened) {
    const Options& options = state.options;
    state.find_referenced_layers(document);
    if (options.composition.empty() && options.layers.empty()) {
        work_on_all(state, document);
    } else {
        const host::model::Comp& comp = find_composition(document, options.composition);
        work_on(state, document, *state.bench.find(document.comp_id(comp)), selected_places(comp, options), false);
    }
    const auto deviating = options.all ? std::map<std::size_t, std::string>() : state.find_deviating_nests();
    const std::size_t exact_only_before = learned.exact_only.size();
    learned.exact_only.insert(deviating.begin(), deviating.end());
    if (!deviating.empty() && ++learned.times == kMostTimes) {
        for (const std::size_t origin : state.slight) learned.exact_only.emplace(origin, deviating.begin()->second);
    }
    take_nests(state, flattened);
    state.count_showings();
    // All or none: a nest that stayed because of others would not stay once those are flat.
    using Unseen = FlatteningState::Learned::Unseen;
    const bool learned_of_unseen = adds_up(state) && learned.unseen != Unseen::refused;
    if (learned_of_unseen) learned.unseen = static_cast<Unseen>(static_cast<int>(learned.unseen) + 1);
    return learned_of_unseen || learned.exact_only.size() > exact_only_before;
}

}  // namespace

bool Flattened::succeeded() const {
    return std::none_of(nests.begin(), nests.end(),
                        [](const FlattenedNest& nest) { return nest.is_kept() || nest.changes(); });
}

Flattened flatten_animation(const std::string& text, const host::runner::PluginModule& plugin, const Options& options,
                            const lottie::packed::References& references) {
    lottie::document::Document document = parse_input(text);
    Flattened flattened{text, {}, 0, {}, document.warnings(), ""};
    if (document.is_passed_on()) {
        flattened.layer_names = names_in(text, references);
        return flattened;
    }
    const FileLimits limits = file_limits(options.script_time);
    FlatteningState::Learned learned;
    while (true) {
        const FlatteningState::Learned known = learned;
        FlatteningState state(text, plugin, options, references, limits, known);
        if (try_to_flatten(state, document, learned, flattened)) continue;
        for (const auto& [now, before] : state.layer_names) flattened.layer_names[before].insert(now);
        flattened.text = state.bench.text(options.keep_unused);
        flattened.steps = state.judge.take_steps();
        return flattened;
    }
}

}  // namespace cli
