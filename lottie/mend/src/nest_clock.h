// Which frame inside a nest shows at which frame outside.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "document/outline.h"
#include "keyframes.h"
#include "layer_text.h"

namespace lottie::mend {

// To a ten-thousandth of a frame, which no player tells from it.
double rounded_frame(double frame);

// While it runs evenly: at `from` of the outer frames it shows `inner_from`. Evenly backward and standing still too.
struct EvenRun {
    double from = 0;
    double to = 0;
    double inner_from = 0;
    double inner_to = 0;

    double rate() const { return (inner_to - inner_from) / (to - from); }
    double inner(double outer) const { return inner_from + (outer - from) * rate(); }
    double outer(double inner) const { return from + (inner - inner_from) / rate(); }
};

// A nest's clock as long as the nest is on. Where it eases it is taken to run evenly from one whole frame to the next:
// players show nothing between.
class NestClock {
  public:
    // Nothing where an expression does more to the clock than to play its keyframes again and again, or where those are
    // not in order.
    static std::optional<NestClock> of(const document::ScannedLayer& nest, const LayerText& text, double frame_rate);

    // In order, without gaps.
    const std::vector<EvenRun>& runs() const { return runs_; }
    // Of properties on this clock, where the runs are played again and again.
    const std::string& expression() const { return expression_; }
    // As players work it out, to the last bit: at the edge of a layer that decides.
    double inner(double outer) const;
    // The same for who counts the frames inside from another one: what was `frame` is `frame + by`.
    NestClock counted_from(double by) const;
    // The frames outside at which those from `in` up to `out` show; nothing if they show more than once.
    struct Range {
        double in = 0;
        double out = 0;  // not after `in`: never
    };
    std::optional<Range> when(double in, double out) const;

  private:
    std::vector<EvenRun> runs_;
    std::optional<Keyframes> remap_;  // seconds; if it is keyframed
    double frame_rate_ = 0;
    std::string expression_;
};

}  // namespace lottie::mend
