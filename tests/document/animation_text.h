// Small animations for tests, and looking at what was written.
#pragma once

#include <map>
#include <string>

#include "document/document.h"

namespace lottie::document::testing {

// A whole document of 60 frames, 200 x 100, named "main". `layers` and `assets` are the insides of the arrays.
std::string animation(const std::string& layers, const std::string& assets = "", const std::string& frame_rate = "30");

// Members by key, for replacing or adding some of those a plain layer has. A value of "" leaves the member out.
using Members = std::map<std::string, std::string>;

// A shape layer in the exporter's order with static transform: position 10,20, anchor 1,2, scale 100, opacity 100.
std::string shape_layer(int ind, const std::string& name, const Members& members = {});
// A layer that shows the composition `id`, 80 x 40.
std::string nest_layer(int ind, const std::string& name, const std::string& id, const Members& members = {});
std::string nest_asset(const std::string& id, const std::string& layers);

// The transform of a plain layer, with other properties in place of some.
std::string transform(const Members& properties = {});

// A position property with these keyframes.
std::string keyed(const std::string& keyframes);

host::model::Layer& layer_of(const Document& document, const std::string& name);  // in the main composition
host::model::Layer& layer_of(host::model::Comp& comp, const std::string& name);
host::model::Comp& comp_of(const Document& document, const std::string& name);

// The text of the first object in `text` that has this "nm"; fails the test if there is none.
std::string object_named(const std::string& text, const std::string& name);
// The text of the value of the object's own member; "" if it has none.
std::string member(const std::string& object, const std::string& key);

// Everything the model holds, in words.
std::string describe(host::model::Project& project);
// Numbers may differ by what the file's rounding takes.
void expect_same_projects(host::model::Project& a, host::model::Project& b);

}  // namespace lottie::document::testing
