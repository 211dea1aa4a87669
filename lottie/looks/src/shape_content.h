// What a shape layer paints.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "hull.h"
#include "json.h"
#include "looks/work.h"
#include "outline.h"

namespace lottie::looks {

// How wide a stroke is whose width has an expression, from that property and the value that the file gives it.
using StrokeWidths = std::function<double(const Json& width, double stored)>;

// Compiled once; what stands still in it is worked out once.
class ShapeContent {
  public:
    // The JSON must outlive it.
    explicit ShapeContent(Json::ConstArray shapes);
    ~ShapeContent();
    ShapeContent(const ShapeContent&) = delete;

    // What fills and strokes leave of the shapes, groups, trims and repeaters included, in the layer's coordinates.
    // Paths that nothing paints are left out.
    // Throws TooMuchWork.
    const Hull& hull(double frame, Work& work) const;
    // The same with other widths of strokes.
    Hull hull_with(const StrokeWidths& widths, double frame, Work& work) const;
    // A box that holds that hull, and may be much larger; found with far less work. Nothing if it cannot be told.
    // Throws TooMuchWork.
    std::optional<Box> box_around(double frame, Work& work) const;
    bool is_animated() const { return is_animated_; }

  private:
    class Item;
    struct Shape;
    struct Moment;
    class Paints;
    struct Bounds;

    Hull work_out_hull(Moment at) const;

    std::vector<std::unique_ptr<Item>> items_;
    bool is_animated_ = false;
    std::size_t weight_ = 1;
    mutable std::optional<double> hull_frame_;
    mutable Hull hull_;
};

}  // namespace lottie::looks
