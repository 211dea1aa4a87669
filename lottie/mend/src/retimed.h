// Keyframes at other times.
#pragma once

#include <string>

#include "document/json_tree.h"
#include "nest_clock.h"

namespace lottie::mend {

// The text of `value` with all keyframes inside moved by `shift`; everything else keeps its bytes.
std::string shifted(const document::JsonTree& tree, const document::JsonNode& value, double shift);

// The same with every property as it is at the frames outside. Those that cannot be told that way keep their keyframes,
// for the audit to find.
std::string retimed(const document::JsonTree& tree, const document::JsonNode& value, const NestClock& clock);

// The member of a property on that clock that holds its expression, with the comma before it; empty if it needs none.
std::string expression_member(const NestClock& clock);

}  // namespace lottie::mend
