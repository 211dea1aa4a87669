// Facts about the terminal.
#pragma once

#include <cstddef>
#include <optional>

namespace host::base {

enum class OutStream { output, errors };

// Whether people read the standard stream as it is written.
bool is_terminal(OutStream stream);

// Of standard error, in columns; none if it is not a terminal.
std::optional<std::size_t> terminal_width();

}  // namespace host::base
