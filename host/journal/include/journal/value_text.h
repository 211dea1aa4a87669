// Parses and prints values.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "journal/value.h"

namespace host::journal {

// Text that is not a value; what() is one sentence without its full stop.
class BadValue : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// "a, b, c", without brackets; throws BadValue. At most 64 values per level and 8 levels.
std::vector<JournalValue> parse_values(std::string_view text);

// Parses values from the front of a text.
class ValueParser {
  public:
    explicit ValueParser(std::string_view text) : rest_(text) {}

    // Parses values up to `close` and consumes it; '\0' means the end of the text. Throws BadValue.
    std::vector<JournalValue> values_until(char close);
    std::string_view rest() const { return rest_; }

  private:
    JournalValue value(int depth);
    JournalValue composed(int depth);
    JournalValue quoted();
    std::string_view token();
    bool take(std::string_view expected);
    void fill(std::vector<JournalValue>& into, char close, bool has_fields, int depth);

    std::string_view rest_;
};

// "...", with line ends, control characters and invalid UTF-8 escaped.
std::string quoted_bytes(std::string_view bytes);
// L"..." of UTF-16 units, given as little-endian bytes.
std::string quoted_units(std::string_view bytes);
// Content of memory: as units if they read as text and the bytes do not. Long runs of trailing zeros are only counted.
std::string content_text(std::string_view bytes);

// The shortest text that parses back to the same number, NaN included.
std::string real_text(double number);
// Throws BadValue.
double real_from(const JournalValue& value);

}  // namespace host::journal
