// Which layer streams which layers have.
#include <gtest/gtest.h>

#include <set>

#include "scene.h"

namespace host::model {
namespace {

using testing::error_of;
using testing::Scene;
using testing::value;

std::set<int> legal(const Layer& layer) {
    std::set<int> all;
    for (int number = -2; number < 64; ++number) {
        if (layer.is_stream_legal(number)) all.insert(number);
    }
    return all;
}

std::set<int> range(int first, int last) {
    std::set<int> all;
    for (int i = first; i <= last; ++i) all.insert(i);
    return all;
}

std::set<int> together(std::initializer_list<std::set<int>> sets) {
    std::set<int> all;
    for (const auto& set : sets) all.insert(set.begin(), set.end());
    return all;
}

const std::set<int> kFlatPicture = {kAnchorPoint, kPosition, kScale, kRotation, kOpacity, kMarker};
const std::set<int> kDepth = {kRotateX, kRotateY, kOrientation};
const std::set<int> kMaterial = together({range(22, 30), range(43, 48)});

TEST(StreamLegality, a_still_picture_has_the_flat_transform) {
    Scene scene;
    EXPECT_EQ(legal(scene.layer("L")), kFlatPicture);
}

TEST(StreamLegality, three_d_adds_rotations_and_material) {
    Scene scene;
    Layer& layer = scene.layer("L");
    layer.set_flag(kIs3D, true);
    EXPECT_EQ(legal(layer), together({kFlatPicture, kDepth, kMaterial}));
}

TEST(StreamLegality, time_remap_needs_its_switch) {
    Scene scene;
    Layer& layer = scene.layer("L");
    layer.set_flag(kTimeRemap, true);
    EXPECT_EQ(legal(layer), together({kFlatPicture, {kTimeRemapStream}}));
}

TEST(StreamLegality, compositions_and_clips_may_sound) {
    Scene scene;
    EXPECT_EQ(legal(scene.comp.add_layer(scene.new_comp("Nested"))), together({kFlatPicture, {kAudioLevels}}));
}

TEST(StreamLegality, text_has_source_text) {
    Scene scene;
    EXPECT_EQ(legal(scene.comp.load_layer(LayerKind::text, nullptr)), together({kFlatPicture, {kSourceText}}));
    EXPECT_EQ(legal(scene.comp.load_layer(LayerKind::vector, nullptr)), kFlatPicture);
}

TEST(StreamLegality, cameras_and_lights_have_their_own) {
    Scene scene;
    const std::set<int> both = together({{kAnchorPoint, kPosition, kRotation, kMarker}, kDepth});
    EXPECT_EQ(legal(scene.comp.load_layer(LayerKind::camera, nullptr)), together({both, range(11, 15), range(32, 39)}));
    EXPECT_EQ(legal(scene.comp.load_layer(LayerKind::light, nullptr)),
              together({both, range(16, 21), {kCastsShadows}, range(40, 42)}));
}

TEST(StreamLegality, streams_that_do_not_apply_exist_hidden_and_can_be_set) {
    Scene scene;
    Layer& layer = scene.layer("L");
    for (const int number : {kTimeRemapStream, kRotateX, kRotateY, kOrientation, kZoom}) {
        EXPECT_FALSE(layer.is_stream_legal(number));
        EXPECT_EQ(layer.stream(number).value_at({}), Value{});
        EXPECT_FALSE(layer.stream(number).is_changed());
        layer.stream(number).set_static_value(value(3));
        EXPECT_EQ(layer.stream(number).value_at({}), value(3));
    }
    layer.stream(kRotateY).insert_keyframe({});
    EXPECT_EQ(layer.stream(kRotateY).keyframe_count(), 1u);
}

TEST(StreamLegality, unknown_numbers_have_no_stream) {
    Scene scene;
    Layer& layer = scene.layer("L");
    for (const int number : {-1, kLayerStreamCount, 1000}) {
        EXPECT_EQ(error_of([&] { layer.stream(number); }), ErrorKind::bad_argument);
    }
}

TEST(StreamLegality, the_transform_streams_have_their_types_and_defaults) {
    Scene scene;
    Layer& layer = scene.comp.load_layer(LayerKind::vector, nullptr);
    EXPECT_EQ(layer.stream(kPosition).type(), StreamType::three_d_spatial);
    EXPECT_EQ(layer.stream(kAnchorPoint).type(), StreamType::three_d_spatial);
    EXPECT_EQ(layer.stream(kOrientation).type(), StreamType::three_d_spatial);
    EXPECT_EQ(layer.stream(kScale).type(), StreamType::three_d);
    EXPECT_EQ(layer.stream(kScale).value_at({}), value(100, 100, 100));
    EXPECT_EQ(layer.stream(kRotation).type(), StreamType::one_d);
    EXPECT_EQ(layer.stream(kOpacity).value_at({}), value(100));
    EXPECT_EQ(layer.stream(kAudioLevels).type(), StreamType::two_d);
    EXPECT_EQ(layer.stream(kMarker).type(), StreamType::marker);
    EXPECT_EQ(layer.stream(kSourceText).type(), StreamType::text_document);
}

}  // namespace
}  // namespace host::model
