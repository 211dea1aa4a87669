// Small animations for the tests of the command.
#pragma once

#include <string>
#include <vector>

namespace test {

// The transform that every layer here has.
inline const std::string kTransform =
    R"("ks":{"o":{"a":0,"k":100},"r":{"a":0,"k":0},"p":{"a":0,"k":[50,40,0]},"a":{"a":0,"k":[0,0,0]},"s":{"a":0,"k":[100,100,100]}})";

inline std::string shape_layer(int ind, const std::string& name) {
    return R"({"ddd":0,"ind":)" + std::to_string(ind) + R"(,"ty":4,"nm":")" + name + R"(","sr":1,)" + kTransform +
           R"(,"ao":0,"shapes":[],"ip":0,"op":50,"st":0,"bm":0})";
}

inline std::string nest_layer(int ind, const std::string& name, const std::string& asset) {
    return R"({"ddd":0,"ind":)" + std::to_string(ind) + R"(,"ty":0,"nm":")" + name + R"(","refId":")" + asset +
           R"(","sr":1,)" + kTransform + R"(,"ao":0,"w":100,"h":80,"ip":0,"op":50,"st":0,"bm":0})";
}

inline std::string joined(const std::vector<std::string>& texts) {
    std::string result;
    for (const std::string& text : texts) result += (result.empty() ? "" : ",") + text;
    return result;
}

inline std::string asset(const std::string& id, const std::string& name, const std::vector<std::string>& layers) {
    return R"({"id":")" + id + R"(","nm":")" + name + R"(","layers":[)" + joined(layers) + "]}";
}

inline std::string animation(const std::vector<std::string>& assets, const std::vector<std::string>& layers) {
    return R"({"v":"5.7.4","fr":25,"ip":0,"op":50,"w":100,"h":80,"nm":"Main","ddd":0,"assets":[)" + joined(assets) +
           R"(],"layers":[)" + joined(layers) + R"(],"markers":[]})";
}

// "Main" holds a title, the nest "Intro" and a background.
inline std::string one_nest() {
    return animation({asset("comp_0", "Intro comp", {shape_layer(1, "circle"), shape_layer(2, "square")})},
                     {shape_layer(1, "Title"), nest_layer(2, "Intro", "comp_0"), shape_layer(3, "Background")});
}

// Two nests that share a composition, and one with a nest inside.
inline std::string three_nests() {
    return animation(
        {asset("comp_0", "Shared", {shape_layer(1, "dot")}),
         asset("comp_1", "Outer", {nest_layer(1, "Inner", "comp_2"), shape_layer(2, "frame")}),
         asset("comp_2", "Deep", {shape_layer(1, "core")})},
        {nest_layer(1, "Left", "comp_0"), nest_layer(2, "Right", "comp_0"), nest_layer(3, "Box", "comp_1")});
}

// A red square of 40 pixels.
inline std::string solid_layer(int ind, const std::string& name, const std::string& more = "") {
    return R"({"ddd":0,"ind":)" + std::to_string(ind) + R"(,"ty":1,"nm":")" + name + R"(","sr":1,)" + kTransform +
           R"(,"ao":0,"sw":40,"sh":40,"sc":"#ff0000","ip":0,"op":50,"st":0)" + more + R"(,"bm":0})";
}

// The nest "Intro" is half transparent, and its look changes.
inline std::string fading_nest() {
    std::string nest = nest_layer(2, "Intro", "comp_0");
    const std::string opaque = R"("o":{"a":0,"k":100})";
    nest.replace(nest.find(opaque), opaque.size(), R"("o":{"a":0,"k":50})");
    nest.replace(nest.find("[50,40,0]"), 9, "[0,0,0]");
    return animation({asset("comp_0", "Intro comp", {solid_layer(1, "red"), shape_layer(2, "square")})},
                     {shape_layer(1, "Title"), nest, shape_layer(3, "Background")});
}

// Names, an id and a member that try to break out of whatever is written about them; the look changes.
inline std::string hostile_names() {
    const std::string name = R"(a\"]]><&\n\u001b[31m\u009b\uFFFE)";
    const std::string rider = R"(,"parent":1,"ef":[],")" + name + R"(":{"x":"index"})";
    return animation({asset(name, name, {nest_layer(1, name, "comp_1"), shape_layer(2, name)}),
                      asset("comp_1", "Deep", {solid_layer(1, name), solid_layer(2, name, rider)})},
                     {nest_layer(1, name, name)});
}

inline std::string no_nest() {
    return animation({}, {shape_layer(1, "Title")});
}

}  // namespace test
