// What a mistyped name may have meant.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace cli {

// The number of insertions, deletions, replacements and swaps of neighbours that turn one text into the other, ignoring
// the case of ASCII letters. Of bytes, not characters.
std::size_t edit_distance(std::string_view a, std::string_view b);

// The few names within reach of `typed` (a third of its length, at least 2), nearest first, each once.
std::vector<std::string> suggestions(std::string_view typed, const std::vector<std::string>& names);

// `; did you mean "A" or "B"?`, or nothing if no name is similar.
std::string did_you_mean(std::string_view typed, const std::vector<std::string>& names);

}  // namespace cli
