// What a shape layer paints, and how far paths and masks reach.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "hull.h"
#include "json.h"
#include "looks/work.h"
#include "property.h"

namespace lottie::looks {

struct Outline {
    std::vector<Point> points;  // along the curve, close enough together to hold it
    double growth = 0;          // how far paint reaches beyond them, pixels
    bool is_closed = false;
};

// A path property over time, in its own coordinates.
class PathProperty {
  public:
    struct Vertices {
        std::vector<Point> at, in, out;  // the handles relative to their vertices
        bool is_closed = false;
    };

    explicit PathProperty(const Json* json);  // null: no points

    Outline at(double frame) const;
    Vertices vertices_at(double frame) const;
    // Takes in all vertices and handles, and with them the curve; returns how many vertices there are.
    std::size_t take_into(Box& box, double frame) const;
    bool is_animated() const { return keys_.size() > 1; }

  private:
    struct Key {
        double time = 0;
        bool is_hold = false;
        const Json* json = nullptr;  // for its ease
        Vertices start;
        Vertices end;
    };

    static Vertices vertices_of(const Json* json);
    static Outline along(const Vertices& vertices);

    std::vector<Key> keys_;  // one, at no time, when it stands still
};

// A mask's path in its layer's coordinates.
struct MaskContent {
    explicit MaskContent(const Json& mask);  // must outlive it

    std::string mode;  // "a", "s", "i", "n", ...
    bool is_inverted;
    PathProperty path;
    Property expansion;
};

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
    // A box that holds that hull, and may be much larger; found with far less work. Nothing if it cannot be told.
    // Throws TooMuchWork.
    std::optional<Box> box_around(double frame, Work& work) const;
    bool is_animated() const { return is_animated_; }

  private:
    class Item;
    struct Shape;
    struct Moment;
    struct Bounds;

    std::vector<std::unique_ptr<Item>> items_;
    bool is_animated_ = false;
    std::size_t weight_ = 1;
    mutable std::optional<double> hull_frame_;
    mutable Hull hull_;
};

// The smallest polygon around the outlines and what they grow by.
Hull around(const std::vector<Outline>& outlines);

}  // namespace lottie::looks
