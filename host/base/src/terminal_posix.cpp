// Facts about the terminal.
#include "base/terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

namespace host::base {

bool is_terminal(OutStream stream) {
    return ::isatty(stream == OutStream::output ? STDOUT_FILENO : STDERR_FILENO) == 1;
}

std::optional<std::size_t> terminal_width() {
    winsize size{};
    if (::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return std::nullopt;
    return size.ws_col;
}

}  // namespace host::base
