// Whether copies that were put on another clock show what the layers inside showed.
#include "retiming.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <vector>

#include "cycle.h"

namespace lottie::looks {
namespace {

constexpr double kSameValue = 0.002;  // of the larger of 1 and the value
constexpr std::size_t kStepsPerNumber = 4;

void append_numbers(const Json& value, std::vector<double>& numbers) {
    if (value.IsNumber()) numbers.push_back(value.GetDouble());
    if (value.IsArray()) {
        for (const Json& element : value.GetArray()) append_numbers(element, numbers);
    }
    if (value.IsObject()) {
        for (const auto& one : value.GetObject()) append_numbers(one.value, numbers);
    }
}

std::vector<double> numbers_of(const Json* value) {
    std::vector<double> numbers;
    if (value != nullptr) append_numbers(*value, numbers);
    return numbers;
}

// A property of any number of dimensions, paths and gradients included, as players evaluate it.
class Track {
  public:
    explicit Track(const Json& property) : few_(&property, {}) {
        if (!is_keyed(property)) {
            still_ = numbers_of(member(property, "k"));
            return;
        }
        for (const Json& json : member(property, "k")->GetArray()) {
            Key key;
            key.json = &json;
            key.time = number_member(json, "t", 0);
            const Json* start = member(json, "s");
            key.start = start == nullptr && !keys_.empty() ? keys_.back().end : numbers_of(start);
            if (!keys_.empty() && (start != nullptr || keys_.back().end.empty())) keys_.back().end = key.start;
            key.end = numbers_of(member(json, "e"));
            key.is_hold = is_truthy(json, "h") || (start != nullptr && start->IsObject());
            keys_.push_back(std::move(key));
        }
    }

    std::size_t size() const { return keys_.empty() ? still_.size() : keys_.front().start.size(); }

    std::vector<double> at(double frame) const {
        if (keys_.empty()) return still_;
        if (size() <= 3 && !keys_.front().is_hold) {
            const Values values = few_.at(frame);
            return {values.begin(), values.begin() + static_cast<std::ptrdiff_t>(size())};
        }
        const auto next = std::upper_bound(keys_.begin(), keys_.end(), frame,
                                           [](double time, const Key& key) { return time < key.time; });
        if (next == keys_.begin()) return keys_.front().start;
        const Key& key = *std::prev(next);
        if (next == keys_.end() || key.is_hold || key.end.size() != key.start.size()) return key.start;
        const double span = next->time - key.time;
        const double share = span > 0 ? ease_between(*key.json, (frame - key.time) / span) : 0;
        std::vector<double> values;
        for (std::size_t i = 0; i < key.start.size(); ++i)
            values.push_back(key.start[i] + (key.end[i] - key.start[i]) * share);
        return values;
    }

  private:
    struct Key {
        const Json* json = nullptr;
        double time = 0;
        std::vector<double> start, end;
        bool is_hold = false;
    };

    Property few_;
    std::vector<double> still_;
    std::vector<Key> keys_;
};

bool is_same(const std::vector<double>& a, const std::vector<double>& b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](double one, double other) {
               return std::abs(one - other) <= kSameValue * std::max({1.0, std::abs(one), std::abs(other)});
           });
}

bool has_new_expression(const SceneLayer& inner, const SceneLayer& copied) {
    return std::any_of(copied.parts().begin(), copied.parts().end(), [&inner](const auto& part) {
        const LayerPart* before = inner.part(part->key());
        return part->expressions().size() > (before == nullptr ? 0 : before->expressions().size());
    });
}

bool is_played(const Json& property) {
    const Json* expression = member(property, "x");
    return is_keyed(property) && expression != nullptr && expression->IsString();
}

// What players do not look at.
bool is_drawn(std::string_view key) {
    return key != "ix" && key != "nm" && key != "l";
}

// The transform but for the opacity is a matter of places; the nest's own opacity may be in the copy's.
bool shows_in_transform(Unnesting& u, const Json* before, const Json* after, SameOverTime& same) {
    const Property& of_nest = u.nest().transform().opacity;
    if (of_nest.is_animated() || of_nest.at(0)[0] != 100) return true;
    static const Json kNone;
    const Json* opacity = before == nullptr ? nullptr : member(*before, "o");
    const Json* now = after == nullptr ? nullptr : member(*after, "o");
    return (opacity == nullptr) == (now == nullptr) && (opacity == nullptr || same.holds(*opacity, *now));
}

}  // namespace

bool SameOverTime::holds_for_property(const Json& before, const Json& after) {
    // What an expression that the run or a remedy added does is looked at by itself.
    if (is_played(before)) return false;
    const Track was(before);
    const Track is(after);
    if (was.size() != is.size()) return false;
    comparison_.spend(kStepsPerNumber * (was.size() + 1) * moments_.size());
    return std::all_of(moments_.begin(), moments_.end(),
                       [&](const Moment& moment) { return is_same(was.at(moment.before), is.at(moment.after)); });
}

bool SameOverTime::holds(const Json& before, const Json& after) {
    if (before.GetType() != after.GetType()) return false;
    if (before.IsArray()) {
        return before.Size() == after.Size() &&
               std::equal(before.Begin(), before.End(), after.Begin(),
                          [this](const Json& a, const Json& b) { return holds(a, b); });
    }
    if (!before.IsObject()) return before == after;
    if (is_keyed(before) || is_keyed(after)) return holds_for_property(before, after);
    for (const auto& one : before.GetObject()) {
        const std::string_view key(one.name.GetString(), one.name.GetStringLength());
        const Json* other = member(after, one.name.GetString());
        if (is_drawn(key) && !one.value.IsNull() && (other == nullptr || !holds(one.value, *other))) return false;
    }
    return true;
}

bool is_list_with_new_masks(const LayerPart& before, const LayerPart& after) {
    return before.key() == "masksProperties" && elements(&before.json()).Size() != elements(&after.json()).Size();
}

bool shows_what_it_showed(Unnesting& u, const Copy& copy) {
    const SceneLayer& inner = u.inner(copy);
    const SceneLayer& copied = u.copied(copy);
    const auto cycle = cycle_of(u);
    if (cycle ? !is_cycled(u, copy, *cycle) : has_new_expression(inner, copied)) return false;
    std::vector<SameOverTime::Moment> moments;
    for (const double frame : u.nest_frames()) {
        // Free of rounding: two paths with other numbers of points are not mixed, so a hair before a keyframe is far
        // off.
        if (inner.is_on(u.inner_frame(frame))) moments.push_back({std::round(u.inner_frame(frame) * 1e6) / 1e6, frame});
    }
    SameOverTime same(moments, u.comparison());
    if (!shows_in_transform(u, inner.json("ks"), copied.json("ks"), same)) return false;
    for (const auto& part : inner.parts()) {
        if (part->key() == "ks" || part->key() == "tm" || !part->changes_over_time()) continue;
        const LayerPart* after = copied.part(part->key());
        if (after == nullptr) return false;
        if (!is_list_with_new_masks(*part, *after) && !same.holds(part->json(), after->json())) return false;
    }
    if (inner.type != LayerType::nest) return true;
    const double frame_rate = u.comparison().before().frame_rate;
    return std::all_of(moments.begin(), moments.end(), [&](const SameOverTime::Moment& moment) {
        return std::abs(inner.inner_frame(moment.before, frame_rate) - copied.inner_frame(moment.after, frame_rate)) <
               0.001;
    });
}

}  // namespace lottie::looks
