// Tokenizes expressions: enough of the language to tell code from comments, strings, templates and regular expressions.
#include "model/expression_tokens.h"

#include <array>
#include <cstdint>
#include <optional>

#include "base/unicode.h"

namespace host::model {
namespace {

bool is_word_byte(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c == '$' ||
           byte >= 0x80;
}

bool is_space(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

int hex_digit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

class Lexer {
  public:
    explicit Lexer(std::string_view source) : source_(source) {}

    std::vector<ExpressionToken> run() {
        while (at_ < source_.size()) step();
        return std::move(tokens_);
    }

  private:
    char peek(std::size_t ahead = 0) const { return at_ + ahead < source_.size() ? source_[at_ + ahead] : '\0'; }
    bool at_end() const { return at_ >= source_.size(); }

    void step() {
        const char c = peek();
        if (is_space(c)) {
            ++at_;
        } else if (c == '/' && peek(1) == '/') {
            while (!at_end() && peek() != '\n' && peek() != '\r') ++at_;
        } else if (c == '/' && peek(1) == '*') {
            const std::size_t close = source_.find("*/", at_ + 2);
            at_ = close == std::string_view::npos ? source_.size() : close + 2;
        } else if (c == '"' || c == '\'') {
            quoted(c);
        } else if (c == '`') {
            template_piece(at_);
        } else if (c == '}' && !braces_.empty() && braces_.back() == 0) {
            braces_.pop_back();
            template_piece(at_);
        } else if (is_word_byte(c)) {
            word();
        } else if (c == '/' && regex_may_start() && regex()) {
            // taken
        } else {
            mark();
        }
    }

    void add(ExpressionTokenKind kind, std::size_t begin, std::string text) {
        tokens_.push_back({kind, begin, at_, std::move(text)});
    }

    void word() {
        const std::size_t begin = at_;
        while (!at_end() && is_word_byte(peek())) ++at_;
        // "1.5" is one number, not a member of 1.
        if (source_[begin] >= '0' && source_[begin] <= '9' && peek() == '.') {
            ++at_;
            while (!at_end() && is_word_byte(peek())) ++at_;
        }
        add(ExpressionTokenKind::word, begin, std::string(source_.substr(begin, at_ - begin)));
    }

    void mark() {
        static constexpr std::array<std::string_view, 4> kLong = {"===", "=>", "==", "?."};
        const std::size_t begin = at_;
        for (const std::string_view mark : kLong) {
            if (source_.substr(at_, mark.size()) != mark) continue;
            at_ += mark.size();
            add(ExpressionTokenKind::mark, begin, mark == "?." ? "." : std::string(mark));
            return;
        }
        const char c = source_[at_++];
        if (!braces_.empty()) {
            if (c == '{') ++braces_.back();
            if (c == '}') --braces_.back();
        }
        add(ExpressionTokenKind::mark, begin, std::string(1, c));
    }

    void quoted(char mark) {
        const std::size_t begin = at_++;
        std::string value;
        while (!at_end() && peek() != mark) {
            if (peek() == '\n' || peek() == '\r') {
                add(ExpressionTokenKind::other_text, begin, {});
                return;
            }
            character(value);
        }
        const bool complete = !at_end();
        if (complete) ++at_;
        add(complete ? ExpressionTokenKind::string : ExpressionTokenKind::other_text, begin, std::move(value));
    }

    // From a backquote, or the brace that ends a substitution, to the next substitution or the end.
    void template_piece(std::size_t begin) {
        const bool is_start = source_[at_++] == '`';
        std::string value;
        while (!at_end()) {
            if (peek() == '`') {
                ++at_;
                add(is_start ? ExpressionTokenKind::string : ExpressionTokenKind::other_text, begin, std::move(value));
                return;
            }
            if (peek() == '$' && peek(1) == '{') {
                at_ += 2;
                braces_.push_back(0);
                break;
            }
            character(value);
        }
        add(ExpressionTokenKind::other_text, begin, {});
    }

    // One character of a string, escapes decoded.
    void character(std::string& value) {
        if (peek() != '\\') {
            value += source_[at_++];
            return;
        }
        ++at_;
        if (at_end()) return;
        const char c = source_[at_++];
        switch (c) {
            case 'n':
                value += '\n';
                return;
            case 't':
                value += '\t';
                return;
            case 'r':
                value += '\r';
                return;
            case 'b':
                value += '\b';
                return;
            case 'f':
                value += '\f';
                return;
            case 'v':
                value += '\v';
                return;
            case '\n':
                return;
            case '\r':
                if (peek() == '\n') ++at_;
                return;
            case 'x':
                if (const auto code = hex(2)) {
                    host::base::append_utf8(value, *code);
                } else {
                    value += c;
                }
                return;
            case 'u':
                unicode_escape(value);
                return;
            default:
                if (c >= '0' && c <= '7') {
                    octal(value, c);
                } else {
                    value += c;
                }
        }
    }

    std::optional<std::uint32_t> hex(std::size_t digits) {
        std::uint32_t code = 0;
        for (std::size_t i = 0; i < digits; ++i) {
            const int digit = hex_digit(peek(i));
            if (digit < 0) return std::nullopt;
            code = code * 16 + static_cast<std::uint32_t>(digit);
        }
        at_ += digits;
        return code;
    }

    void octal(std::string& value, char first) {
        std::uint32_t code = static_cast<std::uint32_t>(first - '0');
        for (int i = 0; i < 2 && peek() >= '0' && peek() <= '7'; ++i) {
            const std::uint32_t longer = code * 8 + static_cast<std::uint32_t>(peek() - '0');
            if (longer > 0xff) break;
            code = longer;
            ++at_;
        }
        host::base::append_utf8(value, code);
    }

    void unicode_escape(std::string& value) {
        if (peek() == '{') {
            const std::size_t close = source_.find('}', at_);
            const std::size_t digits = close == std::string_view::npos ? 0 : close - at_ - 1;
            if (digits >= 1 && digits <= 6) {
                const std::size_t before = at_++;
                const auto code = hex(digits);
                if (code && *code <= 0x10ffff) {
                    ++at_;
                    host::base::append_utf8(value, *code);
                    return;
                }
                at_ = before;
            }
            value += 'u';
            return;
        }
        const auto code = hex(4);
        if (!code) {
            value += 'u';
            return;
        }
        if (*code >= 0xd800 && *code < 0xdc00 && peek() == '\\' && peek(1) == 'u') {
            const std::size_t before = at_;
            at_ += 2;
            const auto low = hex(4);
            if (low && *low >= 0xdc00 && *low < 0xe000) {
                host::base::append_utf8(value, host::base::from_surrogates(*code, *low));
                return;
            }
            at_ = before;
        }
        host::base::append_utf8(value, *code);
    }

    // After an operand a slash is division; elsewhere it starts a regular expression.
    bool regex_may_start() const {
        if (tokens_.empty()) return true;
        const ExpressionToken& last = tokens_.back();
        switch (last.kind) {
            case ExpressionTokenKind::string:
                return false;
            case ExpressionTokenKind::other_text:
                return source_[last.end - 1] == '{';  // start of a substitution
            case ExpressionTokenKind::mark:
                return last.text != ")" && last.text != "]";
            case ExpressionTokenKind::word:
                break;
        }
        static constexpr std::array<std::string_view, 12> kBeforeOperand = {
            "return", "typeof", "case", "in", "of", "delete", "void", "throw", "new", "else", "do", "instanceof"};
        for (const std::string_view keyword : kBeforeOperand) {
            if (last.text == keyword) return true;
        }
        return false;
    }

    // Consumes a regular expression if it ends on its line.
    bool regex() {
        bool in_class = false;
        for (std::size_t i = at_ + 1; i < source_.size(); ++i) {
            const char c = source_[i];
            if (c == '\n' || c == '\r') return false;
            if (c == '\\') {
                ++i;
            } else if (c == '[') {
                in_class = true;
            } else if (c == ']') {
                in_class = false;
            } else if (c == '/' && !in_class) {
                const std::size_t begin = at_;
                at_ = i + 1;
                while (!at_end() && is_word_byte(peek())) ++at_;
                add(ExpressionTokenKind::other_text, begin, {});
                return true;
            }
        }
        return false;
    }

    std::string_view source_;
    std::size_t at_ = 0;
    std::vector<ExpressionToken> tokens_;
    std::vector<int> braces_;  // open braces inside each substitution that is open
};

}  // namespace

std::vector<ExpressionToken> tokenize_expression(std::string_view source) {
    return Lexer(source).run();
}

}  // namespace host::model
