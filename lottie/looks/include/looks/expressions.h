// What an expression asks for, told from its text.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace lottie::looks {

// The names in its calls of comp(), in their order; an empty one where it works out at run time which one it asks for.
std::vector<std::string> compositions_asked_for(std::string_view expression);

}  // namespace lottie::looks
