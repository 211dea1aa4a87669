// How far layers may reach that expressions move or shape: players without expressions draw them as the file's values
// say, others elsewhere.
#pragma once

#include <map>
#include <optional>
#include <string_view>
#include <utility>

#include "expression_point.h"
#include "property.h"
#include "survey.h"

namespace lottie::looks {

// Whether an expression of the layer's own may place it where its values would not, or draw it in another shape.
bool is_moved_by_own_expression(const SceneLayer& layer);
bool is_shaped_by_expression(const SceneLayer& layer);

// Of one layer. Known are those that play their keyframes again and again, and those that turn, or lie where another
// one does or has a path, or where numbers say; and strokes whose widths numbers and controls give.
class ExpressionReach {
  public:
    ExpressionReach(Survey& survey, std::size_t place);  // `survey` must outlive it

    // Around where it may be drawn, in the coordinates of the stack; nothing where that cannot be told.
    std::optional<Hull> at(double frame);

  private:
    struct Loop {
        double first;
        double last;
        bool is_all = true;  // that moves: at any frame the layer reaches all that it ever does
    };
    // Where a position lies: on a path of a layer, or at one of its points, or at its position.
    struct Led {
        std::size_t layer;
        Leader leader;
    };
    enum class Kind { unknown, as_stored, loop, placed };

    std::optional<Loop> find_loop() const;
    std::optional<Led> find_leader(std::string_view text) const;
    bool is_led_for_certain(const Led& led) const;
    Hull reach_of(const Hull& own, double frame);
    std::optional<Hull> widest_reach(double frame);
    std::optional<ValueRange> width_range(const Json& width, double stored);
    Hull in_loop(const Hull& own, double frame);
    void find_place();
    Hull where_placed(const Hull& shape, double frame);
    Hull positions(double frame);
    Hull led_positions(double frame);

    Survey& survey_;
    const Stack& stack_;
    std::size_t place_;
    Kind kind_ = Kind::unknown;
    Loop loop_{};
    Hull looped_;  // the layer itself, and its reach in the loop
    Hull loop_reach_;
    bool is_turned_ = false;
    std::optional<Led> led_;
    std::optional<SpelledPoint> spelled_;
    bool has_led_widths_ = false;                                                 // of strokes
    std::map<std::pair<const Json*, double>, std::optional<ValueRange>> widths_;  // by property and stored value
};

}  // namespace lottie::looks
