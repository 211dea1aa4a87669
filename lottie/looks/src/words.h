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

// The frame that a timeline shows at that time: the one that has begun.
std::string timeline_frame(double frame);

// What the application's panels call a property, by its path in the layer's object: "Position" for "ks.p". Those deep
// inside shapes, effects, masks and texts go by the name of the group.
std::string property_name(const std::string& path);

// "Multiply", of the number of a blend mode in a file.
std::string blend_mode_name(int number);

}  // namespace lottie::looks
