// A small world: a few layers in a main composition, nests among them, and what those hold; written as an animation.
#pragma once

#include <string>
#include <vector>

namespace small_worlds {

inline constexpr int kFramesPerSecond = 25;
inline constexpr int kLength = 50;  // of every composition, in frames
inline constexpr int kNone = -1;    // no parent

struct Piece {
    enum class Kind { solid, text, nest };

    std::string name;
    Kind kind = Kind::solid;
    int source = 0;      // of a nest: which of the world's nested compositions
    int parent = kNone;  // place in the same stack
    int start = 0;       // frames, as the two below
    int in = 0;
    int out = kLength;
    bool is_3d = false;
    bool is_keyed = false;  // its position has keyframes
    bool has_effect = false;
    std::string expression = {};  // of its rotation
};

using Stack = std::vector<Piece>;  // top first

// No layer turns or is scaled, so that places simply add up; every place in a world is another one.
struct World {
    Stack main;
    std::vector<Stack> nested;  // compositions "Nested 0", "Nested 1", ...

    std::string animation() const;
};

std::string nested_name(int number);

// `count` solids named A, B, ...
Stack solids(int count);

// Every list of parents that `count` layers can have: each none or one of the others, without a circle.
std::vector<std::vector<int>> all_parent_lists(int count);
void set_parents(Stack& stack, const std::vector<int>& parents);
std::string shown(const std::vector<int>& numbers);

// Whether to do the long run, which leaves nothing out.
bool is_full_run();

}  // namespace small_worlds
