// Values as text: reading them.
#include <charconv>

#include "base/unicode.h"
#include "journal/value_text.h"

namespace host::journal {
namespace {

constexpr std::size_t kMostValues = 64;
constexpr int kMostLevels = 8;

bool is_token_character(char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == '.' ||
           c == '+' || c == '-' || c == '#' || c == ':';
}

bool is_word_text(std::string_view text) {
    for (const char c : text)
        if (!((c >= 'a' && c <= 'z') || c == '_')) return false;
    return !text.empty();
}

std::uint64_t whole_from(std::string_view text) {
    std::uint64_t number = 0;
    const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (text.empty() || error != std::errc() || stop != text.data() + text.size())
        throw BadValue("a whole number is expected");
    return number;
}

std::uint32_t hex_digits(std::string_view& rest, std::size_t count) {
    std::uint32_t number = 0;
    const std::string_view digits = rest.substr(0, count);
    const auto [stop, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number, 16);
    if (digits.size() != count || error != std::errc() || stop != digits.data() + count)
        throw BadValue("an escape is not complete");
    rest.remove_prefix(count);
    return number;
}

void append_unit(std::string& bytes, std::uint32_t unit) {
    bytes += static_cast<char>(unit & 0xFF);
    bytes += static_cast<char>(unit >> 8);
}

void append_as_units(std::string& bytes, char32_t character) {
    if (character < 0x10000) {
        append_unit(bytes, character);
    } else {
        const auto [high, low] = base::to_surrogates(character);
        append_unit(bytes, high);
        append_unit(bytes, low);
    }
}

// The character after a backslash.
std::uint32_t escaped(std::string_view& rest, bool are_units) {
    if (rest.empty()) throw BadValue("an escape is not complete");
    const char c = rest.front();
    rest.remove_prefix(1);
    switch (c) {
        case '"':
        case '\\':
            return static_cast<unsigned char>(c);
        case 'n':
            return '\n';
        case 'r':
            return '\r';
        case 't':
            return '\t';
        case '0':
            return 0;
        case 'x':
            if (!are_units) return hex_digits(rest, 2);
            break;
        case 'u':
            if (are_units) return hex_digits(rest, 4);
            break;
        default:
            break;
    }
    throw BadValue("there is no such escape");
}

}  // namespace

std::vector<JournalValue> parse_values(std::string_view text) {
    return ValueParser(text).values_until('\0');
}

std::vector<JournalValue> ValueParser::values_until(char close) {
    std::vector<JournalValue> values;
    fill(values, close, false, 0);
    return values;
}

void ValueParser::fill(std::vector<JournalValue>& into, char close, bool has_fields, int depth) {
    const auto is_over = [&] { return close == '\0' ? rest_.empty() : take({&close, 1}); };
    while (!is_over()) {
        if (!into.empty() && !take(", ")) throw BadValue("a comma or a closing bracket is missing");
        if (into.size() == kMostValues) throw BadValue("there are too many values");
        std::string field;
        if (has_fields) {
            const std::string_view named = token();
            if (!named.ends_with(':') || !is_word_text(named.substr(0, named.size() - 1)) || !take(" "))
                throw BadValue("the name of a field is missing");
            field = named.substr(0, named.size() - 1);
        }
        into.push_back(value(depth));
        into.back().field = std::move(field);
    }
}

JournalValue ValueParser::value(int depth) {
    if (rest_.starts_with('"') || rest_.starts_with("L\"")) return quoted();
    if (rest_.starts_with('[') || rest_.starts_with('{')) return composed(depth);

    JournalValue value;
    const std::string_view text = token();
    if (const std::size_t mark = text.find('#'); mark != std::string_view::npos) {
        value.kind = JournalValue::Kind::name;
        value.text = text.substr(0, mark);
        value.number = whole_from(text.substr(mark + 1));
        if (!is_word_text(value.text)) throw BadValue("a name has no kind");
        return value;
    }
    value.text = text;
    if (is_word_text(text) && text != "inf") return value;
    value.kind = JournalValue::Kind::number;
    (void)real_from(value);  // for its check
    return value;
}

JournalValue ValueParser::composed(int depth) {
    if (depth + 1 == kMostLevels) throw BadValue("lists or records stand too deep in each other");
    JournalValue value;
    const bool is_record = take("{");
    if (!is_record) take("[");
    value.kind = is_record ? JournalValue::Kind::record : JournalValue::Kind::list;
    fill(value.parts, is_record ? '}' : ']', is_record, depth + 1);
    return value;
}

JournalValue ValueParser::quoted() {
    JournalValue value;
    const bool are_units = take("L");
    value.kind = are_units ? JournalValue::Kind::units : JournalValue::Kind::bytes;
    take("\"");
    while (!take("\"")) {
        if (rest_.empty()) throw BadValue("a text has no closing quote");
        char32_t character = 0;
        if (take("\\")) {
            character = escaped(rest_, are_units);
            if (are_units)
                append_unit(value.text, character);
            else
                value.text += static_cast<char>(character);
            continue;
        }
        const std::size_t length = base::decode_utf8(rest_, character);
        if (length == 0) throw BadValue("a text is not UTF-8");
        if (are_units)
            append_as_units(value.text, character);
        else
            value.text += rest_.substr(0, length);
        rest_.remove_prefix(length);
    }
    if (take(" + ")) {
        value.number = whole_from(token());
        if (!take(" zeros")) throw BadValue("the word zeros is missing");
    }
    return value;
}

std::string_view ValueParser::token() {
    std::size_t length = 0;
    while (length < rest_.size() && is_token_character(rest_[length])) ++length;
    if (length == 0) throw BadValue("a value is missing");
    const std::string_view text = rest_.substr(0, length);
    rest_.remove_prefix(length);
    return text;
}

bool ValueParser::take(std::string_view expected) {
    if (!rest_.starts_with(expected)) return false;
    rest_.remove_prefix(expected.size());
    return true;
}

}  // namespace host::journal
