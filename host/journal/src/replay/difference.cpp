// Describes differences.
#include "replay/difference.h"

#include <algorithm>

#include "base/unicode.h"
#include "journal/value_text.h"
#include "slots.h"

namespace host::journal {
namespace {

constexpr std::size_t kLong = 160;   // bytes; longer texts are cut
constexpr std::size_t kBefore = 40;  // what is shown before the difference
constexpr std::size_t kShown = 120;

// The part of a long text around `place`, cut between characters.
std::string excerpt(std::string_view text, std::size_t place) {
    if (text.size() <= kLong) return std::string(text);
    std::size_t begin = place > kBefore ? place - kBefore : 0;
    begin = std::min(begin, text.size());
    std::size_t end = std::min(begin + kShown, text.size());
    while (begin > 0 && begin < text.size() && base::continues_character(text[begin])) --begin;
    while (end < text.size() && base::continues_character(text[end])) ++end;
    return (begin > 0 ? "..." : "") + std::string(text.substr(begin, end - begin)) + (end < text.size() ? "..." : "");
}

std::string joined(const std::vector<JournalValue>& parts, char open, char close) {
    std::string text(1, open);
    for (const JournalValue& part : parts) {
        if (&part != &parts[0]) text += ", ";
        if (!part.field.empty()) text += part.field + ": ";
        text += text_of(part);
    }
    return text + close;
}

}  // namespace

std::string text_of(const JournalValue& value) {
    const std::string zeros = value.number > 0 ? " + " + std::to_string(value.number) + " zeros" : "";
    switch (value.kind) {
        case JournalValue::Kind::word:
        case JournalValue::Kind::number:
            return value.text;
        case JournalValue::Kind::bytes:
            return quoted_bytes(value.text) + zeros;
        case JournalValue::Kind::units:
            return quoted_units(value.text) + zeros;
        case JournalValue::Kind::name:
            return value.text + '#' + std::to_string(value.number);
        case JournalValue::Kind::list:
            return joined(value.parts, '[', ']');
        case JournalValue::Kind::record:
            return joined(value.parts, '{', '}');
    }
    return "";
}

std::string in_words(const JournalLine& line) {
    const std::string values = '(' + std::string(line.values_text) + ')';
    const std::string function(name_of(line.function));
    switch (line.kind) {
        case JournalLine::Kind::session:
            return "a new session";
        case JournalLine::Kind::enter:
            return "the host to enter " + function;
        case JournalLine::Kind::leave:
            return function + " to come back with " + std::to_string(line.code) + ' ' + values +
                   (line.has_thrown ? " by an exception" : "");
        case JournalLine::Kind::call:
            return "the call " + name_of_slot(line.slot) + values;
        case JournalLine::Kind::done:
            return "the answer to call " + std::to_string(line.call_number);
        case JournalLine::Kind::memory:
            return "memory to be told";
        case JournalLine::Kind::wrote: {
            const std::vector<JournalValue> told = line.values();
            return told.size() == 2 ? text_of(told[0]) + " to hold " + text_of(told[1]) : "memory to be written";
        }
        case JournalLine::Kind::end:
            return "the end";
    }
    return "";
}

std::string expected_got(std::string_view expected, std::string_view got) {
    const auto [in_expected, in_got] = std::mismatch(expected.begin(), expected.end(), got.begin(), got.end());
    const auto place = static_cast<std::size_t>(in_expected - expected.begin());
    return "expected " + excerpt(expected, place) + ", got " + excerpt(got, place);
}

std::string first_difference(std::string_view of_what, const std::vector<JournalValue>& expected,
                             const std::vector<JournalValue>& got) {
    const std::string what(of_what);
    for (std::size_t i = 0; i < std::min(expected.size(), got.size()); ++i) {
        if (expected[i] != got[i])
            return what + ' ' + std::to_string(i + 1) + ": " + expected_got(text_of(expected[i]), text_of(got[i]));
    }
    return what + "s: " + expected_got(std::to_string(expected.size()), std::to_string(got.size()));
}

}  // namespace host::journal
