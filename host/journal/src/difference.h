// Differences in words.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "journal/journal.h"

namespace host::journal {

// What a line tells of, for the reader of a sentence.
std::string in_words(const Record& record);

// "expected A, got B"; of long texts only what lies around their first difference.
std::string expected_got(std::string_view expected, std::string_view got);

// The first of the arguments or results that differs.
std::string first_difference(std::string_view of_what, const std::vector<Value>& expected,
                             const std::vector<Value>& got);

// A value as it stands in a journal.
std::string text_of(const Value& value);

}  // namespace host::journal
