// The keyframes of a property as spans of time that can be cut, turned round and put elsewhere.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "document/json_tree.h"

namespace lottie::mend {

// What a property is at a moment: JSON, and the numbers in it that players interpolate, in the order of the text.
class KeyValue {
  public:
    KeyValue() = default;
    explicit KeyValue(std::string json) : text_(std::move(json)) {}

    const std::string& text() const { return text_; }
    const std::vector<double>& numbers() const;  // read when first asked for
    // The same text with other numbers.
    KeyValue with(std::vector<double> other) const;
    friend bool operator==(const KeyValue& a, const KeyValue& b);  // of the numbers

  private:
    std::string text_;
    mutable std::optional<std::vector<double>> numbers_;
};

// The handles of an ease in the unit square: how far the value has come (y) when a share of the time (x) has passed.
struct EaseHandles {
    double x1 = 0, y1 = 0, x2 = 1, y2 = 1;

    bool is_linear() const { return x1 == y1 && x2 == y2; }
    double at(double x) const;
    friend bool operator==(const EaseHandles&, const EaseHandles&) = default;
};

// Between two keyframes.
struct KeySpan {
    double from = 0;  // frames
    double to = 0;
    KeyValue start;
    KeyValue end;
    bool is_hold = false;            // it stays at `start`
    std::vector<EaseHandles> eases;  // one for each dimension, or one for all of them; empty: linear
    bool has_one_ease = true;        // spelled as numbers, not as arrays
    // Of a path in space, relative to start and end; empty for a straight one.
    std::vector<double> tangent_out, tangent_in;

    double length() const { return to - from; }
    // Paths may have other numbers of points at both ends; players draw something between all the same.
    bool is_mixable() const { return start.numbers().size() == end.numbers().size(); }
    KeyValue at(double frame) const;
    // What of it lies between two of its frames, nothing if that cannot be told as one span: players differ in how
    // they ease dimensions that each have an ease of their own.
    std::optional<KeySpan> part(double first, double last) const;
    KeySpan reversed() const;
};

class Keyframes {
  public:
    // `property` is a property's object. Nothing unless it has keyframes that lie in order.
    static std::optional<Keyframes> of(const document::JsonTree& tree, const document::JsonNode& property);
    // In order, without gaps.
    explicit Keyframes(std::vector<KeySpan> spans) : spans_(std::move(spans)) {}

    const std::vector<KeySpan>& spans() const { return spans_; }
    KeyValue at(double frame) const;
    // The array of keyframes. Segments that go on as the one before become one with it.
    std::string text() const;

  private:
    std::vector<KeySpan> spans_;
};

// Whether the value of a property is an array of keyframes, as players tell.
bool has_keyframes(const document::JsonTree& tree, const document::JsonNode& property);

}  // namespace lottie::mend
