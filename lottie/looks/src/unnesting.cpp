// One nest before the run and its layers after it.
#include "unnesting.h"

#include <algorithm>
#include <stdexcept>

#include "covering.h"
#include "held_cut.h"

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

// Whether any keyframe is where moving the layer's would put none, or any property got an expression.
bool has_other_keys(const SceneLayer& inner, const SceneLayer& copied) {
    constexpr double kSameTime = 0.002;
    const double shift = copied.start - inner.start;
    if (copied.time_remap() && !inner.time_remap()) return true;
    for (const auto& part : inner.parts()) {
        const LayerPart* after = copied.part(part->key());
        if (after == nullptr) continue;
        if (after->expressions().size() > part->expressions().size()) return true;
        std::vector<double> moved = part->key_times();
        for (double& time : moved) time += shift;
        std::sort(moved.begin(), moved.end());
        for (const double time : after->key_times()) {
            const auto next = std::lower_bound(moved.begin(), moved.end(), time - kSameTime);
            if (next == moved.end() || *next > time + kSameTime) return true;
        }
    }
    return false;
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

bool Unnesting::is_retimed() const {
    if (!is_retimed_) {
        is_retimed_ = !only_shifts() && std::any_of(copies().begin(), copies().end(), [this](const Copy& copy) {
            return has_other_keys(inner(copy), copied(copy));
        });
    }
    return *is_retimed_;
}

const HeldCut& Unnesting::held_cut() {
    if (!held_cut_) held_cut_ = find_held_cut(*this);
    return *held_cut_;
}

const Covering& Unnesting::covering() {
    if (!covering_) covering_ = std::make_shared<const Covering>(*this);
    return *covering_;
}

std::vector<Finding> Unnesting::take_findings() {
    std::stable_sort(findings_.begin(), findings_.end(),
                     [](const Finding& a, const Finding& b) { return a.reason < b.reason; });
    return std::move(findings_);
}

}  // namespace lottie::looks
