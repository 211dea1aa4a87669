// Expressions that give a point, told from their text.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace lottie::looks {

// Whether it plays keyframes of its property again and again, so that no value comes that they do not lead through.
bool stays_within_keys(std::string_view expression);

// A position that an expression spells out: each dimension by a number, or as the property's own value has it.
struct SpelledPoint {
    std::array<std::optional<double>, 2> numbers;  // none: the own value
};
std::optional<SpelledPoint> spelled_point(std::string_view expression);

// The layer, of its own composition and by name, that leads the one whose position an expression gives.
struct Leader {
    enum class By { position, path, point };
    std::string layer;
    By by;  // it gives that layer's position, where a point on a path that it draws lies, or where one of its points
            // lies
    std::array<double, 2> point;  // in its own coordinates
};
std::optional<Leader> leader_of(std::string_view expression);

// Whether it gives a point of its composition and nothing else: where one of a layer's lies, or the position of a
// layer. What moves and turns all layers of the composition moves that point alike.
bool is_point_of_composition(std::string_view expression);

}  // namespace lottie::looks
