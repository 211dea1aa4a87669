// What an expression asks for, told from its text.
#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace lottie::looks {

// The calls of comp() in an animation's expressions.
struct CompositionCalls {
    // By the names given to it: the layers that are asked for by name, to read what they hold; none where anything else
    // of the composition may be read.
    std::map<std::string, std::optional<std::set<std::string>>> layers;
    bool is_any_computed = false;  // whether one works out at run time which composition it asks for
};
// Takes every string with such a call for an expression.
CompositionCalls find_composition_calls(std::string_view animation);

// Whether it plays its property's keyframes again and again, all of them.
bool is_cycle(std::string_view expression);
// An expression that plays again and again what its property does from one time to another, both in seconds.
std::string cycle_between(double from, double to);

}  // namespace lottie::looks
