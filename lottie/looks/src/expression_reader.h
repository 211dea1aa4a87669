// An expression's tokens, as those who read it ask for them.
#pragma once

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <iterator>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "model/expression_tokens.h"

namespace lottie::looks {

using host::model::ExpressionToken;
using host::model::ExpressionTokenKind;

template <class Words>
bool is_one_of(std::string_view word, const Words& words) {
    return std::find(std::begin(words), std::end(words), word) != std::end(words);
}
inline bool is_one_of(std::string_view word, std::initializer_list<std::string_view> words) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

inline bool is_number(std::string_view word) {
    return !word.empty() && word.front() >= '0' && word.front() <= '9';
}

class ExpressionReader {
  protected:
    using Span = std::pair<std::size_t, std::size_t>;  // of tokens: first, and behind the last

    explicit ExpressionReader(std::string_view text) : tokens_(host::model::tokenize_expression(text)) {}

    bool is_mark(std::size_t i, std::string_view mark) const {
        return i < tokens_.size() && tokens_[i].kind == ExpressionTokenKind::mark && tokens_[i].text == mark;
    }
    bool is_word(std::size_t i, std::string_view word) const {
        return i < tokens_.size() && tokens_[i].kind == ExpressionTokenKind::word && tokens_[i].text == word;
    }
    bool is_string(std::size_t i) const { return i < tokens_.size() && tokens_[i].kind == ExpressionTokenKind::string; }
    bool is_opening(std::size_t i) const { return is_mark(i, "(") || is_mark(i, "["); }

    // Behind the bracket that closes this one, or the end.
    std::size_t behind(std::size_t opening) const {
        std::size_t depth = 0;
        for (std::size_t i = opening; i < tokens_.size(); ++i) {
            if (is_opening(i)) ++depth;
            if ((is_mark(i, ")") || is_mark(i, "]")) && --depth == 0) return i + 1;
        }
        return tokens_.size();
    }

    // The next comma between brackets, past those inside, or the end.
    std::size_t comma_after(std::size_t i, std::size_t end) const {
        while (i < end && !is_mark(i, ",")) i = is_opening(i) ? behind(i) : i + 1;
        return std::min(i, end);
    }

    // The value, where it is given once and at the end.
    std::optional<Span> result() const {
        std::size_t begin = 0;
        std::size_t assignments = 0;
        for (std::size_t i = 0; i < tokens_.size(); ++i) {
            if (tokens_[i].text != "$bm_rt" || !is_mark(i + 1, "=")) continue;
            begin = i + 2;
            ++assignments;
        }
        std::size_t end = begin;
        while (end < tokens_.size() && !is_mark(end, ";")) ++end;
        if (assignments > 1 || end + 1 < tokens_.size()) return std::nullopt;
        return Span(begin, end);
    }

    std::vector<ExpressionToken> tokens_;
};

}  // namespace lottie::looks
