// Parses rows of plain statements, as programs generate them: calls and assignments that differ only in their literals.
#pragma once

#include <optional>
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

struct PlainRow {
    std::string_view declarations;  // at the start, as source text
    std::vector<PlainStatement> statements;
};

// Parses scripts such as
//     var count = 0; box.layer(7).name = count; box.list.push(count, "seven");
// on a single line: `var` with a literal or an empty array only at the start, then chains of names and calls, at least
// one, each ended by a semicolon. Whatever it accepts is valid; most valid scripts it does not accept. The row refers
// to the text.
std::optional<PlainRow> plain_row(std::string_view text);

}  // namespace host::script
