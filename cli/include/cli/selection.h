// Finding the composition and the nests that the arguments name.
#pragma once

#include <string>
#include <vector>

#include "lottie/document.h"
#include "model/project.h"

namespace cli {

// Whether the layer's source is a composition, so that it can be un-nested.
bool is_nest(const host::model::Layer& layer);

// The nests of a composition, top to bottom.
std::vector<host::model::Layer*> nests_of(const host::model::Comp& comp);

// The composition of that id, else of that name; the main one for an empty text. Throws Failure (usage) if there is
// none or several have the name; near names are suggested.
host::model::Comp& find_composition(const host::lottie::Document& document, const std::string& name_or_id);

// The nests that the texts mean, in their order, each once: "#3" is the third layer of the stack, anything else all
// nests of that name. Throws Failure (usage) for no such layer and for a layer that is no nest.
std::vector<host::model::Layer*> find_nests(const host::model::Comp& comp, const std::vector<std::string>& texts);

}  // namespace cli
