// Parses rows of plain statements, as programs generate them: calls and assignments that differ only in their literals.
#pragma once

#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace host::script {

// A literal of a statement. Strings are the bytes between the quotes; they contain no escapes.
using Literal = std::variant<std::nullptr_t, int, std::string_view>;

struct PlainStatement {
    std::string shape;  // an expression with $1, $2 and so on for its literals
    std::vector<Literal> literals;
};

// Parses scripts such as
//     var count = 0; box.layer(7).name = count; box.list.push(count, "seven");
// on a single line: `var` with a literal or an empty array only at the start, then chains of names and calls, each
// ended by a semicolon. Whatever it accepts is valid; most valid scripts it does not accept.
class PlainStatements {
  public:
    explicit PlainStatements(std::string_view text);

    // The declarations at the start, as source text.
    std::string_view declarations() const { return text_.substr(0, first_); }
    // Whether the whole script is such a row, with at least one statement after the declarations.
    bool are_all();
    // Parses the next statement into `statement`. False at the end, or if the statement is not plain.
    bool next(PlainStatement& statement);

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

    std::string_view text_;
    std::size_t first_ = 0;  // where the statements begin
    std::size_t at_ = 0;
};

}  // namespace host::script
