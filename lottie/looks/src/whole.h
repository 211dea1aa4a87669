// An animation after all steps against the animation before the first.
#pragma once

#include <set>
#include <vector>

#include "looks/judge.h"
#include "survey.h"

namespace lottie::looks {

class Whole {
  public:
    explicit Whole(const Scene& file) : file_(file) {}

    // One more step; in their order.
    void add(StackChange change) { steps_.push_back(std::move(change)); }
    std::vector<StackChange> take_steps() { return std::move(steps_); }

    // As Judge::compare_whole(); `now` is of the scene after all steps.
    std::vector<Deviation> find_deviations(Surveys& now, const std::set<NestOfFile>& slight, Work& work) const;

  private:
    Scene file_;  // shares its stacks with the one that the steps change
    std::vector<StackChange> steps_;
};

}  // namespace lottie::looks
