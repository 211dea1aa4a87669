// Animations in which a reason changes the look, and others in which it is harmless.
#pragma once

#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "animations.h"
#include "cli/shared/dialog_answers.h"
#include "looks/finding.h"

namespace test {

using lottie::looks::Reason;
using lottie::looks::Weight;

enum class Pictures {
    differ,
    equal,
    cannot_tell,  // the renderer does not support it
};

// What must be reported about the nest of an animation, and what pictures must show.
struct Case {
    Reason reason;
    const char* name;
    std::optional<Weight> weight;  // none: not reported
    Pictures pictures;
    std::string animation;
    std::string layer = "";  // these three: what the finding of a change names
    std::string property = "";
    std::optional<double> frame = {};
    cli::DialogAnswers answers = {};

    std::string full_name() const { return std::string(code(reason)) + ", " + name; }
    friend void PrintTo(const Case& one, std::ostream* out) { *out << one.full_name(); }
};

std::vector<Case> group_cases();       // the nest as a group: opacity, masks, mattes, blending, effects, switches
std::vector<Case> motion_cases();      // depth, clocks, places, parents
std::vector<Case> expression_cases();  // expressions, names, the source
std::vector<Case> all_cases();

// An animation with these members of the nest.
std::string nest(const Members& members);
// An animation with these layers inside of the nest.
std::string inside(const std::vector<std::string>& layers, const Members& nest = {});

// The two squares that the nest holds by default.
std::string red(const Members& members = {{"ks", at(20, 20)}});
std::string blue(const Members& members = {{"ks", at(40, 40)}});

// From one side to the other within the 20 frames.
std::string moving_transform();

cli::DialogAnswers discard();
cli::DialogAnswers prefix(const std::string& text);

}  // namespace test
