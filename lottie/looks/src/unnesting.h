// One nest before the run and its layers after it: what all findings look at.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/printable.h"
#include "bounds.h"
#include "looks/audit.h"
#include "placement.h"
#include "scene.h"

namespace lottie::looks {

// Displacements in pixels and shares in percent: below kNothing they are rounding, below kUnseen no eye sees them.
inline constexpr double kNothing = 0.01;
inline constexpr double kUnseen = 0.25;

class Unnesting {
  public:
    struct Copy {
        std::size_t inner;   // place in the nest's composition
        std::size_t result;  // place in the stack after
    };

    // Throws std::invalid_argument when the change does not fit the animations.
    Unnesting(const Scene& before, const Scene& after, const StackChange& change, std::size_t nest);

    const Scene& before() const { return before_; }
    const Scene& after() const { return after_; }
    const Stack& stack() const { return stack_; }    // with the nest in it
    const Stack& result() const { return result_; }  // the same composition after the run
    const Stack& inside() const { return inside_; }  // the nest's composition, before
    const StackChange& change() const { return change_; }
    std::size_t nest_place() const { return nest_place_; }
    const SceneLayer& nest() const { return stack_.layers[nest_place_]; }
    const SceneLayer& inner(const Copy& copy) const { return inside_.layers[copy.inner]; }
    const SceneLayer& copied(const Copy& copy) const { return result_.layers[copy.result]; }

    const std::vector<Copy>& copies() const { return copies_; }  // in the order of the stack after
    // Where a layer of the nest's composition, or one that stayed in the stack, is after the run.
    std::optional<std::size_t> copy_of(std::size_t inner) const { return copy_of_[inner]; }
    std::optional<std::size_t> kept_at(std::size_t place_before) const { return kept_at_[place_before]; }
    bool is_unnested(std::size_t place_before) const;

    // The nest's clock: the frame of its composition that it shows at a frame of the stack.
    double inner_frame(double frame) const { return nest().inner_frame(frame, before_.frame_rate); }
    bool has_time_remap() const { return nest().time_remap.has_value(); }
    // Whether the clock runs as the outer one does, only shifted.
    bool only_shifts() const { return !has_time_remap() && nest().stretch == 1; }
    double outer_frame(double inner) const { return nest().start + nest().stretch * inner; }

    // Whole frames at which the nest can be seen; all of them up to a bound, else evenly
    // spread ones and those where layers begin and end.
    const std::vector<double>& nest_frames() const { return nest_frames_; }
    // Likewise for the whole stack.
    const std::vector<double>& stack_frames() const { return stack_frames_; }

    Extents& extents() { return extents_; }  // of layers before the run
    Placement& stack_placement() { return extents_.placement(stack_); }
    Placement& inside_placement() { return extents_.placement(inside_); }
    Placement& result_placement() { return result_placement_; }

    void add(Finding finding) { findings_.push_back(std::move(finding)); }
    std::vector<Finding> take_findings();

  private:
    std::vector<double> whole_frames(double from, double to) const;
    void add_edges(std::vector<double>& frames) const;

    const Scene& before_;
    const Scene& after_;
    const StackChange& change_;
    const Stack& stack_;
    const Stack& result_;
    std::size_t nest_place_;
    const Stack& inside_;
    std::vector<Copy> copies_;
    std::vector<std::optional<std::size_t>> copy_of_;
    std::vector<std::optional<std::size_t>> kept_at_;
    std::vector<double> nest_frames_;
    std::vector<double> stack_frames_;
    Extents extents_;
    Placement result_placement_;
    std::vector<Finding> findings_;
};

using host::base::printable;

// A name for sentences.
inline std::string quoted(const std::string& name) {
    return host::base::in_quotes(name);
}

// `layer "first"`, or `layers "first" and 3 more`.
std::string layers_named(const std::string& first, std::size_t count);

// The one of the two words or phrases that fits so many.
std::string in_number(std::size_t count, const char* one, const char* several);

// A number as people write it: at most three decimals, no zeros at the end.
std::string plain(double number);

}  // namespace lottie::looks
