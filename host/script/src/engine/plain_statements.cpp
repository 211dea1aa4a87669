// Parses rows of plain statements.
#include "engine/plain_statements.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace host::script {

namespace {

// Reserved words, and names that mean something else inside a function.
constexpr std::array<std::string_view, 48> kReservedWords = {
    "abstract",  "arguments",  "break",     "case",   "catch",    "class",  "const",      "continue",
    "debugger",  "default",    "delete",    "do",     "else",     "enum",   "eval",       "export",
    "extends",   "false",      "finally",   "for",    "function", "if",     "implements", "import",
    "in",        "instanceof", "interface", "let",    "new",      "null",   "package",    "private",
    "protected", "public",     "return",    "static", "super",    "switch", "this",       "throw",
    "true",      "try",        "typeof",    "var",    "void",     "while",  "with",       "yield"};
static_assert(std::is_sorted(kReservedWords.begin(), kReservedWords.end()));

// Bit N: a reserved word starts with this letter and has N letters. Few names get past this.
constexpr auto kLengthsByLetter = [] {
    std::array<std::uint16_t, 128> lengths{};
    for (const std::string_view word : kReservedWords)
        lengths[static_cast<unsigned char>(word.front())] |= static_cast<std::uint16_t>(1U << word.size());
    return lengths;
}();
static_assert(std::all_of(kReservedWords.begin(), kReservedWords.end(),
                          [](std::string_view word) { return word.size() < 16; }));

bool is_reserved(std::string_view word) {
    if (word.size() >= 16) return false;
    const unsigned lengths = kLengthsByLetter[static_cast<unsigned char>(word.front())];
    return (lengths >> word.size() & 1U) != 0 && std::binary_search(kReservedWords.begin(), kReservedWords.end(), word);
}

// A number with this many digits fits an int.
constexpr std::size_t kMaxDigits = 9;

bool is_letter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

// No escapes and no line ends, of which the language has four.
bool is_verbatim(std::string_view text) {
    return text.find_first_of("\\\n\r") == text.npos && text.find("\u2028") == text.npos &&
           text.find("\u2029") == text.npos;
}

class RowParser {
  public:
    explicit RowParser(std::string_view text) : text_(text) {}

    std::optional<PlainRow> row() {
        PlainRow row;
        std::size_t first = 0;
        while (take_declaration()) first = at_;
        row.declarations = text_.substr(0, first);
        at_ = first;
        PlainStatement statement;
        while (!is_at_end()) {
            if (!take_statement(statement)) return std::nullopt;
            row.statements.push_back(statement);
        }
        if (row.statements.empty()) return std::nullopt;
        return row;
    }

  private:
    bool is_at_end() const { return at_ == text_.size(); }
    char here() const { return is_at_end() ? '\0' : text_[at_]; }
    void skip_blanks();
    bool take(char wanted);
    std::string_view take_word();
    bool take_declaration();
    bool take_literal(PlainStatement& statement);
    bool take_value(PlainStatement& statement);
    bool take_chain(PlainStatement& statement, bool& is_place);
    bool take_arguments(PlainStatement& statement);
    bool take_statement(PlainStatement& statement);

    std::string_view text_;
    std::size_t at_ = 0;
};

void RowParser::skip_blanks() {
    while (here() == ' ') ++at_;
}

bool RowParser::take(char wanted) {
    if (here() != wanted || is_at_end()) return false;
    ++at_;
    return true;
}

// Empty if there is none, or a reserved one.
std::string_view RowParser::take_word() {
    const std::size_t begin = at_;
    if (!is_letter(here())) return {};
    std::size_t end = begin + 1;
    while (end < text_.size() && (is_letter(text_[end]) || is_digit(text_[end]))) ++end;
    at_ = end;
    const std::string_view word = text_.substr(begin, end - begin);
    return is_reserved(word) ? std::string_view() : word;
}

bool RowParser::take_declaration() {
    constexpr std::string_view kVar = "var ";
    PlainStatement unused;
    skip_blanks();
    if (!text_.substr(at_).starts_with(kVar)) return false;
    at_ += kVar.size();
    skip_blanks();
    if (take_word().empty()) return false;
    skip_blanks();
    if (!take('=')) return false;
    skip_blanks();
    const bool has_value = take('[') ? take(']') : take_literal(unused);
    skip_blanks();
    return has_value && take(';');
}

bool RowParser::take_literal(PlainStatement& statement) {
    constexpr std::string_view kNull = "null";
    const std::string_view rest = text_.substr(at_);
    if (is_digit(here())) {
        std::size_t digits = 1;
        while (digits < rest.size() && is_digit(rest[digits])) ++digits;
        if (digits > kMaxDigits || (rest[0] == '0' && digits > 1)) return false;
        if (digits < rest.size() && (rest[digits] == '.' || is_letter(rest[digits]))) return false;
        int number = 0;
        for (const char digit : rest.substr(0, digits)) number = 10 * number + (digit - '0');
        statement.literals.emplace_back(number);
        at_ += digits;
    } else if (here() == '"') {
        const std::size_t end = rest.find('"', 1);
        if (end == rest.npos || !is_verbatim(rest.substr(1, end - 1))) return false;
        statement.literals.emplace_back(rest.substr(1, end - 1));
        at_ += end + 1;
    } else if (rest.starts_with(kNull) && (rest.size() == 4 || (!is_letter(rest[4]) && !is_digit(rest[4])))) {
        statement.literals.emplace_back(nullptr);
        at_ += kNull.size();
    } else {
        return false;
    }
    statement.shape += '$' + std::to_string(statement.literals.size());
    return true;
}

bool RowParser::take_value(PlainStatement& statement) {
    const std::size_t begin = at_;
    if (take_literal(statement)) return true;
    bool is_place = false;
    return at_ == begin && take_chain(statement, is_place);
}

bool RowParser::take_arguments(PlainStatement& statement) {
    statement.shape += '(';
    skip_blanks();
    while (here() != ')') {
        if (!take_value(statement)) return false;
        skip_blanks();
        if (here() == ')') break;
        if (!take(',')) return false;
        statement.shape += ',';
        skip_blanks();
        if (here() == ')') return false;
    }
    ++at_;
    statement.shape += ')';
    return true;
}

// `is_place`: it can be assigned to.
bool RowParser::take_chain(PlainStatement& statement, bool& is_place) {
    std::string_view word = take_word();
    if (word.empty()) return false;
    statement.shape += word;
    is_place = true;
    for (;;) {
        if (take('.')) {
            word = take_word();
            if (word.empty()) return false;
            (statement.shape += '.') += word;
            is_place = true;
        } else if (take('(')) {
            if (!take_arguments(statement)) return false;
            is_place = false;
        } else {
            return true;
        }
    }
}

bool RowParser::take_statement(PlainStatement& statement) {
    statement.shape.clear();
    statement.literals.clear();
    skip_blanks();
    bool is_place = false;
    if (!take_chain(statement, is_place)) return false;
    skip_blanks();
    if (is_place && take('=')) {
        statement.shape += '=';
        skip_blanks();
        if (!take_value(statement)) return false;
        skip_blanks();
    }
    if (!take(';')) return false;
    skip_blanks();
    return true;
}

}  // namespace

std::optional<PlainRow> plain_row(std::string_view text) {
    return RowParser(text).row();
}

}  // namespace host::script
