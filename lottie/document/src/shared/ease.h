// Handles of the file's easing curves and the model's speeds and influences.
#pragma once

#include <cstddef>

#include "model/value.h"

namespace lottie::document {

// A point of the unit square in which a segment's easing curve runs: x is the share of its time, y of its change.
struct EaseHandle {
    double x = 0;
    double y = 0;

    bool is_diagonal() const { return x == y; }
};

// What speeds along a segment are measured against.
struct SegmentMeasure {
    double seconds = 0;
    double change = 1;  // of one number, signed, or the length of the path; 1 where nothing moves
    bool moves = true;
};

SegmentMeasure measure(host::model::StreamType type, std::size_t dimension, const host::model::Keyframe& from,
                       const host::model::Keyframe& to);

// A round trip gives the same handle up to rounding, whatever the measure. A handle that leaves its keyframe vertically
// has no speed; it is held as an influence too small to show.
host::model::Ease ease_out(EaseHandle handle, const SegmentMeasure& segment);
host::model::Ease ease_in(EaseHandle handle, const SegmentMeasure& segment);
// Whether all of it is finite, and the way back to handles too.
bool can_hold(const SegmentMeasure& segment, const host::model::Ease& out, const host::model::Ease& in);
// Rounded to nine decimals. A linear side lies on the diagonal whatever its speed.
EaseHandle handle_out(const host::model::Ease& ease, host::model::Interpolation side, const SegmentMeasure& segment);
EaseHandle handle_in(const host::model::Ease& ease, host::model::Interpolation side, const SegmentMeasure& segment);

}  // namespace lottie::document
