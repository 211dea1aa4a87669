// Text from plug-ins, and text for messages.
#pragma once

#include <string>
#include <string_view>

#include "A.h"

namespace host::suites {

std::u16string from_plugin(const A_UTF16Char* text);  // zero-terminated

// At most the first `limit` bytes of `text`, cut at a character boundary if `at_character`.
std::string_view cut(std::string_view text, std::size_t limit, bool at_character);

// In double quotes, control characters and quotes escaped; long texts are cut with an ellipsis.
std::string quoted(std::string_view text);

}  // namespace host::suites
