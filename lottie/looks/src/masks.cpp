// What masks are, as far as they cut by their paths alone.
#include "masks.h"

#include <cmath>

namespace lottie::looks {
namespace {

constexpr double kSameDegree = 1e-9;

}  // namespace

std::string mode_of(const Json& mask) {
    return text_member(mask, "mode");
}

bool is_always(const Property& property, double value) {
    return !property.is_animated() && !property.has_expression() && std::abs(property.at(0)[0] - value) < kSameDegree;
}

bool is_plain_mask(const Json& mask) {
    const Json* path = member(mask, "pt");
    return path != nullptr && !is_truthy(mask, "inv") && is_always(Property(member(mask, "x"), {}), 0) &&
           member(*path, "x") == nullptr;
}

bool has_hard_edge(const Json& mask) {
    const Property feather(member(mask, "f"), {});
    return is_always(Property(member(mask, "o"), {100, 0, 0}), 100) && is_always(feather, 0) && feather.at(0)[1] == 0;
}

}  // namespace lottie::looks
