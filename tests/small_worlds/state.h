// What a project is to a person who looks at it: compositions and the layers in them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace small_worlds {

inline constexpr int kNobody = 0;  // no layer's id

struct LayerState {
    int id = kNobody;
    std::string name;
    std::string source = {};  // the composition it shows; empty for all that is not a nest
    int parent = kNobody;
    bool is_video_on = true;
    bool is_3d = false;
    bool is_keyed = false;    // its position
    std::int64_t offset = 0;  // ticks, as the three below
    std::int64_t in = 0;
    std::int64_t duration = 0;
    std::int64_t limit = 0;    // how long its source is; 0 for no limit
    double place[2] = {0, 0};  // where it stands in its composition at time 0, whatever its parents
    double shift[2] = {0, 0};  // of a nest: by how much its content moves, its own parents left out
    std::vector<std::string> effects = {};
    std::string expression = {};
};

struct CompState {
    std::string name;
    std::vector<LayerState> layers;  // top first
    std::vector<int> selected;       // ids
};

struct State {
    std::vector<CompState> comps;
    int footage = 0;  // how many items are neither compositions nor folders
    std::vector<std::string> alerts;

    CompState& comp(const std::string& name);
    // One line for each thing, ids replaced by places in the stack: what two states have in common is equal.
    std::string text() const;
};

int place_of(const CompState& comp, int id);  // in the stack; -1 if it is not there

}  // namespace small_worlds
