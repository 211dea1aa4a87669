// What an expression asks for, told from its text.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace lottie::looks {

// The names in its calls of comp(), in their order; an empty one where it works out at run time which one it asks for.
std::vector<std::string> compositions_asked_for(std::string_view expression);

// Whether a property, whose expression this is, gives the same whatever value it holds: the expression asks neither for
// that nor for anything of its own layer's transform. `layer` is the layer's name.
bool is_independent_of_own_value(std::string_view expression, std::string_view layer);

// Whether it plays its property's keyframes again and again, all of them.
bool is_cycle(std::string_view expression);
// An expression that plays again and again what its property does from one time to another, both in seconds.
std::string cycle_between(double from, double to);

}  // namespace lottie::looks
