// What the command promises.
#include "promise.h"

#include <algorithm>
#include <map>

namespace small_worlds {
namespace {

constexpr std::int64_t kFrame = 4800;  // ticks

struct Run {
    const Choices& choices;
    State& state;
    int next_id = -1;  // ids of layers that the command makes
    std::map<std::string, int> failures_by_source;
};

// A layer keeps a frame at least, and goes no further than its source.
void trim(LayerState& layer, std::int64_t in, std::int64_t duration) {
    std::int64_t out = in + std::max(duration, kFrame);
    if (layer.limit > 0) {
        in = std::clamp(in, layer.offset, layer.offset + layer.limit - kFrame);
        out = std::clamp(out, in + kFrame, layer.offset + layer.limit);
    }
    layer.in = in;
    layer.duration = out - in;
}

// In the place in time that it had when seen through the nest. The head is cut where the layer's in-point, not yet
// moved, lies before the nest's; the tail where the layer, as long as it was at first, ends after the nest.
void take_over_time(LayerState& layer, const LayerState& nest) {
    const std::int64_t in_before = layer.in;
    const std::int64_t duration_before = layer.duration;
    layer.offset += nest.offset;
    layer.in += nest.offset;
    if (in_before < nest.in) {
        const std::int64_t cut = (nest.in - nest.offset) - (layer.in - layer.offset);
        trim(layer, nest.in, layer.duration - cut);
    }
    if (layer.in + duration_before > nest.in + nest.duration) {
        trim(layer, layer.in, nest.duration - (layer.in - nest.in));
    }
}

void take_over_attributes(LayerState& layer, const LayerState& nest) {
    take_over_time(layer, nest);
    layer.is_3d = layer.is_3d || nest.is_3d;
    for (int i = 0; i < 2; ++i) layer.place[i] += nest.shift[i];
    layer.effects.insert(layer.effects.end(), nest.effects.begin(), nest.effects.end());
}

std::string prefix_of(const Choices& choices, const LayerState& nest) {
    std::string prefix = choices.prepend_name ? nest.name : "";
    if (!prefix.empty() && !choices.prefix.empty()) prefix += "_";
    return prefix + choices.prefix;
}

void replace_all(std::string& text, const std::string& what, const std::string& by) {
    for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += by.size()) {
        text.replace(at, what.size(), by);
    }
}

// The copies have new names, and name each other by them.
void rename(std::vector<LayerState>& copies, const std::string& prefix) {
    for (const LayerState& named : copies) {
        for (LayerState& copy : copies) {
            replace_all(copy.expression, "'" + named.name + "'", "'" + prefix + "_" + named.name + "'");
        }
    }
    for (LayerState& copy : copies) copy.name = prefix + "_" + copy.name;
}

// The nest's layers as they come out: links among them kept, those without a parent under the null if there is one.
std::vector<LayerState> copies_of(Run& run, const LayerState& nest, int null_id) {
    std::vector<LayerState> copies = run.state.comp(nest.source).layers;
    const CompState inside = run.state.comp(nest.source);
    const int first_id = run.next_id;
    run.next_id -= static_cast<int>(copies.size());
    const std::string prefix = prefix_of(run.choices, nest);
    for (std::size_t i = 0; i < copies.size(); ++i) {
        LayerState& copy = copies[i];
        copy.id = first_id - static_cast<int>(i);
        copy.parent = copy.parent == kNobody ? null_id : first_id - place_of(inside, copy.parent);
        if (run.choices.copy_attributes) take_over_attributes(copy, nest);
        if (run.choices.fix_random && !copy.expression.empty()) {
            copy.expression =
                "seedRandom(" + std::to_string(i) + "); // this line was added by Exflate \n\n" + copy.expression;
        }
    }
    if (!prefix.empty()) rename(copies, prefix);
    return copies;
}

// Without a null to keep, the links of as many places of the stack as the nest had parentless layers are cleared: the
// places that those layers had at the top, though by now the null stands there and then the rest of the composition.
void clear_links_by_place(CompState& main, const CompState& inside) {
    for (std::size_t i = 1; i < inside.layers.size(); ++i) {
        if (inside.layers[i].parent == kNobody && i - 1 < main.layers.size()) main.layers[i - 1].parent = kNobody;
    }
}

void remove_layer(CompState& comp, int id) {
    std::erase_if(comp.layers, [&](const LayerState& layer) { return layer.id == id; });
    std::erase(comp.selected, id);
    for (LayerState& layer : comp.layers) {
        if (layer.parent == id) layer.parent = kNobody;
    }
}

int uses_of(const State& state, const std::string& source) {
    int uses = 0;
    for (const CompState& comp : state.comps) {
        for (const LayerState& layer : comp.layers) uses += layer.source == source ? 1 : 0;
    }
    return uses;
}

void remove_nest(Run& run, const LayerState& nest) {
    if (run.choices.delete_source) {
        if (uses_of(run.state, nest.source) == 1) {
            run.failures_by_source.erase(nest.source);
            std::erase_if(run.state.comps, [&](const CompState& comp) { return comp.name == nest.source; });
        } else {
            ++run.failures_by_source[nest.source];
        }
    }
    remove_layer(run.state.comp("Main"), nest.id);
}

// Puts the content in the nest's place. Returns the ids of what came.
std::vector<int> un_nest(Run& run, int nest_id) {
    CompState& main = run.state.comp("Main");
    const auto place = main.layers.begin() + place_of(main, nest_id);
    const LayerState nest = *place;
    const bool null_stays = run.choices.copy_attributes && nest.is_keyed;
    const int null_id = null_stays ? run.next_id-- : kNobody;
    std::vector<LayerState> coming = copies_of(run, nest, null_id);
    if (null_stays) {
        coming.push_back({.id = null_id,
                          .name = "{{" + nest.name + "_exflate}}",
                          .is_3d = nest.is_3d,
                          .is_keyed = true,
                          .in = nest.in,
                          .duration = nest.duration,
                          .place = {nest.shift[0] + 5, nest.shift[1] + 3}});
        ++run.state.footage;
    }
    std::vector<int> ids;
    for (const LayerState& layer : coming) ids.push_back(layer.id);
    main.layers.insert(place + 1, coming.begin(), coming.end());
    if (!null_stays) clear_links_by_place(main, run.state.comp(nest.source));
    if (run.choices.keep_in_comp) {
        main.layers[static_cast<std::size_t>(place_of(main, nest_id))].is_video_on = false;
    } else {
        remove_nest(run, nest);
    }
    return ids;
}

std::string closing_words(const Run& run, std::size_t selected_count) {
    int failures = 0;
    for (const auto& [source, count] : run.failures_by_source) failures += count;
    if (failures == 0) return "";
    if (failures > 1) return "Some (or all) sources could not be deleted because they are being used in other places";
    return std::string(selected_count == 1 ? "The" : "A") +
           " source could not be deleted because it is being used in other places";
}

}  // namespace

State promised(State before, const std::vector<int>& selected_ids, const Choices& choices) {
    State state = std::move(before);
    Run run{.choices = choices, .state = state, .failures_by_source = {}};
    state.comp("Main").selected = selected_ids;
    for (std::size_t i = 0; i < selected_ids.size(); ++i) {
        const CompState& main = state.comp("Main");
        const LayerState& layer = main.layers[static_cast<std::size_t>(place_of(main, selected_ids[i]))];
        if (layer.source.empty()) continue;
        const std::vector<int> came = un_nest(run, layer.id);
        if (i + 1 == selected_ids.size()) state.comp("Main").selected = came;
    }
    const std::string words = closing_words(run, selected_ids.size());
    if (!words.empty()) state.alerts.push_back(words);
    return state;
}

}  // namespace small_worlds
