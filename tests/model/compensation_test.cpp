// Keeping a layer in place while its parent changes.
#include <gtest/gtest.h>

#include <cmath>
#include <iostream>
#include <random>
#include <utility>
#include <vector>

#include "scene.h"
#include "world.h"

namespace host::model {
namespace {

using testing::at;
using testing::key;
using testing::PlaceWatch;
using testing::Scene;
using testing::value;

// Pixels. Values are rounded to a millionth of their units; a degree's millionth moves a point at 10^5 px by 0.002 px.
constexpr double kClose = 0.02;

class RandomScene : public Scene {
  public:
    RandomScene() : seed(std::random_device{}()), random_(seed) { std::cout << "seed " << seed << "\n"; }

    double between(double low, double high) { return std::uniform_real_distribution<double>(low, high)(random_); }
    bool coin() { return std::uniform_int_distribution<int>(0, 1)(random_) == 1; }

    // A layer that can only turn, move, and grow in all directions alike: chains of these have no shear.
    Layer& free_layer(bool is_3d, bool mirrored) {
        Layer& made = layer("L");
        if (is_3d) made.load_flags(made.flags() | kIs3D);
        const double z = is_3d ? 1 : 0;
        made.stream(kAnchorPoint).set_static_value(value(between(-50, 50), between(-50, 50), z * between(-9, 9)));
        made.stream(kPosition).set_static_value(value(between(-900, 900), between(-900, 900), z * between(-90, 90)));
        const double scale = between(25, 300);
        const double mirror = mirrored && coin() ? -1 : 1;
        made.stream(kScale).set_static_value(value(mirror * scale, scale, is_3d ? scale : 100));
        made.stream(kRotation).set_static_value(value(between(-800, 800)));
        if (is_3d) {
            made.stream(kOrientation).set_static_value(value(between(0, 360), between(0, 360), between(0, 360)));
            made.stream(kRotateX).set_static_value(value(between(-90, 90)));
            made.stream(kRotateY).set_static_value(value(between(-90, 90)));
        }
        return made;
    }
    Layer& chain(int length, bool is_3d, bool mirrored) {
        Layer* above = &free_layer(is_3d, mirrored);
        for (int i = 1; i < length; ++i) {
            Layer& next = free_layer(is_3d, mirrored);
            next.load_parent(above);
            above = &next;
        }
        return *above;
    }

    const unsigned seed;

  private:
    std::mt19937 random_;
};

// Goes under one random chain, over to another, and out of it.
void walk_through_chains(bool is_3d, bool mirrored) {
    RandomScene scene;
    for (int round = 0; round < 60; ++round) {
        Layer& child = scene.free_layer(is_3d, mirrored);
        const PlaceWatch watch(child);
        child.set_parent(&scene.chain(1 + round % 4, is_3d, mirrored), Parenting::keep_place);
        ASSERT_LT(watch.moved(), kClose) << "going in, round " << round;
        child.set_parent(&scene.chain(1 + round % 3, is_3d, mirrored), Parenting::keep_place);
        ASSERT_LT(watch.moved(), kClose) << "going over, round " << round;
        child.set_parent(nullptr, Parenting::keep_place);
        ASSERT_LT(watch.moved(), kClose) << "going out, round " << round;
    }
}

TEST(Compensation, a_flat_layer_stays_in_place_through_chains_of_parents) {
    walk_through_chains(false, false);
}
TEST(Compensation, a_flat_layer_stays_in_place_through_mirrored_chains) {
    walk_through_chains(false, true);
}
TEST(Compensation, a_3d_layer_stays_in_place_through_chains_of_parents) {
    walk_through_chains(true, false);
}
TEST(Compensation, a_3d_layer_stays_in_place_through_mirrored_chains) {
    walk_through_chains(true, true);
}

TEST(Compensation, an_unturned_layer_stays_in_place_under_an_unevenly_scaled_parent) {
    Scene scene;
    Layer& parent = scene.layer("Parent");
    parent.stream(kScale).set_static_value(value(50, -300, 100));
    parent.stream(kRotation).set_static_value(value(0));
    Layer& child = scene.layer("Child");
    const PlaceWatch watch(child);
    child.set_parent(&parent, Parenting::keep_place);
    EXPECT_LT(watch.moved(), kClose);
    child.set_parent(nullptr, Parenting::keep_place);
    EXPECT_LT(watch.moved(), kClose);
    EXPECT_NEAR(child.stream(kScale).data().static_value.n[1], 100, 1e-5);
}

TEST(Compensation, shear_is_lost_and_the_x_axis_decides) {
    Scene scene;
    Layer& parent = scene.layer("Parent");
    parent.stream(kAnchorPoint).set_static_value({});
    parent.stream(kPosition).set_static_value({});
    parent.stream(kScale).set_static_value(value(200, 100, 100));
    Layer& child = scene.layer("Child");
    child.stream(kRotation).set_static_value(value(45));
    child.load_parent(&parent);
    child.set_parent(nullptr, Parenting::keep_place);
    // The matrix [2c -2s; s c] for 45 degrees.
    EXPECT_NEAR(child.stream(kRotation).data().static_value.n[0], std::atan2(1, 2) * 180 / M_PI, 1e-5);
    EXPECT_NEAR(child.stream(kScale).data().static_value.n[0], 100 * std::sqrt(2.5), 1e-4);
    EXPECT_NEAR(child.stream(kScale).data().static_value.n[1], 200 / std::sqrt(2.5), 1e-4);
}

TEST(Compensation, a_parent_that_does_nothing_leaves_the_streams_untouched) {
    Scene scene;
    Layer& parent = scene.layer("Parent");
    for (const int number : {kAnchorPoint, kPosition}) parent.stream(number).set_static_value({});
    Layer& child = scene.layer("Child");
    const StreamData* before[] = {&child.stream(kPosition).data(), &child.stream(kScale).data(),
                                  &child.stream(kRotation).data(), &child.stream(kAnchorPoint).data()};
    child.set_parent(&parent, Parenting::keep_place);
    const StreamData* after[] = {&child.stream(kPosition).data(), &child.stream(kScale).data(),
                                 &child.stream(kRotation).data(), &child.stream(kAnchorPoint).data()};
    for (std::size_t i = 0; i < std::size(before); ++i) EXPECT_EQ(before[i], after[i]) << i;
    EXPECT_EQ(child.parent(), &parent);
}

TEST(Compensation, a_parent_that_only_moves_leaves_scale_and_rotation_untouched) {
    Scene scene;
    Layer& parent = scene.layer("Parent");
    Layer& child = scene.layer("Child");
    const StreamData* scale = &child.stream(kScale).data();
    const StreamData* rotation = &child.stream(kRotation).data();
    child.set_parent(&parent, Parenting::keep_place);
    EXPECT_EQ(&child.stream(kScale).data(), scale);
    EXPECT_EQ(&child.stream(kRotation).data(), rotation);
    EXPECT_NE(child.stream(kPosition).data().static_value, value(320, 240));
}

TEST(Compensation, every_keyframe_changes_alike) {
    Scene scene;
    Layer& parent = scene.layer("Parent");
    parent.stream(kAnchorPoint).set_static_value({});
    parent.stream(kPosition).set_static_value(value(100, 50));
    parent.stream(kRotation).set_static_value(value(90));
    parent.stream(kScale).set_static_value(value(200, 200, 100));
    Layer& child = scene.layer("Child");
    Keyframe curved = key(0, value(10, 0, 7));
    curved.tangent_out = value(1, 2, 0);
    curved.ease_out[0] = {30, 0.5};
    child.stream(kPosition).replace(value(0, 0), {curved, key(1, value(0, 10)), key(2, value(-5, 5))});
    Keyframe turning = key(0, value(5));
    turning.ease_in[0] = {12, 0.4};
    child.stream(kRotation).replace({}, {turning, key(2, value(725))});
    Keyframe growing = key(0, value(10, 20, 100));
    growing.ease_out[1] = {8, 0.3};
    child.stream(kScale).replace(value(100, 100, 100), {growing, key(3, value(0, -40, 100))});
    const StreamData* anchor = &child.stream(kAnchorPoint).data();
    const StreamData* opacity = &child.stream(kOpacity).data();
    child.load_parent(&parent);

    child.set_parent(nullptr, Parenting::keep_place);
    // (x, y) goes to (100 - 2y, 50 + 2x).
    const StreamData& position = child.stream(kPosition).data();
    ASSERT_EQ(position.keyframes.size(), 3u);
    EXPECT_EQ(position.static_value, value(100, 50));
    EXPECT_EQ(position.keyframes[0].value, value(100, 70, 7));
    EXPECT_EQ(position.keyframes[1].value, value(80, 50));
    EXPECT_EQ(position.keyframes[2].value, value(90, 40));
    EXPECT_EQ(position.keyframes[0].tangent_out, value(-4, 2));
    EXPECT_EQ(position.keyframes[0].ease_out[0], (Ease{60, 0.5}));
    const StreamData& rotation = child.stream(kRotation).data();
    EXPECT_EQ(rotation.static_value, value(90));
    EXPECT_EQ(rotation.keyframes[0].value, value(95));
    EXPECT_EQ(rotation.keyframes[1].value, value(815));
    EXPECT_EQ(rotation.keyframes[0].ease_in[0], (Ease{12, 0.4}));
    const StreamData& scale = child.stream(kScale).data();
    EXPECT_EQ(scale.keyframes[0].value, value(20, 40, 100));
    EXPECT_EQ(scale.keyframes[1].value, value(0, -80, 100));
    EXPECT_EQ(scale.keyframes[0].ease_out[1], (Ease{16, 0.3}));
    EXPECT_EQ(&child.stream(kAnchorPoint).data(), anchor);
    EXPECT_EQ(&child.stream(kOpacity).data(), opacity);
    scene.project.undo().undo();
    EXPECT_EQ(child.stream(kRotation).data().keyframes[1].value, value(725));
    EXPECT_EQ(child.parent(), &parent);
}

TEST(Compensation, happens_at_the_current_time) {
    Scene scene;
    Layer& parent = scene.layer("Parent");
    parent.stream(kAnchorPoint).set_static_value({});
    parent.stream(kPosition).replace({}, {key(0, value(0, 0)), key(10, value(100, 0))});
    Layer& child = scene.layer("Child");
    child.load_parent(&parent);
    scene.comp.set_current_time(at(3));
    const PlaceWatch watch(child);
    child.set_parent(nullptr, Parenting::keep_place);
    EXPECT_LT(watch.moved(), kClose);
    EXPECT_EQ(child.stream(kPosition).data().static_value, value(350, 240));
}

TEST(Compensation, the_time_of_each_layer_counts_from_its_offset) {
    Scene scene;
    Layer& parent = scene.layer("Parent");
    parent.stream(kPosition).replace({}, {key(0, value(0, 0)), key(10, value(100, 0))});
    parent.set_offset(at(2));
    Layer& child = scene.layer("Child");
    child.load_parent(&parent);
    scene.comp.set_current_time(at(3));
    child.set_parent(nullptr, Parenting::keep_place);
    EXPECT_EQ(child.stream(kPosition).data().static_value, value(320 + 10 - 100, 240 - 50));
}

// What a layer does when it leaves a parent or goes under it.
struct Change {
    using Streams = std::vector<std::pair<int, Value>>;

    const char* name;
    enum { leaves, goes_under } step;
    enum { none, parent, both } are_3d;
    bool stays_in_place;
    Streams of_parent;
    Streams of_child;
    Streams of_child_after;
};

const Change kChanges[] = {
    {"whole_turns_of_the_parent_are_kept",
     Change::leaves,
     Change::none,
     true,
     {{kRotation, value(750)}},
     {},
     {{kRotation, value(750)}}},
    {"leaving_a_parent_of_no_size_leaves_the_child_without_size",
     Change::leaves,
     Change::none,
     true,
     {{kScale, value(0, 0, 100)}, {kRotation, value(30)}},
     {},
     {{kScale, value(0, 0, 100)}, {kRotation, value(30)}}},
    {"a_parent_squeezed_to_a_line_keeps_its_direction",
     Change::leaves,
     Change::none,
     true,
     {{kScale, value(0, 50, 100)}, {kRotation, value(30)}},
     {},
     {{kScale, value(0, 50, 100)}}},
    {"going_under_a_parent_of_no_size_counts_its_scale_as_whole",
     Change::goes_under,
     Change::none,
     false,
     {{kAnchorPoint, {}}, {kPosition, value(20, 40)}, {kScale, value(0, 0, 0)}},
     {},
     {{kPosition, value(300, 200)}, {kScale, value(100, 100, 100)}}},
    {"a_tiny_3d_parent_is_no_flat_one",
     Change::goes_under,
     Change::both,
     true,
     {{kScale, value(0.005, 0.005, 0.005)}},
     {},
     {}},
    {"a_3d_child_takes_the_parents_turn_into_its_orientation",
     Change::leaves,
     Change::both,
     true,
     {{kRotateY, value(90)}},
     {{kRotateX, value(12)}, {kRotation, value(34)}},
     {{kOrientation, value(0, 90, 0)}, {kRotateX, value(12)}, {kRotation, value(34)}}},
    {"a_flat_child_of_a_3d_parent_takes_what_lies_in_the_plane",
     Change::leaves,
     Change::parent,
     false,
     {{kAnchorPoint, {}}, {kPosition, value(10, 20, 500)}, {kRotation, value(90)}},
     {},
     {{kPosition, value(10 - 240, 20 + 320)}, {kRotation, value(90)}}},
    {"a_parent_seen_edge_on_leaves_the_child_as_it_is",
     Change::goes_under,
     Change::parent,
     false,
     {{kRotateY, value(90)}},
     {},
     {{kPosition, value(320, 240)}}},
};

class CompensatedChild : public ::testing::TestWithParam<Change> {};

TEST_P(CompensatedChild, has_these_values) {
    const Change& change = GetParam();
    Scene scene;
    Layer& parent = scene.layer("Parent");
    Layer& child = scene.layer("Child");
    if (change.are_3d != Change::none) parent.set_flag(kIs3D, true);
    if (change.are_3d == Change::both) child.set_flag(kIs3D, true);
    for (const auto& [stream, set] : change.of_parent) parent.stream(stream).set_static_value(set);
    for (const auto& [stream, set] : change.of_child) child.stream(stream).set_static_value(set);
    const bool leaves = change.step == Change::leaves;
    if (leaves) child.load_parent(&parent);
    const PlaceWatch watch(child);
    child.set_parent(leaves ? nullptr : &parent, Parenting::keep_place);
    EXPECT_EQ(child.parent(), leaves ? nullptr : &parent);
    EXPECT_EQ(watch.moved() < kClose, change.stays_in_place);
    for (const auto& [stream, expected] : change.of_child_after)
        EXPECT_EQ(child.stream(stream).data().static_value, expected) << "stream " << stream;
}

INSTANTIATE_TEST_SUITE_P(Compensation, CompensatedChild, ::testing::ValuesIn(kChanges),
                         [](const auto& change) { return change.param.name; });

TEST(Compensation, a_camera_carries_its_point_of_interest_along) {
    Scene scene;
    Layer& parent = scene.layer("Parent");
    parent.set_flag(kIs3D, true);
    parent.stream(kAnchorPoint).set_static_value({});
    parent.stream(kPosition).set_static_value(value(10, 20, 30));
    parent.stream(kScale).set_static_value(value(200, 200, 200));
    Layer& camera = scene.comp.load_layer(LayerKind::camera, nullptr);
    camera.load_flags(camera.flags() | kLookAtPoi);
    camera.stream(kPosition).set_static_value(value(1, 2, -3));
    camera.stream(kAnchorPoint).set_static_value(value(4, 5, 6));
    camera.load_parent(&parent);
    camera.set_parent(nullptr, Parenting::keep_place);
    EXPECT_EQ(camera.stream(kPosition).data().static_value, value(12, 24, 24));
    EXPECT_EQ(camera.stream(kAnchorPoint).data().static_value, value(18, 30, 42));
}

}  // namespace
}  // namespace host::model
