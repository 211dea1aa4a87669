// The layers of a composition and of all that its nests show, on one timeline.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "document/document.h"
#include "looks/lineage.h"

namespace cli {

using Span = std::pair<double, double>;  // frames, from the first up to the second

struct TreeLayer {
    std::string name;
    std::string type;  // as in listings
    double in = 0;     // in frames of the composition that it is in
    double out = 0;
    bool is_off = false;
    std::vector<Span> shown;  // when nests let it show, in frames of the tree's composition
    bool is_placed = true;    // false: nobody knows, as an expression works the clock of a nest around it
    std::string from;  // the numbers of the layers that led to it before, "2.5" being the fifth inside the second;
                       // cut off after some; empty for what was made
    std::vector<TreeLayer> layers;  // that a nest shows
    double left_out = 0;            // how many more those are, at all levels
};

// Of all levels that there is room for. `lineage`, which may be null, tells where layers were before. Throws
// lottie::looks::TooMuchWork.
std::vector<TreeLayer> layer_tree(const lottie::document::Document& document, const host::model::Comp& comp,
                                  lottie::looks::Lineage* lineage);

}  // namespace cli
