// Characters of UTF-8, one at a time.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace host::journal {

// How many bytes the well-formed character at the front has; 0 if there is none.
std::size_t character_length(std::string_view text, std::uint32_t& character);

void append_character(std::string& text, std::uint32_t character);

}  // namespace host::journal
