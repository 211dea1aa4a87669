// What an un-nesting does to the look, as findings with stable codes.
#include "looks/finding.h"

#include <algorithm>
#include <array>

namespace lottie::looks {
namespace {

constexpr auto kCodes = std::to_array<std::string_view>({
    "opacity",
    "mask",
    "matte-used",
    "matte-given",
    "matte-split",
    "blend-mode",
    "blend-inside",
    "adjustment-inside",
    "clip",
    "effects",
    "layer-styles",
    "hidden",
    "collapse",
    "motion-blur",
    "three-d",
    "camera",
    "auto-orient",
    "time-remap",
    "stretch",
    "frame-rate",
    "start",
    "fractional-start",
    "trim",
    "parent",
    "children",
    "shear",
    "place",
    "lost-link",
    "lost-layer",
    "order",
    "transform-expression",
    "time-in-expression",
    "composition-in-expression",
    "index-in-expression",
    "layer-reference",
    "composition-reference",
    "name-clash",
    "interaction",
    "long-name",
    "quoted-name",
    "random",
    "shared-source",
    "size",
});
static_assert(kCodes.size() == static_cast<std::size_t>(Reason::size) + 1);

}  // namespace

std::string_view code(Reason reason) {
    return kCodes[static_cast<std::size_t>(reason)];
}

std::vector<Reason> all_reasons() {
    std::vector<Reason> reasons;
    for (std::size_t i = 0; i < kCodes.size(); ++i) reasons.push_back(static_cast<Reason>(i));
    return reasons;
}

std::string_view name(Verdict verdict) {
    constexpr std::string_view kNames[] = {"exact", "equal to the eye", "changes"};
    return kNames[static_cast<std::size_t>(verdict)];
}

Verdict verdict_of(const std::vector<Finding>& findings) {
    Weight weightiest = Weight::harmless;
    for (const Finding& finding : findings) weightiest = std::max(weightiest, finding.weight);
    return static_cast<Verdict>(weightiest);
}

}  // namespace lottie::looks
