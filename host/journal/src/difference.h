// Differences in words.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "journal/journal.h"

namespace host::journal {

// What a line tells of, for the reader of a sentence.
std::string in_words(const JournalLine& line);

// "expected A, got B"; of long texts only what lies around their first difference.
std::string expected_got(std::string_view expected, std::string_view got);

// The first of the arguments or results that differs.
std::string first_difference(std::string_view of_what, const std::vector<JournalValue>& expected,
                             const std::vector<JournalValue>& got);

// A value as it stands in a journal.
std::string text_of(const JournalValue& value);

}  // namespace host::journal
