// Animations in which a remedy is needed, and others, as close as possible, in which it must not or need not be
// applied.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "animations.h"
#include "looks/finding.h"

namespace test {

enum class Outcome {
    mended,     // flat, with this remedy
    untouched,  // flat, without it: the run alone keeps the look
    stays,      // nested, for no remedy can keep the look
};

struct Scene {
    lottie::looks::Reason reason;
    const char* name;
    Outcome outcome;
    std::string animation;     // whose main composition has a layer "Nest"
    bool can_be_drawn = true;  // by the renderer of these tests

    std::string full_name() const { return std::string(code(reason)) + ", " + name; }
    friend void PrintTo(const Scene& scene, std::ostream* out) { *out << scene.full_name(); }
};

std::vector<Scene> all_scenes();

}  // namespace test
