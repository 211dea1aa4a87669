// Where the values of effects' controls lie that expressions ask for.
#pragma once

#include <optional>

#include "expression_amount.h"
#include "survey.h"

namespace lottie::looks {

// `layer` is the one whose expression asks, in the composition that `survey` is about. Nothing where it cannot be told:
// an expression gives the value, or there is no such control.
std::optional<ValueRange> range_of_control(Survey& survey, const SceneLayer& layer, const Control& control);

}  // namespace lottie::looks
