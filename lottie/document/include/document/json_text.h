// Strings and numbers as JSON spells them. Spellings come from text that was found to be valid JSON.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "document/slice.h"

namespace lottie::document {

// The bytes (UTF-8) that a string literal, quotes included, stands for.
std::string decode_string(std::string_view literal);
bool string_equals(std::string_view literal, std::string_view decoded);
// A literal for any bytes; what is not UTF-8 becomes the replacement character, for JSON must be UTF-8.
std::string encode_string(std::string_view bytes);

// The nearest double; infinite when the number is beyond all doubles.
double read_number(std::string_view spelling);
// Null for what is not a whole number, or so large that doubles skip some.
std::optional<std::int64_t> whole_number(double number);
// The shortest spelling that reads back as the same double, without exponent between 1e-7 and 1e15. Throws
// std::range_error for what JSON has no number for: infinity and what is not a number.
void append_number(std::string& out, double number);

// `numbers` as an array. A number that equals the one spelled at its place in `spellings` keeps that spelling.
std::string number_array(std::span<const double> numbers, std::string_view text = {},
                         std::span<const Slice> spellings = {});

}  // namespace lottie::document
