// Splits expression source into tokens.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace host::model {

enum class ExpressionTokenKind {
    word,        // identifiers, keywords, numbers
    string,      // a complete literal in ' or ", or a template without substitutions
    other_text,  // pieces of templates with substitutions, regular expressions, unfinished strings
    mark,        // one character of punctuation; "=>", "?." and "==" are one token
};

struct ExpressionToken {
    ExpressionTokenKind kind;
    std::size_t begin;
    std::size_t end;
    std::string text;  // of words and marks: the source; of strings: the decoded value
};

// Accepts any bytes; invalid source yields some tokens too.
std::vector<ExpressionToken> tokenize_expression(std::string_view source);

}  // namespace host::model
