// One nest before the run and its layers after it.
#include "unnesting.h"

#include <algorithm>
#include <stdexcept>

namespace lottie::looks {
namespace {

Survey& inside_of(Comparison& comparison, std::size_t nest) {
    if (nest >= comparison.stack().size() || comparison.stack().layer(nest).type != LayerType::nest) {
        throw std::invalid_argument("the composition has no such nest");
    }
    Survey* inside = comparison.surveys().find(comparison.stack().layer(nest).source);
    if (inside == nullptr) throw std::invalid_argument("the nest's composition is missing");
    return *inside;
}

}  // namespace

Unnesting::Unnesting(Comparison& comparison, std::size_t nest)
    : comparison_(comparison),
      nest_place_(nest),
      inside_(inside_of(comparison, nest)),
      copy_of_(inside().size()),
      nest_frames_(comparison.frames_of_nest(nest)) {
    for (const Copy& copy : copies()) copy_of_.at(copy.inner) = copy.result;
}

std::vector<Finding> Unnesting::take_findings() {
    std::stable_sort(findings_.begin(), findings_.end(),
                     [](const Finding& a, const Finding& b) { return a.reason < b.reason; });
    return std::move(findings_);
}

}  // namespace lottie::looks
