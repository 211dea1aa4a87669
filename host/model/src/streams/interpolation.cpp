// Cubic eases, and motion along cubic paths by arc length.
#include "streams/interpolation.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace host::model {
namespace {

constexpr int kPathSamples = 200;

double cubic(double u, double p0, double p1, double p2, double p3) {
    const double w = 1 - u;
    return w * w * w * p0 + 3 * w * w * u * p1 + 3 * w * u * u * p2 + u * u * u * p3;
}

// The curve parameter at which the time coordinate, with control points 0, x1, x2, 1 (x1 and x2 in 0..1), is `share`.
double parameter_at(double share, double x1, double x2) {
    double low = 0;
    double high = 1;
    double u = share;
    for (int i = 0; i < 64; ++i) {
        const double miss = cubic(u, 0, x1, x2, 1) - share;
        if (std::abs(miss) < 1e-14) break;
        (miss > 0 ? high : low) = u;
        const double w = 1 - u;
        const double slope = 3 * w * w * x1 + 6 * w * u * (x2 - x1) + 3 * u * u * (1 - x2);
        const double newton = u - miss / slope;
        u = slope > 1e-12 && newton > low && newton < high ? newton : (low + high) / 2;
    }
    return u;
}

// One segment: its eases are the handles of a cubic over share of the time and value.
struct Segment {
    const Keyframe& from;
    const Keyframe& to;
    double share;  // of the segment's time elapsed
    double seconds;

    bool is_linear() const { return from.out != Interpolation::bezier && to.in != Interpolation::bezier; }

    // From `start` to `end`; with `within`, handles do not leave that range.
    double ease(std::size_t dimension, double start, double end, bool within) const {
        if (is_linear()) return start + share * (end - start);
        const double out_share = std::clamp(from.ease_out[dimension].influence, 0.0, 1.0);
        const double in_share = std::clamp(to.ease_in[dimension].influence, 0.0, 1.0);
        double out_length = out_share;
        double in_length = in_share;
        double first = start + out_share * (end - start);
        double second = end - in_share * (end - start);
        if (from.out == Interpolation::bezier) {
            first = handle(start, end - start, from.ease_out[dimension].speed, out_length, within, 1);
        }
        if (to.in == Interpolation::bezier) {
            second = handle(end, end - start, to.ease_in[dimension].speed, in_length, within, -1);
        }
        const double u = parameter_at(share, out_length, 1 - in_length);
        return cubic(u, start, first, second, end);
    }

  private:
    // The value at the end of a handle of `length` (share of the time). A handle that would leave the range is
    // shortened.
    double handle(double at, double range, double speed, double& length, bool within, double sign) const {
        double rise = speed * length * seconds;
        if (within) {
            rise = std::max(rise, 0.0);
            if (rise > range && rise > 0) {
                length *= range / rise;
                rise = range;
            }
        }
        return at + sign * rise;
    }
};

double distance(const Value& a, const Value& b, int dimensions) {
    double sum = 0;
    for (std::size_t d = 0; d < static_cast<std::size_t>(dimensions); ++d) sum += (b.n[d] - a.n[d]) * (b.n[d] - a.n[d]);
    return std::sqrt(sum);
}

class Path {
  public:
    Path(const Keyframe& from, const Keyframe& to, int dimensions) : dimensions_(dimensions) {
        for (std::size_t d = 0; d < 4; ++d) {
            p0_.n[d] = from.value.n[d];
            p1_.n[d] = from.value.n[d] + from.tangent_out.n[d];
            p2_.n[d] = to.value.n[d] + to.tangent_in.n[d];
            p3_.n[d] = to.value.n[d];
        }
        straight_ = p1_ == p0_ && p2_ == p3_;
        if (straight_) {
            length_ = distance(p0_, p3_, dimensions_);
            return;
        }
        lengths_.reserve(kPathSamples + 1);
        lengths_.push_back(0);
        Value last = p0_;
        for (int i = 1; i <= kPathSamples; ++i) {
            const Value here = at_parameter(static_cast<double>(i) / kPathSamples);
            length_ += distance(last, here, dimensions_);
            lengths_.push_back(length_);
            last = here;
        }
    }

    double length() const { return length_; }

    Value at_length(double length) const {
        if (length_ <= 0) return p0_;
        if (straight_) return between(p0_, p3_, length / length_);
        const auto after = std::upper_bound(lengths_.begin(), lengths_.end(), length);
        if (after == lengths_.begin()) return p0_;
        if (after == lengths_.end()) return p3_;
        const double before = *(after - 1);
        const double index = static_cast<double>(after - lengths_.begin() - 1) + (length - before) / (*after - before);
        return at_parameter(index / kPathSamples);
    }

  private:
    Value at_parameter(double u) const {
        Value v;
        for (std::size_t d = 0; d < static_cast<std::size_t>(dimensions_); ++d) {
            v.n[d] = cubic(u, p0_.n[d], p1_.n[d], p2_.n[d], p3_.n[d]);
        }
        return v;
    }
    Value between(const Value& a, const Value& b, double share) const {
        Value v;
        for (std::size_t d = 0; d < static_cast<std::size_t>(dimensions_); ++d) {
            v.n[d] = a.n[d] + share * (b.n[d] - a.n[d]);
        }
        return v;
    }

    int dimensions_;
    Value p0_, p1_, p2_, p3_;
    bool straight_ = false;
    double length_ = 0;
    std::vector<double> lengths_;  // of the path up to each sample
};

}  // namespace

Value interpolate(StreamType type, const Keyframe& a, const Keyframe& b, Time t) {
    if (a.out == Interpolation::hold || value_dimensions(type) == 0) return a.value;
    if (type == StreamType::layer_id || type == StreamType::mask_id) return a.value;
    const Time whole = b.time - a.time;
    const Segment segment{a, b, seconds(t - a.time) / seconds(whole), seconds(whole)};
    const int dimensions = value_dimensions(type);
    // One ease for several dimensions applies to the distance along the path.
    if (dimensions > 1 && temporal_dimensions(type) == 1) {
        const Path path(a, b, dimensions);
        return path.at_length(segment.ease(0, 0, path.length(), true));
    }
    Value v;
    for (std::size_t d = 0; d < static_cast<std::size_t>(dimensions); ++d) {
        v.n[d] = segment.ease(d, a.value.n[d], b.value.n[d], false);
    }
    return v;
}

Value value_at(const StreamData& data, StreamType type, Time t) {
    const KeyframeList& keyframes = data.keyframes;
    if (keyframes.empty()) return data.static_value;
    const std::size_t next = keyframes.count_before(t);
    if (next == keyframes.size()) return keyframes[next - 1].value;
    if (next == 0 || keyframes.time(next) == t) return keyframes[next].value;
    return interpolate(type, keyframes[next - 1], keyframes[next], t);
}

}  // namespace host::model
