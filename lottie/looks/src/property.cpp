// A number or point of the animation over time, as players evaluate it.
#include "property.h"

#include <algorithm>
#include <cmath>

namespace lottie::looks {
namespace {

constexpr int kPathSteps = 150;  // as the reference player measures the length of a path

Values numbers(const Json* json, const Values& missing) {
    Values values = missing;
    if (json == nullptr) return values;
    if (json->IsNumber()) values[0] = json->GetDouble();
    if (!json->IsArray()) return values;
    for (rapidjson::SizeType i = 0; i < json->Size() && i < values.size(); ++i) {
        if ((*json)[i].IsNumber()) values[i] = (*json)[i].GetDouble();
    }
    return values;
}

// One coordinate of an ease handle; a missing dimension takes the first.
Values handle(const Json& key, const char* name, const char* coordinate, double missing) {
    Values values;
    values.fill(missing);
    const Json* side = member(key, name);
    const Json* json = side == nullptr ? nullptr : member(*side, coordinate);
    if (json == nullptr) return values;
    if (json->IsNumber()) values.fill(json->GetDouble());
    if (!json->IsArray() || json->Empty() || !(*json)[0].IsNumber()) return values;
    values.fill((*json)[0].GetDouble());
    return numbers(json, values);
}

double cubic(double p1, double p2, double u) {
    const double v = 1 - u;
    return 3 * v * v * u * p1 + 3 * v * u * u * p2 + u * u * u;
}

// The place on the curve at which `x` of the time has passed.
double place_at_time(double x, double out_x, double in_x) {
    // A handle beyond its keyframes makes time run backwards: then there may be several places, and halving finds one.
    const bool is_monotonic = out_x >= 0 && out_x <= 1 && in_x >= 0 && in_x <= 1;
    double low = 0;
    double high = 1;
    double at = is_monotonic ? x : 0.5;
    for (int i = 0; i < 50; ++i) {
        const double miss = cubic(out_x, in_x, at) - x;
        (miss < 0 ? low : high) = at;
        double next = (low + high) / 2;
        if (is_monotonic) {
            const double rest = 1 - at;
            const double slope = 3 * (rest * rest * out_x + 2 * rest * at * (in_x - out_x) + at * at * (1 - in_x));
            const double newton = at - miss / slope;
            if (newton == at || miss == 0) return at;
            if (newton > low && newton < high) next = newton;
        }
        at = next;
    }
    return at;
}

// How far the value has come when `x` of the time has passed.
double eased(double x, double out_x, double out_y, double in_x, double in_y) {
    if (out_x == out_y && in_x == in_y) return x;
    return cubic(out_y, in_y, place_at_time(x, out_x, in_x));
}

Values path_point(const Values& from, const Values& to, const Values& out, const Values& in, double u) {
    Values point{};
    const double v = 1 - u;
    for (std::size_t i = 0; i < point.size(); ++i) {
        point[i] = v * v * v * from[i] + 3 * v * v * u * (from[i] + out[i]) + 3 * v * u * u * (to[i] + in[i]) +
                   u * u * u * to[i];
    }
    return point;
}

double distance(const Values& a, const Values& b) {
    return std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]);
}

double length_of_handles(const Values& from, const Values& to, const Values& out, const Values& in) {
    Values leaving = from;
    Values arriving = to;
    for (std::size_t i = 0; i < from.size(); ++i) leaving[i] += out[i], arriving[i] += in[i];
    return distance(from, leaving) + distance(leaving, arriving) + distance(arriving, to);
}

bool is_zero(const Values& values) {
    return values == Values{};
}

}  // namespace

bool is_keyed(const Json& property) {
    const Json* value = member(property, "k");
    return value != nullptr && value->IsArray() && !value->Empty() && (*value)[0].IsObject() &&
           member((*value)[0], "t") != nullptr;
}

double ease_between(const Json& key, double share) {
    return eased(share, handle(key, "o", "x", 0)[0], handle(key, "o", "y", 0)[0], handle(key, "i", "x", 1)[0],
                 handle(key, "i", "y", 1)[0]);
}

Property::Property(const Json* json, const Values& missing) : fixed_(missing) {
    if (json == nullptr) return;
    const Json* text = member(*json, "x");
    has_expression_ = text != nullptr && text->IsString();
    if (is_truthy(*json, "s") && text != nullptr && text->IsObject()) {
        for (const char* name : {"x", "y", "z"}) separated_.emplace_back(member(*json, name), Values{});
        for (const Property& dimension : separated_) {
            has_expression_ = has_expression_ || dimension.has_expression();
            key_times_.insert(key_times_.end(), dimension.key_times_.begin(), dimension.key_times_.end());
        }
        std::sort(key_times_.begin(), key_times_.end());
    } else if (is_keyed(*json)) {
        read_keys(*member(*json, "k"));
    } else {
        fixed_ = numbers(member(*json, "k"), missing);
    }
    is_animated_ = find_animation();
}

void Property::read_keys(const Json& keys) {
    for (const Json& json : keys.GetArray()) {
        Key key;
        key.time = number_member(json, "t", 0);
        const Values before = keys_.empty() ? fixed_ : keys_.back().end;
        key.value = numbers(member(json, "s"), before);
        if (!keys_.empty() && member(json, "s") != nullptr) keys_.back().end = key.value;
        key.end = numbers(member(json, "e"), key.value);
        key.is_hold = is_truthy(json, "h");
        key.out_x = handle(json, "o", "x", 0);
        key.out_y = handle(json, "o", "y", 0);
        key.in_x = handle(json, "i", "x", 1);
        key.in_y = handle(json, "i", "y", 1);
        key.out_tangent = numbers(member(json, "to"), {});
        key.in_tangent = numbers(member(json, "ti"), {});
        key.has_path = member(json, "to") != nullptr;
        keys_.push_back(key);
        key_times_.push_back(key.time);
        last_time_ = std::max(last_time_, key.time);
    }
}

// Lengths of the path from its keyframe on, in steps of its parameter.
const Property::PathLengths& Property::path_lengths(const Key& key) const {
    const auto index = static_cast<std::size_t>(&key - keys_.data());
    if (measured_ && measured_->key == index) return *measured_;
    PathLengths& measured = measured_.emplace(PathLengths{index, {0}});
    measured.lengths.reserve(kPathSteps + 1);
    Values previous = key.value;
    for (int i = 1; i <= kPathSteps; ++i) {
        const Values point =
            path_point(key.value, key.end, key.out_tangent, key.in_tangent, static_cast<double>(i) / kPathSteps);
        measured.lengths.push_back(measured.lengths.back() + distance(previous, point));
        previous = point;
    }
    return measured;
}

// The point that lies the given share of the path's length behind its keyframe.
Values Property::along_path(const Key& key, double share) const {
    const std::vector<double>& lengths = path_lengths(key).lengths;
    const double wanted = share * lengths.back();
    const auto behind = std::lower_bound(lengths.begin() + 1, lengths.end() - 1, wanted);
    const double before = *std::prev(behind);
    const double span = *behind - before;
    const double rest = span > 0 ? (wanted - before) / span : 0;
    const auto step = static_cast<double>(std::distance(lengths.begin(), behind) - 1);
    return path_point(key.value, key.end, key.out_tangent, key.in_tangent, (step + rest) / kPathSteps);
}

Values Property::in_segment(const Key& key, double span, double frame) const {
    if (key.is_hold || span <= 0 || frame == key.time) return key.value;
    const double x = (frame - key.time) / span;
    if (key.has_path) {
        const double share = eased(x, key.out_x[0], key.out_y[0], key.in_x[0], key.in_y[0]);
        if (!is_zero(key.out_tangent) || !is_zero(key.in_tangent)) {
            return along_path(key, share);
        }
        Values point{};
        for (std::size_t i = 0; i < point.size(); ++i) point[i] = key.value[i] + share * (key.end[i] - key.value[i]);
        return point;
    }
    Values values = key.value;
    std::optional<std::size_t> known;  // a dimension whose share is the one below
    double share = 0;
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (key.end[i] == key.value[i]) continue;
        if (!known || !key.has_same_ease(*known, i)) {
            share = eased(x, key.out_x[i], key.out_y[i], key.in_x[i], key.in_y[i]);
            known = i;
        }
        values[i] += share * (key.end[i] - key.value[i]);
    }
    return values;
}

Values Property::at(double frame) const {
    if (!separated_.empty()) {
        Values values{};
        for (std::size_t i = 0; i < separated_.size(); ++i) values[i] = separated_[i].at(frame)[0];
        return values;
    }
    if (keys_.empty()) return fixed_;
    if (frame < keys_.front().time) return keys_.front().value;
    const auto next = std::upper_bound(keys_.begin(), keys_.end(), frame,
                                       [](double time, const Key& key) { return time < key.time; });
    const Key& key = *std::prev(next);
    return next == keys_.end() ? key.value : in_segment(key, next->time - key.time, frame);
}

bool Property::stands_still_between(double a, double b) const {
    if (!is_animated_) return true;
    if (keys_.empty()) return false;
    const double first = keys_.front().time;
    return (a < first && b < first) || (a >= last_time_ && b >= last_time_);
}

bool Property::find_animation() const {
    if (std::any_of(separated_.begin(), separated_.end(), [](const Property& p) { return p.is_animated(); }))
        return true;
    return std::any_of(keys_.begin(), keys_.end(), [this](const Key& key) {
        return key.value != keys_.front().value || key.end != key.value ||
               (key.has_path && !(is_zero(key.out_tangent) && is_zero(key.in_tangent)));
    });
}

double Property::longest_curve() const {
    double longest = 0;
    for (const Key& key : keys_) {
        if (is_zero(key.out_tangent) && is_zero(key.in_tangent)) continue;
        const double handles = distance(key.out_tangent, {}) + distance(key.in_tangent, {});
        longest = std::max(longest, distance(key.value, key.end) + handles);
    }
    return longest;
}

// Some players measure paths in the plane only, bent ones so coarsely that half a hundredth is lost, and straight ones
// so that an edge along a very long one is another shade.
bool Property::is_measured_alike(const Key& key, double pixel) {
    constexpr double kUnseenBend = 0.2;
    constexpr double kMostBent = 30;
    constexpr double kMostStraight = 250;
    if (key.value[2] != key.end[2] || key.out_tangent[2] != 0 || key.in_tangent[2] != 0) return false;
    const double length = length_of_handles(key.value, key.end, key.out_tangent, key.in_tangent);
    const bool is_straight = length - distance(key.value, key.end) <= kUnseenBend * pixel;
    return length <= (is_straight ? kMostStraight : kMostBent) * pixel;
}

bool Property::moves_alike_everywhere(double pixel) const {
    return std::all_of(keys_.begin(), keys_.end(), [pixel](const Key& key) {
        if (key.is_hold) return true;
        if (key.has_path && !(is_zero(key.out_tangent) && is_zero(key.in_tangent)))
            return is_measured_alike(key, pixel);
        return key.has_path || key.value[1] == key.end[1] || key.has_same_ease(0, 1);
    });
}

std::vector<Values> Property::key_values() const {
    std::vector<Values> values;
    for (const double time : key_times_) values.push_back(at(time));
    if (values.empty()) values.push_back(at(0));
    return values;
}

std::optional<ValueRange> Property::range() const {
    if (!separated_.empty()) return separated_[0].range();
    if (keys_.empty()) return ValueRange{fixed_[0], fixed_[0]};
    ValueRange range{keys_[0].value[0], keys_[0].value[0]};
    const auto is_between = [](double y) { return y >= 0 && y <= 1; };
    for (const Key& key : keys_) {
        const bool stays_between = is_between(key.out_y[0]) && is_between(key.in_y[0]) && !key.has_path;
        if (!key.is_hold && key.value[0] != key.end[0] && !stays_between) return std::nullopt;
        range = {std::min({range.least, key.value[0], key.end[0]}), std::max({range.most, key.value[0], key.end[0]})};
    }
    return range;
}

}  // namespace lottie::looks
