// Expressions that work out a number from their property's value, other numbers and controls, told from their text.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "property.h"

namespace lottie::looks {

// A parameter of an effect, as an expression asks for it: by a name, or by a number that counts from 1.
struct Control {
    struct Key {
        std::string name;  // empty for a number
        double number = 0;
    };
    std::optional<std::string> composition;  // none: the expression's own
    std::optional<std::string> layer;        // none: the expression's own
    Key effect;
    Key parameter;
};

// Where the number lies. `value` is the property's own, and `control` tells where one lies. Nothing where that cannot
// be told.
std::optional<ValueRange> range_of(std::string_view expression, double value,
                                   const std::function<std::optional<ValueRange>(const Control&)>& control);

}  // namespace lottie::looks
