// Facts about the terminal.
#pragma once

namespace host::base {

enum class OutStream { output, errors };

// Whether people read the standard stream as it is written.
bool is_terminal(OutStream stream);

}  // namespace host::base
