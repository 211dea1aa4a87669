// Makes text from anywhere safe to show: it can neither end a line, nor steer a terminal, nor turn the reading
// direction.
#pragma once

#include <string>
#include <string_view>

namespace host::base {

// Control characters, other ends of lines and marks that turn the direction of text become \uXXXX, and each byte that
// is not UTF-8 \xXX. What came out of here passes unchanged.
std::string printable(std::string_view text);

// The same for several lines, whose ends stay. JSON in means the same JSON out.
std::string printable_lines(std::string_view text);

// The same in double quotes; quotes and backslashes of the text are escaped.
std::string in_quotes(std::string_view text);

// The same for XML, as the content of an element or between double quotes: what could steer a terminal is written as a
// number, and characters that XML cannot hold become U+FFFD, as does each byte that is not UTF-8.
std::string xml_text(std::string_view text);

}  // namespace host::base
