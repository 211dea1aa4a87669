// Numbers as text.
#pragma once

#include <array>
#include <charconv>
#include <initializer_list>
#include <string>

namespace host::suites {

// The shortest text that reads back as the same number.
inline std::string number_text(double number) {
    std::array<char, 32> text;
    const auto end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
    return {text.data(), end};
}

// "(1, 2.5)"
inline std::string number_list(std::initializer_list<double> numbers) {
    std::string text = "(";
    for (const double number : numbers) text += (text.size() > 1 ? ", " : "") + number_text(number);
    return text + ")";
}

}  // namespace host::suites
