// Layers that become three-dimensional, or cease to be.
#include <gtest/gtest.h>

#include "animation_text.h"

namespace lottie::document::testing {
namespace {

TEST(ThreeD, a_layer_that_becomes_so_has_the_full_set_of_rotations) {
    const Document document =
        Document::read(animation(shape_layer(1, "A", {{"ks", transform({{"r", R"({"a":0,"k":30.0,"ix":10})"}})}})));
    layer_of(document, "A").set_flag(host::model::kIs3D, true);
    const std::string text = document.write();
    EXPECT_EQ(
        object_named(text, "A"),
        shape_layer(
            1, "A",
            {{"ddd", "1"},
             {"ks", R"({"o":{"a":0,"k":100,"ix":11},"rx":{"a":0,"k":0,"ix":8},"ry":{"a":0,"k":0,"ix":9},)"
                    R"("rz":{"a":0,"k":30.0,"ix":10},"or":{"a":0,"k":[0,0,0],"ix":7},"p":{"a":0,"k":[10,20,0],"ix":2},)"
                    R"("a":{"a":0,"k":[1,2,0],"ix":1},"s":{"a":0,"k":[100,100,100],"ix":6}})"}}));
    EXPECT_NE(text.find("\"nm\":\"main\",\"ddd\":1,"), std::string::npos);
    layer_of(document, "A").set_flag(host::model::kIs3D, false);
    EXPECT_EQ(document.write(),
              animation(shape_layer(1, "A", {{"ks", transform({{"r", R"({"a":0,"k":30.0,"ix":10})"}})}})));
}

TEST(ThreeD, a_document_without_the_flag_gets_it_after_its_size) {
    const Document document =
        Document::read(R"({"fr":30,"ip":0,"op":60,"w":2,"h":1,"layers":[{"ty":4,"nm":"A","ks":{}}]})");
    layer_of(document, "A").set_flag(host::model::kIs3D, true);
    EXPECT_EQ(
        document.write(),
        R"({"fr":30,"ip":0,"op":60,"w":2,"h":1,"ddd":1,"layers":[{"ddd":1,"ty":4,"nm":"A","ks":{"rx":{"a":0,"k":0,"ix":8},)"
        R"("ry":{"a":0,"k":0,"ix":9},"rz":{"a":0,"k":0,"ix":10},"or":{"a":0,"k":[0,0,0],"ix":7}}}]})");
}

TEST(ThreeD, values_of_two_numbers_get_a_third) {
    const Document document = Document::read(animation(shape_layer(
        1, "A",
        {{"ks",
          R"({"p":{"a":1,"k":[{"t":0,"s":[1,2],"to":[1,0],"ti":[0,1]},{"t":9,"s":[3,4]}]},"s":{"k":[50,60]}})"}})));
    layer_of(document, "A").set_flag(host::model::kIs3D, true);
    const std::string ks = member(object_named(document.write(), "A"), "ks");
    EXPECT_EQ(member(ks, "p"), R"({"a":1,"k":[{"t":0,"s":[1,2,0],"to":[1,0,0],"ti":[0,1,0]},{"t":9,"s":[3,4,0]}]})");
    EXPECT_EQ(member(ks, "s"), R"({"k":[50,60,100]})");
}

TEST(ThreeD, a_layer_that_ceases_to_be_so_loses_its_rotations_and_depth) {
    const Document document = Document::read(animation(shape_layer(
        1, "A",
        {{"ddd", "1"},
         {"ks",
          R"({"o":{"a":0,"k":100},"rx":{"a":0,"k":1},"ry":{"a":0,"k":2},"rz":{"a":0,"k":3},"or":{"a":0,"k":[4,5,6]},)"
          R"("p":{"a":0,"k":[1,2,3]},"a":{"a":0,"k":[0,0,0]},"s":{"a":0,"k":[100,100,100]}})"}})));
    host::model::Layer& layer = layer_of(document, "A");
    EXPECT_EQ(layer.stream(host::model::kRotateX).data().static_value.n[0], 1);
    EXPECT_EQ(layer.stream(host::model::kRotation).data().static_value.n[0], 3);
    EXPECT_EQ(layer.stream(host::model::kOrientation).data().static_value.n[2], 6);
    layer.set_flag(host::model::kIs3D, false);
    const std::string text = object_named(document.write(), "A");
    EXPECT_EQ(member(text, "ddd"), "0");
    EXPECT_EQ(
        member(text, "ks"),
        R"({"o":{"a":0,"k":100},"r":{"a":0,"k":3},"p":{"a":0,"k":[1,2,0]},"a":{"a":0,"k":[0,0,0]},"s":{"a":0,"k":[100,100,100]}})");
}

TEST(ThreeD, what_the_host_sets_on_the_new_streams_is_written) {
    const Document document = Document::read(animation(shape_layer(1, "A")));
    host::model::Layer& layer = layer_of(document, "A");
    layer.set_flag(host::model::kIs3D, true);
    layer.stream(host::model::kRotateX).set_static_value({{15, 0, 0, 0}});
    layer.stream(host::model::kRotation).set_static_value({{25, 0, 0, 0}});
    const std::string ks = member(object_named(document.write(), "A"), "ks");
    EXPECT_EQ(member(ks, "rx"), R"({"a":0,"k":15,"ix":8})");
    EXPECT_EQ(member(ks, "rz"), R"({"a":0,"k":25,"ix":10})");
    EXPECT_EQ(member(ks, "r"), "");
}

TEST(ThreeD, what_the_host_sets_on_streams_that_a_flat_layer_lacks_is_not_written) {
    const Document document = Document::read(animation(shape_layer(1, "A")));
    layer_of(document, "A").stream(host::model::kRotateX).set_static_value({{15, 0, 0, 0}});
    EXPECT_EQ(document.write(), animation(shape_layer(1, "A")));
}

TEST(ThreeD, a_rotation_by_the_other_name_is_read_and_changed_where_it_is) {
    const Document document =
        Document::read(animation(shape_layer(1, "A", {{"ddd", "1"}, {"ks", R"({"r":{"a":0,"k":3}})"}})));
    host::model::Stream& rotation = layer_of(document, "A").stream(host::model::kRotation);
    EXPECT_EQ(rotation.data().static_value.n[0], 3);
    rotation.set_static_value({{4, 0, 0, 0}});
    EXPECT_EQ(member(object_named(document.write(), "A"), "ks"), R"({"r":{"a":0,"k":4}})");
}

}  // namespace
}  // namespace lottie::document::testing
