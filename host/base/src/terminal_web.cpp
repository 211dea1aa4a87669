// Facts about the terminal that JavaScript's standard error is.
#include "base/terminal.h"

#include "web_imports.h"

namespace host::base {

bool is_terminal() {
    return web_terminal_width() >= 0;
}

std::optional<std::size_t> terminal_width() {
    const int width = web_terminal_width();
    return width > 0 ? std::optional(static_cast<std::size_t>(width)) : std::nullopt;
}

}  // namespace host::base
