// A project made at random.
#include <random>

#include "projects/situations.h"
#include "projects/stages.h"

namespace validator {
namespace {

using namespace host::model;

class Maker {
  public:
    Maker(std::uint64_t seed, BuiltStage& stage) : random_(seed), stage_(stage) {}

    void make() {
        comps_ = {&stage_.main()};
        for (int more = 1 + below(4); more > 0; --more) comps_.push_back(&stage_.add_comp(name()));
        if (chance(3)) stage_.project().add_folder(name());
        effect_ = stage_.install_effect()->key;
        // A composition may show those after it only, so that none contains itself.
        for (std::size_t i = 0; i < comps_.size(); ++i) fill(i);
        look_at();
    }

  private:
    int below(int count) { return static_cast<int>(random_() % static_cast<std::uint64_t>(count)); }
    bool chance(int one_in) { return below(one_in) == 0; }
    double real(double most) { return static_cast<double>(random_() % 10'001) / 10'000 * most; }

    std::string name() {
        constexpr const char* kNames[] = {
            "Layer",   "layer",        "Background", "Text 1", "",
            "a \"b\"", "Na\xC3\xAFve", "#1",         "x",      "a name of more than 31 bytes in all"};
        return kNames[below(static_cast<int>(std::size(kNames)))];
    }

    Value value() { return {{real(300), real(300), real(100), real(1)}}; }

    void fill(std::size_t place) {
        Comp& comp = *comps_[place];
        std::vector<Layer*> layers;
        for (int count = below(7); count > 0; --count) layers.push_back(&make_layer(comp, place));
        for (Layer* layer : layers) link(*layer, layers);
    }

    Layer& make_layer(Comp& comp, std::size_t place) {
        Layer& layer = new_layer(comp, place);
        if (!chance(4)) layer.load_name(name());
        if (chance(3)) layer.load_timing(from_seconds(real(4) - 2), from_seconds(real(3)), from_seconds(real(6)), 1);
        for (const LayerFlag flag : {kLocked, kShy, kSolo, kMotionBlur, kAdjustment, kCollapse})
            if (chance(8)) layer.set_flag(flag, true);
        if (chance(5)) layer.set_flag(kIs3D, true);
        for (const int stream : {static_cast<int>(kPosition), static_cast<int>(kScale), static_cast<int>(kRotation),
                                 static_cast<int>(kOpacity)})
            change(layer.stream(stream));
        for (int effects = chance(3) ? below(3) : 0; effects > 0 && can_have_effects(layer); --effects)
            change(layer.apply_effect(effect_).parameter(1));
        return layer;
    }

    static bool can_have_effects(const Layer& layer) {
        return layer.kind() != LayerKind::camera && layer.kind() != LayerKind::light;
    }

    Layer& new_layer(Comp& comp, std::size_t place) {
        const int kind = below(8);
        if (kind < 3) return comp.add_layer(stage_.picture());
        if (kind < 5 && place + 1 < comps_.size()) {
            const auto inner = place + 1 + static_cast<std::size_t>(below(static_cast<int>(comps_.size() - place - 1)));
            return comp.add_layer(*comps_[inner]);
        }
        if (kind == 5) return comp.create_null(name(), {});
        constexpr LayerKind kKinds[] = {LayerKind::text, LayerKind::vector, LayerKind::camera, LayerKind::light};
        return comp.load_layer(kKinds[below(4)], nullptr);
    }

    void change(Stream& stream) {
        const int how = below(8);
        if (how == 0) {
            stream.set_static_value(value());
        } else if (how == 1 && stream.can_vary_over_time()) {
            stream.add_keyframes({{from_seconds(real(2)), value()}, {from_seconds(3 + real(2)), value()}});
        } else if (how == 2 && stream.can_vary_over_time()) {
            constexpr const char* kTexts[] = {"wiggle(2, 30)", "thisComp.layer('Layer').transform.opacity", "value * 2",
                                              "not an expression ("};
            stream.set_expression(kTexts[below(4)]);
        }
    }

    void link(Layer& layer, const std::vector<Layer*>& layers) {
        Layer& other = *layers[static_cast<std::size_t>(below(static_cast<int>(layers.size())))];
        if (&other == &layer) return;
        bool is_descendant = false;
        for (const Layer* up = &other; up != nullptr; up = up->parent()) is_descendant = is_descendant || up == &layer;
        if (chance(3) && !is_descendant) layer.load_parent(&other);
        if (chance(5)) layer.load_matte(&other, MatteType::alpha);
    }

    void look_at() {
        Project& project = stage_.project();
        Comp& comp = *comps_[static_cast<std::size_t>(below(static_cast<int>(comps_.size())))];
        project.set_active_panel(ActivePanel::timeline);
        project.open_comp(chance(12) ? nullptr : &comp);
        std::vector<Layer*> selected;
        const bool only_nests = chance(2);  // some commands are for them alone
        for (int i = 0; i < comp.layer_count(); ++i) {
            Layer& layer = comp.layer_at(i);
            const bool is_nest = layer.source() != nullptr && layer.source()->comp() != nullptr;
            if ((!only_nests || is_nest) && !chance(3)) selected.push_back(&layer);
        }
        comp.select(selected);
        if (!chance(10)) return;
        project.set_active_panel(ActivePanel::project);
        project.select_items({&comp});
    }

    std::mt19937_64 random_;
    BuiltStage& stage_;
    std::vector<Comp*> comps_;
    int effect_ = 0;
};

}  // namespace

Situation random_situation(std::uint64_t seed, const Answers& answers) {
    return {.name = "seed-" + std::to_string(seed),
            .sentence = "the project of seed " + std::to_string(seed) + " is open",
            .build =
                [seed] {
                    auto stage = std::make_unique<BuiltStage>();
                    Maker(seed, *stage).make();
                    return stage;
                },
            .dialogs = [answers] { return accept_dialogs(answers); }};
}

}  // namespace validator
