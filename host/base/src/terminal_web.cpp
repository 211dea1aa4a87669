// Facts about the terminal that JavaScript's standard streams are.
#include "base/terminal.h"

#include "web_imports.h"

namespace host::base {

bool is_terminal(OutStream stream) {
    return stream == OutStream::output ? web_output_is_terminal() != 0 : web_error_is_terminal() != 0;
}

}  // namespace host::base
