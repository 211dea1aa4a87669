// Short animations whose look is judged.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace test {

// Members by key, added to those that a plain layer has or in their place.
using Members = std::map<std::string, std::string>;

// Property objects.
std::string still(const std::string& value);
// Linear from keyframe to keyframe; values are written as arrays: "100" or "10,20,0".
std::string keyed(const std::vector<std::pair<double, std::string>>& keys);
std::string expression(const std::string& text, const std::string& value = "0");

// A path property: a circle by straight lines between so many vertices, once around it forward or backward.
std::string circle(int vertices, double x, double y, double radius, bool is_forward = true);

// A "ks": at 0,0, full size and opaque, but for the members named.
std::string transform(const Members& members = {});

// Layers, on from frame 0 to 20, with such a transform. `ind` is the number that other layers know them by.
std::string solid(int ind, const std::string& name, int width, int height, const std::string& color,
                  const Members& members = {});
std::string null_layer(int ind, const std::string& name, const Members& members = {});
std::string shape_layer(int ind, const std::string& name, const std::string& shapes, const Members& members = {});
std::string text_layer(int ind, const std::string& name, const Members& members = {});
std::string camera(int ind, const std::string& name, const Members& members = {});
std::string nest_layer(int ind, const std::string& name, const std::string& id, const Members& members = {});

// "ks" with the corner of the layer at x, y.
std::string at(double x, double y);

// A main composition of 100 x 100 with a nest of the same size, 20 frames long at 25 frames a second.
struct Nesting {
    std::vector<std::string> above = {};
    Members nest = {};  // the nest is layer 10, "Nest"
    std::vector<std::string> inside = {solid(1, "red", 40, 40, "#ff0000", {{"ks", at(20, 20)}}),
                                       solid(2, "blue", 40, 40, "#0000ff", {{"ks", at(40, 40)}})};
    std::vector<std::string> below = {solid(20, "ground", 100, 100, "#cccccc")};
    Members composition = {};              // of the nest's asset
    std::vector<std::string> assets = {};  // more of them
};
std::string animation(const Nesting& nesting);
// The same without a nest.
std::string flat_animation(const std::vector<std::string>& layers);

}  // namespace test
