// An expression's tokens, as those who read it ask for them.
#pragma once

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <iterator>
#include <string_view>
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

class ExpressionReader {
  protected:
    explicit ExpressionReader(std::string_view text) : tokens_(host::model::tokenize_expression(text)) {}

    bool is_mark(std::size_t i, std::string_view mark) const {
        return i < tokens_.size() && tokens_[i].kind == ExpressionTokenKind::mark && tokens_[i].text == mark;
    }

    std::vector<ExpressionToken> tokens_;
};

}  // namespace lottie::looks
