// Keyframes of a value moved to other times.
#pragma once

#include <string>

#include "document/json_tree.h"

namespace lottie::mend {

// frame -> frame * scale + shift
struct TimeChange {
    double scale = 1;
    double shift = 0;
};

// The text of `value` with the times of all keyframes inside changed; everything else keeps its bytes.
std::string with_times(const document::JsonTree& tree, const document::JsonNode& value, TimeChange change);

}  // namespace lottie::mend
