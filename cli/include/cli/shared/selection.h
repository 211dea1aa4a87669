// Finds the composition and the nests that the arguments name.
#pragma once

#include <string>
#include <vector>

#include "cli/shared/failure.h"
#include "document/document.h"
#include "model/project.h"

namespace cli {

// The animation has no such composition, layer or nest; another animation in the same file may have it.
class SelectionNotFound : public Failure {
  public:
    explicit SelectionNotFound(const std::string& sentence) : Failure(ExitCode::usage, sentence) {}
};

// Whether the layer's source is a composition, so that it can be un-nested.
bool is_nest(const host::model::Layer& layer);

// The nests of a composition, top to bottom.
std::vector<host::model::Layer*> nests_of(const host::model::Comp& comp);

// The layers that the composition got after the project's layer `newest_before`, in any order. Takes time in
// proportion to the number of new layers.
std::vector<host::model::Layer*> layers_since(const host::model::Comp& comp, host::model::LayerId newest_before);

// The nests among them, top to bottom.
std::vector<host::model::Layer*> new_nests_of(const host::model::Comp& comp, host::model::LayerId newest_before);

// The composition with that id, else with that name; the main one for an empty text. Throws SelectionNotFound if there
// is none, suggesting similar names, and Failure (usage) if several have the name.
host::model::Comp& find_composition(const lottie::document::Document& document, const std::string& name_or_id);

// The nests that the texts name, in their order, each once; all nests if there are no texts. "#3" is the third layer of
// the stack, anything else all nests of that name. Throws SelectionNotFound for a layer that does not exist or is not a
// nest.
std::vector<host::model::Layer*> find_nests(const host::model::Comp& comp, const std::vector<std::string>& texts);

}  // namespace cli
