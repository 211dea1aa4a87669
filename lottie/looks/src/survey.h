// What is worked out about compositions, each thing once: where layers lie and reach, which of them change, their
// names.
#pragma once

#include <memory>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "drawn_paths.h"
#include "hull.h"
#include "looks/work.h"
#include "palette.h"
#include "placement.h"
#include "scene.h"

namespace lottie::looks {

class Surveys;

// Around what added masks leave of a layer, in its own coordinates; nothing when the masks do not bound it.
std::optional<Hull> mask_reach(const SceneLayer& layer, double frame);

// About one stack.
class Survey {
  public:
    // `all` is null for a stack whose nests nobody looks into. Everything but the stack must outlive it.
    Survey(std::shared_ptr<const Stack> stack, Work& work, Surveys* all = nullptr);

    const Stack& stack() const { return *stack_; }
    Placement& placement() { return placement_; }

    // The topmost of that name, the first of that number.
    std::optional<std::size_t> layer_named(std::string_view name);
    std::optional<std::size_t> layer_numbered(double number);

    // How far a layer's picture surely reaches at a frame, in its own coordinates, transform left aside, masks taken
    // into account; of a nest, what its layers reach of its frame. Texts are estimated from their size. Without area
    // when the layer draws nothing then.
    const Hull& reach(std::size_t layer, double frame);
    // The same of a shape layer whose strokes have other widths than the file says.
    Hull reach_with(const StrokeWidths& widths, std::size_t layer, double frame);
    // Around all that reach() can be, found with little work; masks left aside. Nothing where it cannot be told so.
    std::optional<Box> box_around_reach(std::size_t layer, double frame);
    // Around the layer's paths as expressions read them, however many ask; nothing if an expression gives one of them.
    std::optional<Box> box_around_paths(std::size_t layer, double frame);
    // What reach() says in the coordinates of the stack, parents and a matte taken into account; nothing when it is off
    // or transparent then.
    const Hull& reach_in_stack(std::size_t layer, double frame);
    // Whether reach_in_stack() surely lies within a box, as far as that can be told with little work.
    bool surely_lies_within(std::size_t layer, double frame, const Box& box);
    // Whether reach_in_stack() is the same at all frames at which the layer is on.
    bool reach_stands_still(std::size_t layer);
    // Around all that is drawn.
    const Hull& reach_of_all(double frame);

    // Whether players may draw the layer's own picture differently at two frames: keyframes, expressions, or a nested
    // composition with layers that change, come or go. Its transform and opacity count.
    bool changes_over_time(std::size_t layer);
    // Whether a layer that players draw leaves the plane by itself or through a parent.
    bool is_seen_in_depth(std::size_t layer);

    // Whether all players see the layer where its placement says: no expression moves it or what it hangs on, none of
    // them leaves the plane, and nothing moves in a way that players differ in.
    bool has_reliable_placement(std::size_t layer) const;
    // Whether an expression moves it, or what it hangs on.
    bool is_moved_by_expression(std::size_t layer) const;

    // Whether an expression, of the layer's own or of what it hangs on, may place it where its values would not.
    bool is_led(std::size_t layer);
    // Or whether one may draw it in another shape; and whether that is so of any layer, or of one inside of its nests.
    bool is_drawn_otherwise(std::size_t layer);
    bool is_any_drawn_otherwise();

    // About the main composition, if all players know that one by the name; else null.
    Survey* main_composition(std::string_view name);

    void spend(std::size_t steps) { work_.spend(steps); }

    // Of each layer, see dark_ground.h; worked out when somebody asks.
    std::optional<std::vector<double>> darkness;

    // How many compositions lie inside one another, this one being 1.
    std::size_t levels() const { return levels_; }

  private:
    friend class Surveys;
    enum class Answer : char { unknown, yes, no };
    struct About {
        Answer own_stands_still = Answer::unknown;
        Answer stands_still = Answer::unknown;
        Answer changes = Answer::unknown;
        Answer leaves_plane = Answer::unknown;
        Answer is_led = Answer::unknown;  // by an expression of its own or of what it hangs on
        std::optional<double> own_frame;  // of own_reach
        std::optional<double> frame;      // of reach
        Hull own_reach;
        Hull reach;
        std::unordered_map<double, Hull> kept_reaches;  // of own_reach, by frame
        std::optional<DrawnPaths> paths;
        std::unordered_map<double, Box> boxes_around_paths;  // by frame; one if they stand still
        Box box;                                             // that was asked for last
        std::unordered_map<double, bool> lies_within;        // of it, by frame
    };

    bool own_reach_stands_still(std::size_t layer);
    bool nest_stands_still(const SceneLayer& nest);
    bool is_told_to_lie_within(std::size_t layer, double frame, const Box& box);
    bool takes_room(std::size_t points);
    const Hull* kept_reach(std::size_t layer, double frame) const;
    void keep_reach(std::size_t layer, double frame);
    Hull work_out_reach(std::size_t layer, double frame);
    Hull within_masks(const SceneLayer& layer, Hull hull, double frame);
    Hull nest_reach(const SceneLayer& nest, double frame);
    Survey* inside(const SceneLayer& nest);
    void index_layers();
    // Whether something is so of a layer's transform or of one that it hangs on; what is known is kept.
    template <class IsSo>
    bool is_any_so(std::vector<Answer>& known, std::size_t layer, IsSo is_so) const;

    std::shared_ptr<const Stack> stack_;
    Work& work_;
    Surveys* all_;
    Placement placement_;
    std::size_t levels_ = 1;
    std::vector<About> about_;
    mutable std::vector<Answer> is_placed_in_many_ways_;  // by place; empty until somebody asks
    mutable std::vector<Answer> is_moved_by_expression_;  // likewise
    std::size_t kept_points_ = 0;                         // of what is kept by frame
    std::unordered_map<double, Hull> reach_of_all_;       // by frame
    bool is_indexed_ = false;
    Answer is_any_drawn_otherwise_ = Answer::unknown;
    std::unordered_map<std::string_view, std::size_t> by_name_;
    std::unordered_map<double, std::size_t> by_number_;
};

// About all stacks of a scene, as far as somebody asked. Compositions that many nests show are worked on once.
class Surveys {
  public:
    // Both must outlive it.
    Surveys(const Scene& scene, Work& work) : scene_(scene), work_(work) {}

    // Null if the scene has no such composition.
    Survey* find(const std::string& id);
    // To be called when the scene has another stack of that id now, or none.
    void forget(const std::string& id);
    const Scene& scene() const { return scene_; }
    const Palette& palette();  // of the scene as it is when somebody first asks

  private:
    friend class Survey;
    bool add(const std::string& id, std::vector<std::string>& open);

    const Scene& scene_;
    Work& work_;
    std::unordered_map<std::string, std::unique_ptr<Survey>> by_id_;
    std::size_t kept_points_ = 0;  // of all of them
    std::optional<Palette> palette_;
    std::unordered_map<std::string, std::vector<std::string>> users_;  // surveyed compositions that show it
};

}  // namespace lottie::looks
