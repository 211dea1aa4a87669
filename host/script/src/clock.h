// How long a script has been running, with pauses. A script is slow when it takes both long and the processor: on a
// busy machine waiting its turn is not its fault.
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
    Duration stop();  // the processor's time since restart(); from here on the time is never up

    // While it lives the clock runs, or stands still; then its former state comes back.
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
