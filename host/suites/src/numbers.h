// Numbers as text.
#pragma once

#include <initializer_list>
#include <string>

#include "base/number_text.h"

namespace host::suites {

// "(1, 2.5)"
inline std::string number_list(std::initializer_list<double> numbers) {
    std::string text = "(";
    for (const double number : numbers) text += (text.size() > 1 ? ", " : "") + base::shortest_text(number);
    return text + ")";
}

}  // namespace host::suites
