// From a text to its outline.
#pragma once

#include <string>

#include "document/outline.h"

namespace lottie::document {

// Reads the whole text once: every byte is checked to be JSON in UTF-8. Throws InputError.
DocumentOutline read_outline(const std::string& text);

// The same for a text that was read or written as a project before, or is made of such texts: looks at a fraction of
// it, and sees no faults inside of layers.
DocumentOutline read_known_outline(const std::string& text);

}  // namespace lottie::document
