// Values as text, both ways.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "journal/value.h"

namespace host::journal {

// A text that is no value; what() is one sentence without its end.
class BadValue : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// "a, b, c" without brackets around; throws BadValue. At most 64 values a level, 8 levels.
std::vector<JournalValue> parse_values(std::string_view text);

// Reads values from the front of a text.
class ValueParser {
  public:
    explicit ValueParser(std::string_view text) : rest_(text) {}

    // Values up to `close`, which is taken too; '\0' means the end of the text. Throws BadValue.
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

// "..." with everything escaped that would end a line, steer a terminal or is no UTF-8.
std::string quoted_bytes(std::string_view bytes);
// L"..." of UTF-16 units, given as bytes, low byte first.
std::string quoted_units(std::string_view bytes);
// Memory: as units if that reads as text and the bytes do not, with long runs of zeros at the end only counted.
std::string content_text(std::string_view bytes);

// The shortest text that reads back as the same number, whatever it is.
std::string real_text(double number);
// Throws BadValue.
double real_from(const JournalValue& value);

}  // namespace host::journal
