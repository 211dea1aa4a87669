// A number or point of the animation over time, as players evaluate it.
#pragma once

#include <array>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "json.h"

namespace lottie::looks {

using Values = std::array<double, 3>;  // dimensions that a property lacks are 0

struct ValueRange {
    double least = 0;
    double most = 0;
};

class Property {
  public:
    // What stands for a property that the file leaves out.
    explicit Property(const Values& value) : fixed_(value) {}
    // `json` is a property object; null gives `missing`, as do members that are no numbers. Separated positions are
    // read as one.
    Property(const Json* json, const Values& missing);

    Values at(double frame) const;
    // Whether any two frames may differ, expressions left aside.
    bool is_animated() const { return is_animated_; }
    // Whether the value is surely the same at both frames: it is never another, or they come before all keyframes or
    // behind them.
    bool stands_still_between(double a, double b) const;
    bool has_expression() const { return has_expression_; }
    // Whether the first dimension is surely nothing or less at a frame.
    bool is_nothing_at(double frame) const { return !has_expression_ && at(frame)[0] <= 0; }
    // Whether all players come by the same values: some know but one ease for x and y, and are off on long bent paths
    // by more than a part of `pixel`, the smallest distance that is seen.
    bool moves_alike_everywhere(double pixel) const;
    // Times of the keyframes, ascending in proper files.
    const std::vector<double>& key_times() const { return key_times_; }
    // The values that the property takes at its keyframes, or the one that it always has.
    std::vector<Values> key_values() const;
    // Where the first dimension always lies, expressions left aside; nothing where an ease leads past keyframes.
    std::optional<ValueRange> range() const;
    // Of the curved pieces of a path in space, the length of the longest at most; 0 if there is none.
    double longest_curve() const;

  private:
    struct Key {
        double time = 0;
        Values value{};
        Values end{};                             // of the segment that begins here
        Values out_x{}, out_y{}, in_x{}, in_y{};  // the segment's easing by dimension
        Values out_tangent{}, in_tangent{};       // of a path in space, relative to value and end
        bool is_hold = false;
        bool has_path = false;

        bool has_same_ease(std::size_t i, std::size_t j) const {
            return out_x[i] == out_x[j] && out_y[i] == out_y[j] && in_x[i] == in_x[j] && in_y[i] == in_y[j];
        }
    };
    struct PathLengths {
        std::size_t key;  // where the path begins
        std::vector<double> lengths;
    };

    static bool is_measured_alike(const Key& key, double pixel);
    void read_keys(const Json& keys);
    bool find_animation() const;
    Values in_segment(const Key& key, double span, double frame) const;
    const PathLengths& path_lengths(const Key& key) const;
    Values along_path(const Key& key, double share) const;

    Values fixed_{};
    std::vector<Key> keys_;
    std::vector<Property> separated_;  // x, y and z, or empty
    std::vector<double> key_times_;
    double last_time_ = -std::numeric_limits<double>::infinity();  // of its own keyframes
    bool has_expression_ = false;
    bool is_animated_ = false;
    mutable std::optional<PathLengths> measured_;  // of the path that was asked for last: frames come in order
};

// How far the value has come when `share` of the time from this keyframe to the next has passed; for properties with
// one ease for all dimensions.
double ease_between(const Json& key, double share);

// Whether a property object holds keyframes, decided by its form as players do.
bool is_keyed(const Json& property);

}  // namespace lottie::looks
