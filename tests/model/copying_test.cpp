// Copying a layer into a composition.
#include <gtest/gtest.h>

#include "scene.h"

namespace host::model {
namespace {

using testing::at;
using testing::error_of;
using testing::install_tint;
using testing::key;
using testing::names;
using testing::Scene;
using testing::TestContent;
using testing::value;
using Names = std::vector<std::string>;

// A nested composition with layers 1, 2, 3 and the main one with A, P (showing the nested one), Z.
struct NestScene : Scene {
    explicit NestScene(HostRules rules = {})
        : Scene(rules),
          nested(new_comp("Nested")),
          three(layer("3", &nested)),
          two(layer("2", &nested)),
          one(layer("1", &nested)) {
        layer("Z");
        nest = &comp.add_layer(nested);
        nest->load_name("P");
        layer("A");
        project.undo().clear();
    }
    Comp& nested;
    Layer& three;
    Layer& two;
    Layer& one;
    Layer* nest;
};

TEST(Copying, puts_each_copy_directly_above_the_selected_layer) {
    NestScene scene;
    scene.comp.select({scene.nest});
    for (Layer* layer : {&scene.one, &scene.two, &scene.three}) scene.comp.copy_layer_here(*layer);
    EXPECT_EQ(names(scene.comp), (Names{"A", "1", "2", "3", "P", "Z"}));
    EXPECT_EQ(scene.comp.selected_layers(), std::vector<Layer*>{scene.nest});
    EXPECT_EQ(names(scene.nested), (Names{"1", "2", "3"}));
}

TEST(Copying, puts_copies_above_the_topmost_of_several_selected_layers) {
    NestScene scene;
    scene.comp.select({&scene.comp.layer_at(2), &scene.comp.layer_at(1)});
    scene.comp.copy_layer_here(scene.one);
    EXPECT_EQ(names(scene.comp), (Names{"A", "1", "P", "Z"}));
}

TEST(Copying, puts_copies_on_top_without_a_selection) {
    NestScene scene;
    scene.nested.select({&scene.two});
    for (Layer* layer : {&scene.one, &scene.two}) scene.comp.copy_layer_here(*layer);
    EXPECT_EQ(names(scene.comp), (Names{"2", "1", "A", "P", "Z"}));
    EXPECT_TRUE(scene.comp.selected_layers().empty());
}

TEST(Copying, takes_everything_along_and_shares_what_is_unchanged) {
    NestScene scene;
    Layer& original = scene.one;
    original.set_flag(kShy, true);
    original.set_offset(at(2));
    original.set_in_point_and_duration(at(3), at(1));
    original.stream(kOpacity).replace({}, {key(0, value(0)), key(1, value(100))});
    original.stream(kRotation).set_expression("time * 10");
    Effect& tint = original.apply_effect(install_tint(scene.project)->key);
    tint.parameter(testing::kTintNumber).set_static_value(value(7));
    tint.set_flags(kEffectActive, 0);
    const int items = scene.project.item_count();
    Layer& copy = scene.comp.copy_layer_here(original);
    EXPECT_NE(copy.id(), original.id());
    EXPECT_EQ(copy.copied_from(), original.id());
    EXPECT_EQ(&copy.comp(), &scene.comp);
    EXPECT_EQ(copy.source(), original.source());
    EXPECT_EQ(scene.project.item_count(), items);
    EXPECT_EQ(copy.own_name(), "1");
    EXPECT_EQ(copy.flags(), original.flags());
    EXPECT_EQ(copy.offset(), at(2));
    EXPECT_EQ(copy.in_point(), at(3));
    EXPECT_EQ(copy.duration(), at(1));
    EXPECT_EQ(&copy.stream(kOpacity).data(), &original.stream(kOpacity).data());
    EXPECT_NE(&copy.stream(kOpacity), &original.stream(kOpacity));
    EXPECT_EQ(copy.stream(kRotation).data().expression, "time * 10");
    ASSERT_EQ(copy.effect_count(), 1u);
    EXPECT_EQ(copy.effect(0).name(), "Tint");
    EXPECT_EQ(copy.effect(0).flags(), 0u);
    EXPECT_EQ(copy.effect(0).parameter(testing::kTintNumber).value_at({}), value(7));

    copy.stream(kOpacity).insert_keyframe(at(0.5));
    copy.effect(0).parameter(testing::kTintNumber).set_static_value(value(8));
    EXPECT_EQ(original.stream(kOpacity).keyframe_count(), 2u);
    EXPECT_EQ(tint.parameter(testing::kTintNumber).value_at({}), value(7));
}

TEST(Copying, a_layer_without_a_name_of_its_own_stays_so) {
    NestScene scene;
    scene.one.rename("");
    Layer& copy = scene.comp.copy_layer_here(scene.one);
    EXPECT_EQ(copy.own_name(), "");
    EXPECT_EQ(copy.display_name(), "Picture");
}

// Layer 1 has layer 2 as parent and matte and in an effect.
void link_one_to_two(NestScene& scene) {
    scene.one.set_parent(&scene.two, Parenting::keep_local_values);
    scene.one.load_matte(&scene.two, MatteType::luma);
    Stream& map = scene.one.apply_effect(install_tint(scene.project)->key).parameter(testing::kTintLayer);
    map.replace(value(scene.two.id()), {key(0, value(scene.two.id())), key(1, value(scene.one.id()))});
}

TEST(Copying, drops_links_to_layers_of_the_old_composition) {
    NestScene scene;
    link_one_to_two(scene);
    scene.comp.copy_layer_here(scene.two);
    Layer& copy = scene.comp.copy_layer_here(scene.one);
    EXPECT_EQ(copy.parent(), nullptr);
    EXPECT_EQ(copy.matte(), nullptr);
    EXPECT_EQ(copy.matte_type(), MatteType::none);
    const Stream& map = copy.effect(0).parameter(testing::kTintLayer);
    EXPECT_EQ(map.data().static_value, value(0));
    EXPECT_EQ(map.keyframe(0).value, value(0));
    EXPECT_TRUE(map.is_changed());
    EXPECT_EQ(copy.stream(kPosition).value_at({}), scene.one.stream(kPosition).value_at({}));
    EXPECT_EQ(scene.one.parent(), &scene.two);
    EXPECT_EQ(scene.one.effect(0).parameter(testing::kTintLayer).keyframe(0).value, value(scene.two.id()));
    EXPECT_EQ(scene.two.children().size(), 1u);
}

TEST(Copying, keeps_links_to_partners_copied_before_under_the_rule) {
    HostRules rules;
    rules.copies_keep_links_to_present_partners = true;
    NestScene scene(rules);
    link_one_to_two(scene);
    EXPECT_EQ(scene.comp.copy_layer_here(scene.one).matte(), nullptr);
    scene.comp.copy_layer_here(scene.two).remove();
    Layer& partner = scene.comp.copy_layer_here(scene.two);
    Layer& copy = scene.comp.copy_layer_here(scene.one);
    EXPECT_EQ(copy.parent(), &partner);
    EXPECT_EQ(copy.matte(), &partner);
    EXPECT_EQ(copy.matte_type(), MatteType::luma);
    EXPECT_EQ(partner.matte_users(), std::vector<Layer*>{&copy});
    EXPECT_EQ(copy.effect(0).parameter(testing::kTintLayer).keyframe(0).value, value(partner.id()));
}

// What is read with its matte directly above goes on taking whichever layer is there.
struct MatteAbove : NestScene {
    explicit MatteAbove(bool by_position = true) {
        project.rules().mattes_by_position = by_position;
        two.load_matte(&one, MatteType::luma);
    }
};

TEST(MattesByPosition, of_copies_are_the_layers_above_them_in_the_end) {
    MatteAbove scene;
    Layer& below = scene.comp.copy_layer_here(scene.two);
    EXPECT_EQ(below.matte(), nullptr);
    EXPECT_EQ(below.matte_type(), MatteType::luma);
    Layer& above = scene.comp.copy_layer_here(scene.one);
    EXPECT_EQ(below.matte(), &above);
    EXPECT_EQ(above.matte_users(), std::vector<Layer*>{&below});
    EXPECT_EQ(scene.two.matte(), &scene.one);
}

TEST(MattesByPosition, follow_every_change_of_the_stack_and_its_undoing) {
    MatteAbove scene;
    const auto matte = [&] { return scene.two.matte(); };
    scene.three.move_to(1);
    EXPECT_EQ(matte(), &scene.three);
    EXPECT_EQ(scene.one.matte_users().size(), 0u);
    scene.two.move_to(0);
    EXPECT_EQ(matte(), nullptr);
    EXPECT_EQ(scene.two.matte_type(), MatteType::luma);
    scene.two.move_to(2);
    scene.three.remove();
    EXPECT_EQ(matte(), &scene.one);
    scene.one.remove();
    EXPECT_EQ(matte(), nullptr);
    for (Layer* expected : {&scene.one, &scene.three, static_cast<Layer*>(nullptr), &scene.three, &scene.one}) {
        scene.project.undo().undo();
        EXPECT_EQ(matte(), expected);
    }
}

TEST(MattesByPosition, are_links_where_the_host_has_those) {
    MatteAbove scene(false);
    EXPECT_EQ(scene.comp.copy_layer_here(scene.two).matte_type(), MatteType::none);
    scene.three.move_to(1);
    EXPECT_EQ(scene.two.matte(), &scene.one);
    scene.one.remove();
    EXPECT_EQ(scene.two.matte_type(), MatteType::none);
}

TEST(Copying, within_a_composition_keeps_all_links) {
    NestScene scene;
    link_one_to_two(scene);
    Layer& copy = scene.nested.copy_layer_here(scene.one);
    EXPECT_EQ(copy.parent(), &scene.two);
    EXPECT_EQ(copy.matte(), &scene.two);
    EXPECT_EQ(copy.effect(0).parameter(testing::kTintLayer).keyframe(0).value, value(scene.two.id()));
    EXPECT_EQ(scene.two.children().size(), 2u);
}

TEST(Copying, gives_names_with_numbers_only_under_the_rule) {
    NestScene scene;
    scene.nested.copy_layer_here(scene.one);
    EXPECT_EQ(names(scene.nested), (Names{"1", "1", "2", "3"}));
    scene.project.rules().copies_get_numbered_names = true;
    Layer& named = scene.layer("Name", &scene.nested);
    Layer& second = scene.nested.copy_layer_here(named);
    EXPECT_EQ(second.own_name(), "Name 2");
    EXPECT_EQ(scene.nested.copy_layer_here(named).own_name(), "Name 3");
    EXPECT_EQ(scene.nested.copy_layer_here(second).own_name(), "Name 4");
    EXPECT_EQ(scene.comp.copy_layer_here(named).own_name(), "Name");
    Layer& sourced = scene.layer("", &scene.nested);
    EXPECT_EQ(scene.nested.copy_layer_here(sourced).own_name(), "");
}

TEST(Copying, leaves_content_that_nobody_asked_for_unread_and_shared) {
    NestScene scene;
    Layer& original = scene.nested.load_layer(LayerKind::vector, nullptr);
    original.load_timing(at(1), at(1), at(5), 1);
    const auto data = std::make_shared<StreamData>();
    const auto content = std::make_shared<TestContent>([data](Layer& layer) { layer.load_stream(kOpacity, data); });
    original.set_content(content);
    Layer& copy = scene.comp.copy_layer_here(original);
    copy.set_offset(at(3));
    copy.rename("X");
    copy.move_to(0);
    EXPECT_EQ(copy.content(), content);
    EXPECT_FALSE(copy.is_content_loaded());
    EXPECT_EQ(content->loads, 0);
    EXPECT_EQ(&copy.stream(kOpacity).data(), data.get());
    EXPECT_FALSE(copy.stream(kOpacity).is_changed());
    EXPECT_EQ(content->loads, 1);
    EXPECT_FALSE(original.is_content_loaded());
    EXPECT_EQ(&original.stream(kOpacity).data(), data.get());
    EXPECT_EQ(content->loads, 2);
}

TEST(Copying, reads_content_with_layer_parameters_and_drops_those) {
    NestScene scene;
    const auto kind = install_tint(scene.project);
    const LayerId foreign = scene.two.id();
    const auto content = std::make_shared<TestContent>([kind, foreign](Layer& layer) {
        auto effect = std::make_unique<Effect>(layer, kind, "Tint");
        auto data = std::make_shared<StreamData>();
        data->static_value = value(foreign);
        effect->load_parameter(testing::kTintLayer,
                               std::make_unique<Stream>(layer, StreamType::layer_id, "Map", std::move(data)));
        layer.load_effect(std::move(effect));
    });
    content->layer_parameters = true;
    scene.one.set_content(content);
    Layer& copy = scene.comp.copy_layer_here(scene.one);
    EXPECT_EQ(copy.effect(0).parameter(testing::kTintLayer).value_at({}), value(0));
    EXPECT_TRUE(copy.effect(0).parameter(testing::kTintLayer).is_changed());
    EXPECT_EQ(scene.one.effect(0).parameter(testing::kTintLayer).value_at({}), value(foreign));
}

TEST(Copying, content_that_cannot_be_read_says_so_each_time_and_leaves_nothing_half_done) {
    NestScene scene;
    bool fails = true;
    scene.one.set_content(std::make_shared<TestContent>([&fails](Layer& layer) {
        layer.load_stream(kOpacity, std::make_shared<StreamData>());
        if (fails) throw Error(ErrorKind::bad_argument, "Bad content.");
    }));
    Layer& copy = scene.comp.copy_layer_here(scene.one);
    EXPECT_EQ(error_of([&] { copy.stream(kOpacity); }), ErrorKind::bad_argument);
    EXPECT_EQ(error_of([&] { copy.effect_count(); }), ErrorKind::bad_argument);
    EXPECT_EQ(copy.existing_stream(kOpacity), nullptr);
    fails = false;
    EXPECT_EQ(copy.stream(kOpacity).value_at({}), value(0));
}

TEST(Copying, a_cycle_of_compositions_is_refused) {
    NestScene scene;
    EXPECT_EQ(error_of([&] { scene.nested.copy_layer_here(*scene.nest); }), ErrorKind::bad_argument);
    EXPECT_EQ(scene.nested.layer_count(), 3);
    scene.comp.copy_layer_here(*scene.nest);
    EXPECT_EQ(scene.comp.layer_count(), 4);
    scene.one.remove();
    EXPECT_EQ(error_of([&] { scene.comp.copy_layer_here(scene.one); }), ErrorKind::bad_argument);
}

TEST(Copying, one_undo_step_takes_the_copy_away) {
    NestScene scene;
    Layer& copy = scene.comp.copy_layer_here(scene.one);
    EXPECT_EQ(scene.project.undo().step_names().size(), 1u);
    scene.project.undo().undo();
    EXPECT_FALSE(copy.is_alive());
    EXPECT_EQ(names(scene.comp), (Names{"A", "P", "Z"}));
}

}  // namespace
}  // namespace host::model
