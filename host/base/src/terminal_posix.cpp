// Facts about the terminal.
#include "base/terminal.h"

#include <unistd.h>

namespace host::base {

bool is_terminal(OutStream stream) {
    return ::isatty(stream == OutStream::output ? STDOUT_FILENO : STDERR_FILENO) == 1;
}

}  // namespace host::base
