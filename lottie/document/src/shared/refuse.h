// Refusing an input, with the place worked out from a position in the text.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "document/input_error.h"

namespace lottie::document {

InputError error_at(std::string_view text, std::size_t position, std::string pointer, const std::string& sentence);

// Throws it.
[[noreturn]] void refuse(std::string_view text, std::size_t position, std::string pointer, const std::string& sentence);

// `key` as one step of a JSON pointer, slash included.
std::string pointer_step(std::string_view key);

// Names in sentences: in quotes, cut if long, control characters replaced.
std::string quoted_name(std::string_view name);

}  // namespace lottie::document
