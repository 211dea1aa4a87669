// What masks are, as far as they cut by their paths alone.
#pragma once

#include <string>

#include "json.h"
#include "property.h"

namespace lottie::looks {

std::string mode_of(const Json& mask);

bool is_always(const Property& property, double value);

// Whether it is a path that is not inverted, expanded or driven by an expression.
bool is_plain_mask(const Json& mask);
// Whether it neither lets anything through nor is feathered.
bool has_hard_edge(const Json& mask);

}  // namespace lottie::looks
