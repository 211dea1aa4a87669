// Text on its way into the engine and out of it. The engine keeps strings as sequences of 16-bit units, each written in
// one to three bytes, so that a character beyond the basic plane is a pair of surrogates in six bytes.
#pragma once

#include <string>
#include <string_view>

#include <duktape.h>

namespace host::script {

// Whether the engine takes these bytes as they are.
bool is_engine_text(std::string_view bytes);
// Any bytes, in the engine's form. A byte B that is not part of valid UTF-8 becomes the lone surrogate U+DC00 + B,
// which to_bytes() takes back: names that are not UTF-8 pass through a script unharmed.
std::string to_engine(std::string_view bytes);

// From the engine's form to UTF-8. Lone surrogates become U+FFFD, but to_bytes() gives back those that stand for bytes.
std::string to_utf8(std::string_view engine_text);
std::string to_bytes(std::string_view engine_text);

void push_text(duk_context* ctx, std::string_view bytes);

}  // namespace host::script
