// Paths over time as the file says them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "document/json_tree.h"
#include "looks/evaluation.h"

namespace lottie::mend {

// The property with all points of its paths mapped; everything else keeps its bytes.
std::string mapped_path(const std::string& property, const looks::PlaneMap& map);

struct PathAt {
    double frame = 0;
    looks::MovingPath::Vertices vertices;
};

// A property that shows these paths, in ascending order of their frames and with as many vertices each: keyframes at
// the fewest of the frames between which straight lines lead close enough past the others.
std::string path_through(const std::vector<PathAt>& paths);

// A property that shows each of these runs of paths from its first frame to the one behind its last, and a path without
// area from `first_frame` on whenever there is none.
std::string path_at_times(const std::vector<std::vector<PathAt>>& runs, double first_frame);

}  // namespace lottie::mend
