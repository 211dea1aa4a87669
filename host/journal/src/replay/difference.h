// Describes differences.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "journal/journal.h"

namespace host::journal {

// What a line says, as part of a sentence.
std::string in_words(const JournalLine& line);

// "expected A, got B"; long texts are cut around their first difference.
std::string expected_got(std::string_view expected, std::string_view got);

// The first argument or result that differs.
std::string first_difference(std::string_view of_what, const std::vector<JournalValue>& expected,
                             const std::vector<JournalValue>& got);

// A value as written in a journal.
std::string text_of(const JournalValue& value);

}  // namespace host::journal
