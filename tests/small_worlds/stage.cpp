// A small world in the real host with the real plug-in.
#include "stage.h"

#include <gtest/gtest.h>

#include <iostream>
#include <stdexcept>

#include "runner/plugin_module.h"
#include "runner/utf8_locale.h"

namespace small_worlds {
namespace {

using host::model::Layer;

int count_of_worlds = 0;

const host::runner::PluginModule& plugin() {
    static const bool has_locale = host::runner::use_utf8_locale();
    static const host::runner::PluginModule module(PLUGIN_MODULE);
    if (!has_locale) throw std::runtime_error("the system has no UTF-8 locale");
    return module;
}

double value_now(Layer& layer, int stream, int dimension) {
    const host::model::Time now = {-layer.offset().ticks};
    return layer.stream(stream).value_at(now).n.at(static_cast<std::size_t>(dimension));
}

// By how much its children's places differ from its own coordinates.
double own_shift(Layer& layer, int dimension) {
    return value_now(layer, host::model::kPosition, dimension) - value_now(layer, host::model::kAnchorPoint, dimension);
}

LayerState state_of(Layer& layer) {
    LayerState state;
    state.id = layer.id();
    state.name = layer.display_name();
    if (layer.source() != nullptr && layer.source()->comp() != nullptr) {
        state.source = layer.source()->name();
        state.limit = layer.source()->comp()->duration().ticks;
    }
    state.parent = layer.parent() != nullptr ? layer.parent()->id() : kNobody;
    state.is_video_on = layer.has_flag(host::model::kVideoActive);
    state.is_3d = layer.is_3d();
    state.is_keyed = layer.stream(host::model::kPosition).keyframe_count() > 0;
    state.offset = layer.offset().ticks;
    state.in = layer.in_point().ticks;
    state.duration = layer.duration().ticks;
    for (int i = 0; i < 2; ++i) {
        state.shift[i] = own_shift(layer, i);
        state.place[i] = value_now(layer, host::model::kPosition, i);
        for (Layer* above = layer.parent(); above != nullptr; above = above->parent()) {
            state.place[i] += own_shift(*above, i);
        }
    }
    for (std::size_t i = 0; i < layer.effect_count(); ++i) state.effects.push_back(layer.effect(i).kind().match_name);
    state.expression = layer.stream(host::model::kRotation).data().expression;
    return state;
}

}  // namespace

void Answerer::drive(host::scriptui::Window& window) {
    window.control("prefixInput").set_text(choices_.prefix);
    window.control("Copy pre-comp attributes to layers").set_value(choices_.copy_attributes);
    window.control("Delete source after exflating").set_value(choices_.delete_source);
    window.control("Keep pre-comp in composition").set_value(choices_.keep_in_comp);
    window.control("Prepend pre-comp name to extracted layers").set_value(choices_.prepend_name);
    window.control("Attempt to correct layers with randomized expressions").set_value(choices_.fix_random);
    window.click(window.control("Ok"));
}

Stage::Stage(const World& world)
    : text_(world.animation()),
      document_(lottie::document::Document::read(text_)),
      session_(document_.project(), settings_, answerer_) {
    if (session_.start(plugin()).has_failed()) throw std::runtime_error("the plug-in does not start");
}

State Stage::observe() const {
    State state;
    for (host::model::Comp* comp : document_.project().comps()) {
        CompState& seen = state.comps.emplace_back();
        seen.name = comp->name();
        for (int i = 0; i < comp->layer_count(); ++i) seen.layers.push_back(state_of(comp->layer_at(i)));
        for (const Layer* layer : comp->selected_layers()) seen.selected.push_back(layer->id());
    }
    for (int n = 1; n <= document_.project().item_count(); ++n) {
        if (document_.project().item_by_number(n).type() == host::model::ItemType::footage) ++state.footage;
    }
    return state;
}

std::vector<int> Stage::select(const std::vector<int>& places) {
    host::model::Comp& main = document_.main_comp();
    std::vector<Layer*> layers;
    std::vector<int> ids;
    for (const int place : places) {
        layers.push_back(&main.layer_at(place));
        ids.push_back(layers.back()->id());
    }
    document_.project().open_comp(&main);
    main.select(layers);
    return ids;
}

// Empty if there is none.
std::string Stage::difference(const std::vector<int>& selected_places, const Choices& choices) {
    const std::vector<int> ids = select(selected_places);
    answerer_.set_choices(choices);

    const State before = observe();
    const std::string promise = promised(before, ids, choices).text();
    const host::runner::VisitResult outcome = run_command();
    State after = observe();
    for (const auto& alert : outcome.alerts) after.alerts.push_back(alert.message);
    if (outcome.has_failed() || !outcome.is_handled || !outcome.log.empty()) {
        return "the command failed" + (outcome.log.empty() ? "" : ": " + outcome.log.front());
    }
    if (after.text() != promise) {
        return "before:\n" + before.text() + "promised:\n" + promise + "came:\n" + after.text();
    }
    if (outcome.undo_steps != std::vector<std::string>{"Exflate"}) return "the run is not one step of undo";
    document_.project().undo().undo();
    if (observe().text() != before.text()) return "undone, it is:\n" + observe().text() + "it was:\n" + before.text();
    if (document_.write() != text_) return "undone, the file is another one:\n" + document_.write();
    return "";
}

bool Stage::keeps_promise(const std::vector<int>& selected_places, const Choices& choices,
                          const std::string& world_name) {
    ++count_of_worlds;
    const std::string found = difference(selected_places, choices);
    if (!found.empty()) ADD_FAILURE() << world_name << ", " << shown(choices) << "\n" << found;
    return found.empty();
}

bool Stage::refuses(const std::vector<int>& selected_places) {
    ++count_of_worlds;
    select(selected_places);
    return !run_command().is_enabled && document_.write() == text_;
}

int Stage::count() {
    return count_of_worlds;
}

WorldCount::WorldCount() : before_(Stage::count()) {}

WorldCount::~WorldCount() {
    std::cout << Stage::count() - before_ << " worlds" << (is_full_run() ? "" : " (EXFLATE_WORLDS=full for all)")
              << "\n";
}

std::string shown(const Choices& choices) {
    std::string text = choices.copy_attributes ? "attributes copied" : "attributes discarded";
    if (choices.delete_source) text += ", source deleted";
    if (choices.keep_in_comp) text += ", nest kept";
    if (choices.prepend_name) text += ", name prepended";
    if (choices.fix_random) text += ", random fixed";
    if (!choices.prefix.empty()) text += ", prefix " + choices.prefix;
    return text;
}

}  // namespace small_worlds
