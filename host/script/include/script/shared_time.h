// CPU time shared by many script runs.
#pragma once

#include <algorithm>
#include <chrono>

namespace host::script {

// Not synchronized: engines that share one must run one after the other.
class SharedTime {
  public:
    using Duration = std::chrono::nanoseconds;

    explicit SharedTime(std::chrono::milliseconds limit) : limit_(limit), left_(limit) {}

    std::chrono::milliseconds limit() const { return limit_; }
    Duration left() const { return left_; }  // never below zero
    void spend(Duration time) { left_ = std::max(left_ - time, Duration::zero()); }

  private:
    std::chrono::milliseconds limit_;
    Duration left_;
};

}  // namespace host::script
