// Names and numbers as they stand in sentences.
#include "words.h"

#include <cstdio>

namespace lottie::looks {

std::string layers_named(const std::string& first, std::size_t count) {
    if (count <= 1) return "layer " + quoted(first);
    return "layers " + quoted(first) + " and " + std::to_string(count - 1) + " more";
}

std::string in_number(std::size_t count, const char* one, const char* several) {
    return count > 1 ? several : one;
}

std::string plain(double number) {
    char text[64];
    std::snprintf(text, sizeof text, "%.3f", number);
    std::string result = text;
    result.erase(result.find_last_not_of('0') + 1);
    if (result.back() == '.') result.pop_back();
    return result == "-0" ? "0" : result;
}

}  // namespace lottie::looks
