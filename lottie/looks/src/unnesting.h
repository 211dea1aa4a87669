// One nest before the run and its layers after it.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "comparison.h"

namespace lottie::looks {

// Whether masks that the layers out of a nest got cut them as the nest's masks and frame did.
struct HeldCut {
    bool masks = false;                         // each layer that is drawn is cut by the nest's masks
    bool matte = false;                         // likewise by the nest's matte
    bool is_blurred = false;                    // each would be, but some players blur them together, see scatter.h
    std::vector<bool> frame;                    // by place inside: whether the nest's frame cuts the layer too
    std::optional<std::size_t> cuts_otherwise;  // a layer inside that got masks which are neither
};

class Covering;

class Unnesting {
  public:
    Unnesting(Comparison& comparison, std::size_t nest);

    Comparison& comparison() const { return comparison_; }
    const Stack& stack() const { return comparison_.stack(); }
    const Stack& result() const { return comparison_.result(); }
    const Stack& inside() const { return inside_.stack(); }  // the nest's composition, before
    std::size_t nest_place() const { return nest_place_; }
    const SceneLayer& nest() const { return stack().layer(nest_place_); }
    const SceneLayer& inner(const Copy& copy) const { return inside().layer(copy.inner); }
    const SceneLayer& copied(const Copy& copy) const { return result().layer(copy.result); }

    const std::vector<Copy>& copies() const { return comparison_.copies(nest_place_); }
    // Where a layer of the nest's composition, or one that stayed in the stack, is after the run.
    std::optional<std::size_t> copy_of(std::size_t inner) const { return copy_of_[inner]; }
    std::optional<std::size_t> kept_at(std::size_t place_before) const { return comparison_.kept_at(place_before); }
    bool is_unnested(std::size_t place_before) const { return comparison_.is_unnested(place_before); }

    // The nest's clock: the frame of its composition that it shows at a frame of the stack.
    double inner_frame(double frame) const { return nest().inner_frame(frame, comparison_.before().frame_rate); }
    bool has_time_remap() const { return nest().time_remap().has_value(); }
    // Whether the clock runs as the outer one does, only shifted.
    bool only_shifts() const { return !has_time_remap() && nest().stretch == 1; }
    // Whether somebody put the copies' keyframes on another clock than the run did, which only moves them.
    bool is_retimed() const;
    double outer_frame(double inner) const { return nest().start + nest().stretch * inner; }

    // Frames of the composition at which it can be seen, and those at which the nest can; see Comparison.
    const std::vector<double>& stack_frames() const { return comparison_.frames(); }
    const std::vector<double>& nest_frames() const { return nest_frames_; }

    Survey& stack_survey() const { return comparison_.stack_survey(); }
    Survey& inside_survey() const { return inside_; }
    Placement& stack_placement() const { return stack_survey().placement(); }
    Placement& inside_placement() const { return inside_.placement(); }
    Placement& result_placement() const { return comparison_.result_survey().placement(); }

    // Worked out once, whoever asks.
    const HeldCut& held_cut();
    const Covering& covering();

    void add(Finding finding) { findings_.push_back(std::move(finding)); }
    const std::vector<Finding>& findings() const { return findings_; }  // so far
    std::vector<Finding> take_findings();

    // Of the difference between pictures that look equal, 1 being all of it.
    void add_unseen(double share) { unseen_ += share; }
    double unseen() const { return unseen_; }

  private:
    Comparison& comparison_;
    std::size_t nest_place_;
    Survey& inside_;
    std::vector<std::optional<std::size_t>> copy_of_;
    std::vector<double> nest_frames_;
    std::vector<Finding> findings_;
    double unseen_ = 0;
    std::optional<HeldCut> held_cut_;
    std::shared_ptr<const Covering> covering_;
    mutable std::optional<bool> is_retimed_;
};

}  // namespace lottie::looks
