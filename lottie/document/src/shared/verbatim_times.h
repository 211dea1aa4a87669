// Begins and ends of layers that the file spells finer than a tick.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "shared/frame_clock.h"

namespace lottie::document {

// Exporters write the noise of their sums: a layer that should end with frame 60 has "op":61.0000024845809, and players
// show it at frame 61 too. A layer that takes over such an edge must have it to the last digit, or it is seen a frame
// shorter or longer than what it stands for.
class VerbatimTimes {
  public:
    // Whether the clock would spell it otherwise.
    static bool is_noisy(const FrameClock& clock, double frames);

    VerbatimTimes() = default;
    // `frames`: the begins, ends and starts of all layers; not needed of a file where none is noisy.
    explicit VerbatimTimes(std::vector<double> frames);

    // What the file says, in frames, where the model says `time`. The clock's own spelling if it says nothing, or
    // several things.
    double exact(const FrameClock& clock, host::model::Time time) const;

    // The text of a new begin or end at `time`. `moved` is the layer's old one after an exact move; it counts if it
    // means that time. Where two edges meet there, the one further inside the layer holds.
    std::string begin_text(const FrameClock& clock, host::model::Time time, double moved) const;
    std::string end_text(const FrameClock& clock, host::model::Time time, double moved) const;

  private:
    std::optional<double> spelled(const FrameClock& clock, host::model::Time time) const;

    std::vector<double> frames_;  // sorted, each once
};

}  // namespace lottie::document
