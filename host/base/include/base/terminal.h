// Facts about the terminal.
#pragma once

#include <cstddef>
#include <optional>

namespace host::base {

// Of standard error.
bool is_terminal();

// Of standard error, in columns; none if it is not a terminal.
std::optional<std::size_t> terminal_width();

}  // namespace host::base
