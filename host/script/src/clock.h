// How long a script has been running, with pauses. Time is up only when both the wall clock and the processor's say so:
// having to wait its turn on a busy machine is not the script's fault.
#pragma once

#include <chrono>

namespace host::script {

class RunClock {
  public:
    using Duration = std::chrono::nanoseconds;

    Duration limit() const { return limit_; }
    bool is_counting() const { return counts_; }  // between restart() and stop(), pauses included
    bool time_is_up() const;

    void restart(Duration limit);
    Duration stop();  // CPU time since restart(); from here on, time is never up

    // Keeps the clock running, or stopped, for as long as it lives; then restores the former state.
    class [[nodiscard]] Switched {
      public:
        Switched(RunClock& clock, bool running) : clock_(clock), before_(clock.running_) { clock_.switch_to(running); }
        ~Switched() { clock_.switch_to(before_); }
        Switched(const Switched&) = delete;
        Switched& operator=(const Switched&) = delete;

      private:
        RunClock& clock_;
        bool before_;
    };

  private:
    using Steady = std::chrono::steady_clock;
    void switch_to(bool running);
    Steady::duration used() const;
    Duration processor_used() const;

    Duration limit_{};
    Steady::duration used_before_{};
    Steady::time_point since_{};
    Duration processor_used_before_{};
    Duration processor_since_{};
    bool counts_ = false;
    bool running_ = false;
};

}  // namespace host::script
