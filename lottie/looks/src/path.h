// Paths of shapes and masks over time.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "json.h"
#include "outline.h"
#include "property.h"

namespace lottie::looks {

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

    // A keyframe, and how far the path has come from it to the next one: 0 where it stands still.
    struct Instant {
        const Key& key;
        double share;
    };

    static Vertices vertices_of(const Json* json);
    static Outline along(const Vertices& vertices);
    Instant instant_at(double frame) const;  // of one that has keys

    std::vector<Key> keys_;  // one, at no time, when it stands still
};

// A mask's path in its layer's coordinates.
struct MaskContent {
    explicit MaskContent(const Json& mask);  // must outlive it

    bool is_animated() const { return path.is_animated() || expansion.is_animated(); }
    // Around its path, grown; good until the next call.
    const Hull& hull(double frame) const;

    std::string mode;  // "a", "s", "i", "n", ...
    bool is_inverted;
    bool has_expression;  // that shapes it
    PathProperty path;
    Property expansion;

  private:
    mutable std::optional<double> hull_frame_;
    mutable Hull hull_;
};

}  // namespace lottie::looks
