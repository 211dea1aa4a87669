// Handles of the file's easing curves and the model's speeds and influences.
#pragma once

#include <cstddef>

#include "model/value.h"

namespace lottie::document {

// A point of the unit square in which a segment's easing curve runs: x is the share of its time, y of its way.
struct Handle {
    double x = 0;
    double y = 0;

    bool is_diagonal() const { return x == y; }
};

// What speeds along a segment are measured against.
struct SegmentMeasure {
    double seconds = 0;
    double way = 1;  // signed change of one number, or the length of the path; 1 where nothing moves
};

SegmentMeasure measure(host::model::StreamType type, std::size_t dimension, const host::model::Keyframe& from,
                       const host::model::Keyframe& to);

// There and back gives the same handle up to rounding, whatever the measure. A handle that leaves its keyframe straight
// up has no speed; it is held as an influence too small to show.
host::model::Ease ease_out(Handle handle, const SegmentMeasure& segment);
host::model::Ease ease_in(Handle handle, const SegmentMeasure& segment);
// Rounded to nine decimals. A linear side lies on the diagonal whatever its speed.
Handle handle_out(const host::model::Ease& ease, host::model::Interpolation side, const SegmentMeasure& segment);
Handle handle_in(const host::model::Ease& ease, host::model::Interpolation side, const SegmentMeasure& segment);

}  // namespace lottie::document
