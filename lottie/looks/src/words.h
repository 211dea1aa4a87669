// Names and numbers as they stand in sentences.
#pragma once

#include <cstddef>
#include <string>

#include "base/printable.h"

namespace lottie::looks {

using host::base::printable;

// A name for sentences.
inline std::string quoted(const std::string& name) {
    return host::base::in_quotes(name);
}

// `layer "first"`, or `layers "first" and 3 more`.
std::string layers_named(const std::string& first, std::size_t count);

// The one of the two words or phrases that fits so many.
std::string in_number(std::size_t count, const char* one, const char* several);

// A number as people write it: at most three decimals, no zeros at the end.
std::string plain(double number);

}  // namespace lottie::looks
