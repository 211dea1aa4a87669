// A hundred thousand layers: minutes if any single change cost as much as the composition is big.
#include <gtest/gtest.h>

#include <chrono>
#include <iostream>

#include "scene.h"

namespace host::model {
namespace {

using testing::Scene;
using testing::value;

constexpr int kMany = 100'000;

class Stopwatch {
  public:
    explicit Stopwatch(double limit_seconds) : limit_(limit_seconds) {}
    void lap(const char* what) {
        const auto now = Clock::now();
        std::cout << "  " << what << ": " << std::chrono::duration<double>(now - lap_).count() << " s\n";
        lap_ = now;
    }
    ~Stopwatch() { EXPECT_LT(std::chrono::duration<double>(Clock::now() - start_).count(), limit_); }

  private:
    using Clock = std::chrono::steady_clock;
    double limit_;
    Clock::time_point start_ = Clock::now();
    Clock::time_point lap_ = start_;
};

TEST(Scale, a_hundred_thousand_layers_are_copied_moved_parented_renamed_and_all_undone) {
    Stopwatch watch(100);
    Scene scene;
    Comp& nested = scene.new_comp("Nested");
    for (int i = 0; i < kMany; ++i) {
        Layer& layer = nested.load_layer(LayerKind::vector, nullptr);
        layer.load_name(i % 2 == 0 ? "Same" : "L" + std::to_string(i));
        layer.load_timing({}, {}, nested.duration(), 1);
    }
    scene.comp.load_layer(LayerKind::vector, nullptr).load_name("Below");
    scene.comp.select({&scene.comp.layer_at(0)});
    scene.project.undo().clear();
    watch.lap("made");

    scene.project.undo().begin_group("All");
    Layer& null = scene.comp.create_null("Null", {});
    null.stream(kRotation).set_static_value(value(45));
    std::vector<Layer*> copies;
    for (int i = 0; i < kMany; ++i) copies.push_back(&scene.comp.copy_layer_here(nested.layer_at(i)));
    watch.lap("copied");
    ASSERT_EQ(scene.comp.layer_count(), kMany + 2);
    ASSERT_EQ(copies.front()->index(), 1);
    ASSERT_EQ(copies.back()->index(), kMany);

    for (Layer* copy : copies) copy->move_to(0);
    ASSERT_EQ(copies.back()->index(), 0);
    for (int i = 0; i < kMany; ++i) ASSERT_EQ(scene.comp.layer_at(i).index(), i);
    watch.lap("moved to the top and looked up");

    for (Layer* copy : copies) copy->set_parent(&null, Parenting::keep_local_values);
    ASSERT_EQ(null.children().size(), copies.size());
    watch.lap("parented");

    copies.front()->stream(kOpacity).set_expression("thisComp.layer('Renamed 99999').opacity");
    for (int i = 0; i < kMany; ++i) copies[static_cast<std::size_t>(i)]->rename("Renamed " + std::to_string(i));
    ASSERT_EQ(scene.comp.layer_named("Renamed 70000"), copies[70'000]);
    watch.lap("renamed");

    scene.project.delete_item(*null.source());
    ASSERT_EQ(copies.back()->parent(), nullptr);
    ASSERT_EQ(copies.back()->stream(kRotation).value_at({}), value(45));
    watch.lap("null deleted");

    scene.comp.select(copies);
    ASSERT_EQ(scene.comp.selected_layers().size(), copies.size());
    for (Layer* copy : copies) copy->remove();
    ASSERT_EQ(scene.comp.layer_count(), 1);
    watch.lap("selected and removed");

    scene.project.undo().end_group();
    scene.project.undo().undo_all();
    ASSERT_EQ(scene.comp.layer_count(), 1);
    ASSERT_EQ(scene.comp.selected_layers().size(), 1u);
    watch.lap("undone");
}

TEST(Scale, a_hundred_thousand_layers_of_one_source_go_with_it_and_come_back) {
    Stopwatch watch(60);
    Scene scene;
    for (int i = 0; i < kMany; ++i) scene.comp.load_layer(LayerKind::av, &scene.picture);
    scene.picture.set_name("Renamed");
    ASSERT_EQ(scene.comp.layer_named("Renamed"), &scene.comp.layer_at(0));
    scene.project.delete_item(scene.picture);
    ASSERT_EQ(scene.comp.layer_count(), 0);
    scene.project.undo().undo_all();
    ASSERT_EQ(scene.picture.users().size(), static_cast<std::size_t>(kMany));
    watch.lap("deleted and undone");
}

TEST(Scale, a_hundred_thousand_expressions_follow_their_layers) {
    Stopwatch watch(60);
    Scene scene;
    const int key = testing::install_tint(scene.project)->key;
    std::vector<Layer*> layers;
    for (int i = 0; i < kMany / 2; ++i) {
        Layer& layer = scene.comp.load_layer(LayerKind::vector, nullptr);
        layer.load_name("L" + std::to_string(i));
        layers.push_back(&layer);
    }
    for (std::size_t i = 0; i < layers.size(); ++i) {
        const std::string named = layers[(i + 1) % layers.size()]->own_name();
        layers[i]->stream(kOpacity).set_expression("thisComp.layer('" + named + "').opacity");
        layers[i]->apply_effect(key).parameter(testing::kTintNumber).set_expression("layer('" + named + "').index");
    }
    watch.lap("set");
    for (Layer* layer : layers) layer->rename(layer->own_name() + "x");
    ASSERT_EQ(layers[0]->stream(kOpacity).data().expression, "thisComp.layer('L1x').opacity");
    watch.lap("renamed");
    for (std::size_t i = 0; i < 20'000; ++i) scene.project.auto_fix_expressions("L" + std::to_string(i), "M");
    watch.lap("repairs tried");
    scene.project.undo().undo_all();
    ASSERT_FALSE(layers[0]->stream(kOpacity).has_expression());
    ASSERT_EQ(layers[0]->effect_count(), 0u);
    watch.lap("undone");
}

TEST(Scale, a_hundred_thousand_items_are_walked_and_numbered) {
    Stopwatch watch(60);
    Project project;
    Item* folder = nullptr;
    for (int i = 0; i < kMany; ++i) {
        if (i % 100 == 0) folder = &project.add_folder("Folder", i % 1000 == 0 ? nullptr : folder);
        project.add_footage("F", {}, 1, 1, folder);
    }
    watch.lap("made");
    int number = 0;
    for (Item* item = &project.root_folder(); item != nullptr; item = project.next_item(*item), ++number) {
        ASSERT_EQ(project.number_of(*item), number);
        if (number > 0) {
            ASSERT_EQ(&project.item_by_number(number), item);
        }
    }
    ASSERT_EQ(number, project.item_count() + 1);
    watch.lap("walked");
    for (Item* item : project.root_folder().folder_contents()) project.delete_item(*item);
    ASSERT_EQ(project.item_count(), 0);
    project.undo().undo_all();
    ASSERT_EQ(project.item_count(), 0);
    watch.lap("deleted and undone");
}

}  // namespace
}  // namespace host::model
