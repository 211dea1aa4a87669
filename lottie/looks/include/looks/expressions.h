// What an expression asks for, told from its text.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace lottie::looks {

// The names in its calls of comp(), in their order; an empty one where it works out at run time which one it asks for.
std::vector<std::string> compositions_asked_for(std::string_view expression);

// Whether it plays its property's keyframes again and again, all of them.
bool is_cycle(std::string_view expression);
// An expression that plays again and again what its property does from one time to another, both in seconds.
std::string cycle_between(double from, double to);

}  // namespace lottie::looks
