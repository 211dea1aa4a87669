// Whatever is done to a project, undo gives back what was there, step by step.
#include <gtest/gtest.h>

#include <iostream>
#include <map>
#include <random>

#include "scene.h"
#include "snapshot.h"

namespace host::model {
namespace {

using testing::at;
using testing::expect_consistent;
using testing::Scene;
using testing::snapshot;
using testing::TestContent;
using testing::value;
using Lines = std::vector<std::string>;

HostRules random_rules(std::mt19937& random) {
    const auto coin = [&random] { return random() % 2 == 0; };
    HostRules rules;
    rules.broken_expressions_recover = coin();
    rules.copies_keep_links_to_present_partners = coin();
    rules.copies_get_numbered_names = coin();
    rules.deleting_a_parent_compensates = coin();
    rules.mattes_by_position = coin();
    rules.new_null_is_selected = coin();
    rules.null_layer_gets_own_name = coin();
    if (coin()) rules.selection_order = SelectionOrder::top_to_bottom;
    return rules;
}

// Does random things, legal or not, to a random project.
class Monkey {
  public:
    explicit Monkey(unsigned seed) : random_(seed), scene_(random_rules(random_)) {
        tint_ = testing::install_tint(project())->key;
        Comp& second = scene_.new_comp("Second");
        scene_.new_comp("Third");
        for (int i = 0; i < 5; ++i) {
            scene_.layer(name());
            add_unread_layer(i % 2 == 0 ? scene_.comp : second);
        }
        scene_.comp.layer_at(2).load_matte(&scene_.comp.layer_at(1), MatteType::luma);
        scene_.comp.add_layer(second);
        project().undo().clear();
    }

    Project& project() { return scene_.project; }

    void act() {
        try {
            const int what = below(32);
            if (what < 20) {
                if (Layer* layer = any_layer()) change_layer(*layer, what);
            } else if (what < 25) {
                if (Layer* layer = any_layer()) change_stream(any_stream(*layer), what);
            } else {
                change_project(what);
            }
        } catch (const Error&) {
            // refused: nothing may have changed, or what has is undone with the rest
        }
    }

    // When the last composition went, makes one, which is a step of its own; everything else needs one.
    bool restock() {
        if (!project().comps().empty()) return false;
        scene_.new_comp(name());
        return true;
    }

  private:
    int below(int n) { return std::uniform_int_distribution<int>(0, n - 1)(random_); }
    bool coin() { return below(2) == 0; }
    Time time() { return at(below(40) / 4.0 - 2); }
    Value point() { return value(below(200) - 100, below(200) - 100, below(3) * 10); }
    std::string name() { return std::string(1, static_cast<char>('A' + below(6))); }
    std::string expression() {
        const std::string comp = coin() ? "thisComp" : coin() ? "comp('Second')" : "comp(\"" + name() + "\")";
        return coin() ? comp + ".layer('" + name() + "').opacity" : coin() ? "time" : "";
    }

    void add_unread_layer(Comp& comp) {
        Layer& layer = comp.load_layer(LayerKind::vector, nullptr);
        layer.load_name(name());
        layer.load_timing({}, {}, at(10), 1);
        auto data = std::make_shared<StreamData>();
        data->static_value = value(50);
        data->expression = "thisComp.layer('" + name() + "').opacity";
        data->expression_enabled = true;
        const auto kind = project().effect_kind(tint_);
        const LayerId named = layer.id() - 1;
        const auto content = std::make_shared<TestContent>([data, kind, named](Layer& to) {
            to.load_stream(kOpacity, data);
            auto effect = std::make_unique<Effect>(to, kind, "Loaded");
            auto map = std::make_shared<StreamData>();
            map->static_value = value(named);
            effect->load_parameter(testing::kTintLayer,
                                   std::make_unique<Stream>(to, StreamType::layer_id, "Map", std::move(map)));
            to.load_effect(std::move(effect));
            to.load_other_stream("Path", data);
        });
        content->expressions = content->layer_parameters = true;
        layer.set_content(content);
    }

    Item& any_item() {
        return below(8) == 0 ? project().root_folder() : project().item_by_number(1 + below(project().item_count()));
    }
    Comp& any_comp() {
        const auto comps = project().comps();
        return *comps[static_cast<std::size_t>(below(static_cast<int>(comps.size())))];
    }
    Layer* any_layer_of(const Comp& comp) {
        return comp.layer_count() > 0 ? &comp.layer_at(below(comp.layer_count())) : nullptr;
    }
    Layer* any_layer() { return any_layer_of(any_comp()); }
    Stream& any_stream(Layer& layer) {
        if (layer.effect_count() > 0 && coin()) {
            Effect& effect = layer.effect(static_cast<std::size_t>(below(static_cast<int>(layer.effect_count()))));
            return effect.parameter(static_cast<std::size_t>(below(static_cast<int>(effect.parameter_count()))));
        }
        return layer.stream(below(11));
    }

    void change_layer(Layer& layer, int what) {
        Layer* other = below(4) == 0 ? nullptr : any_layer_of(layer.comp());
        switch (what) {
            case 0:
            case 1:
                return layer.rename(below(5) == 0 ? "" : name());
            case 2:
                return layer.set_flag(coin() ? kIs3D : static_cast<LayerFlag>(1 << below(17)), coin());
            case 3:
            case 4:
                return layer.set_parent(other, Parenting::keep_place);
            case 5:
            case 6:
                return layer.set_parent(other, Parenting::keep_local_values);
            case 7:
                return layer.set_offset(time());
            case 8:
                return layer.set_in_point_and_duration(time(), time());
            case 9:
            case 10:
                return layer.move_to(below(layer.comp().layer_count() + 1) - 1);
            case 11:
            case 12:
                return layer.remove();
            case 13:
            case 14:
            case 15:
                any_comp().copy_layer_here(layer);
                return;
            case 16:
                layer.apply_effect(tint_);
                return;
            case 17:
                if (layer.effect_count() > 0) layer.effect(0).set_flags(0xf, static_cast<std::uint32_t>(below(16)));
                return;
            case 18:
                if (layer.effect_count() > 0 && other != nullptr) {
                    layer.effect(0).parameter(testing::kTintLayer).set_static_value(value(other->id()));
                }
                return;
            default:
                if (other != nullptr) layer.comp().select({&layer, other});
        }
    }

    void change_stream(Stream& stream, int what) {
        switch (what) {
            case 20:
                return stream.set_static_value(point());
            case 21:
                stream.insert_keyframe(time());
                return;
            case 22: {
                if (stream.keyframe_count() == 0) return;
                const auto index = static_cast<std::size_t>(below(static_cast<int>(stream.keyframe_count())));
                Keyframe keyframe = stream.keyframe(index);
                keyframe.value = point();
                keyframe.flags = static_cast<std::uint32_t>(below(32));
                return stream.set_keyframe(index, keyframe);
            }
            case 23:
                return stream.add_keyframes({{time(), point()}, {time(), point()}});
            default:
                return coin() ? stream.set_expression(expression()) : stream.set_expression_state(coin());
        }
    }

    void change_project(int what) {
        switch (what) {
            case 25:
                any_comp().create_null(name(), time());
                return;
            case 26:
                any_comp().add_layer(any_item());
                return;
            case 27:
                return any_item().set_name(coin() ? name() : "Second");
            case 28:
                return any_item().set_pixel_aspect({below(5) + 1, 2});
            case 29:
                if (coin()) {
                    project().add_folder(name(), &any_item());
                } else {
                    project().add_comp(name(), &any_item());
                }
                return;
            case 30:
                return project().auto_fix_expressions(name(), name());
            default:
                if (below(3) == 0) project().delete_item(any_item());
        }
    }

    std::mt19937 random_;
    Scene scene_;
    int tint_ = 0;
};

void run(unsigned seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    Monkey monkey(seed);
    Project& project = monkey.project();
    UndoJournal& undo = project.undo();
    std::mt19937 random(seed + 1);
    std::map<std::size_t, Lines> found_by_step;  // what the step of that number began with
    const auto note = [&] {
        if (undo.open_groups() == 0) found_by_step[undo.step_names().size()] = snapshot(project);
    };
    // The first step cannot give back a selection made before it, so the first change is none.
    found_by_step[0] = snapshot(project);
    project.root_folder().set_name("Top");
    for (int i = 0; i < 250; ++i) {
        note();
        if (monkey.restock()) note();
        const auto dice = random() % 12;
        if (dice == 0) undo.begin_group("Group");
        if (dice <= 1 && undo.open_groups() > 0) undo.end_group();
        monkey.act();
        if (i % 10 != 0) continue;
        ASSERT_NO_FATAL_FAILURE(expect_consistent(project));
    }
    undo.close_all_groups();
    while (undo.can_undo()) {
        undo.undo();
        ASSERT_EQ(snapshot(project), found_by_step.at(undo.step_names().size()));
        ASSERT_NO_FATAL_FAILURE(expect_consistent(project));
    }
}

TEST(UndoOfEverything, gives_back_step_by_step_what_each_step_found) {
    const unsigned first = std::random_device{}();
    std::cout << "seeds " << first << " to " << first + 19 << "\n";
    for (unsigned seed = first; seed < first + 20; ++seed) {
        run(seed);
        if (::testing::Test::HasFatalFailure()) return;
    }
}

TEST(UndoOfEverything, in_one_go_leaves_every_loaded_stream_unchanged) {
    Scene scene;
    Layer& parent = scene.layer("Parent");
    const auto data = std::make_shared<StreamData>();
    Layer& child = scene.comp.load_layer(LayerKind::vector, nullptr);
    child.set_content(std::make_shared<TestContent>([data](Layer& layer) { layer.load_stream(kPosition, data); }));
    child.load_parent(&parent);
    parent.remove();
    EXPECT_TRUE(child.stream(kPosition).is_changed());
    scene.project.undo().undo_all();
    for (int number = 0; number < kLayerStreamCount; ++number) EXPECT_FALSE(child.stream(number).is_changed());
    EXPECT_EQ(&child.stream(kPosition).data(), data.get());
}

}  // namespace
}  // namespace host::model
