// Numbers as text and back, the same bytes in every build.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace host::base {

// The shortest text that reads back as the same number; of 0.001 and 1e-3 the shorter, plain digits when both are as
// long. "inf", "nan" for what is not a number.
void append_shortest(std::string& text, double number);
std::string shortest_text(double number);

// The shortest digits that read back as the same number, without an exponent.
void append_shortest_plain(std::string& text, double number);

// With so many digits behind the point, rounded to the nearest, a tie to the even digit.
std::string fixed_text(double number, int decimals);

// The number that the whole text spells, in the C locale's form without a plus sign or blanks; none if it is something
// else. Beyond the largest number infinity, below the smallest zero.
std::optional<double> number_from(std::string_view text);

}  // namespace host::base
