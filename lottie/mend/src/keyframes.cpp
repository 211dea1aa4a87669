// The keyframes of a property as spans of time that can be cut, turned round and put elsewhere.
#include "keyframes.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "document/json_text.h"

namespace lottie::mend {
namespace {

using document::JsonKind;
using document::JsonNode;
using document::JsonTree;
using document::Slice;

constexpr int kPathSteps = 150;  // as the reference player measures the length of a path
constexpr double kSameFrame = 1e-9;

// Finds the numbers of a value, in the order of the text.
class NumberFinder {
  public:
    explicit NumberFinder(const std::string& json) : json_(json) {}

    std::optional<Slice> next() {
        while (at_ < json_.size()) {
            const char c = json_[at_];
            if (c == '"') {
                while (++at_ < json_.size() && json_[at_] != '"') at_ += json_[at_] == '\\' ? 1U : 0U;
                ++at_;
            } else if (c == '-' || (c >= '0' && c <= '9')) {
                const std::size_t begin = at_;
                at_ = std::min(json_.find_first_not_of("+-.0123456789eE", at_), json_.size());
                return Slice{static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(at_)};
            } else {
                ++at_;
            }
        }
        return std::nullopt;
    }
    std::optional<double> next_number() {
        const auto number = next();
        return number ? std::optional(document::read_number(number->of(json_))) : std::nullopt;
    }

  private:
    const std::string& json_;
    std::size_t at_ = 0;
};

double between(double a, double b, double share) {
    return a + (b - a) * share;
}

// A cubic curve's polar form: the handles of what lies between two of its parameters are blossoms of them.
double blossom(const std::array<double, 4>& p, double a, double b, double c) {
    const double p01 = between(p[0], p[1], a), p12 = between(p[1], p[2], a), p23 = between(p[2], p[3], a);
    return between(between(p01, p12, b), between(p12, p23, b), c);
}

std::array<double, 4> part_of_cubic(const std::array<double, 4>& p, double from, double to) {
    return {blossom(p, from, from, from), blossom(p, from, from, to), blossom(p, from, to, to), blossom(p, to, to, to)};
}

double cubic(const std::array<double, 4>& p, double u) {
    return blossom(p, u, u, u);
}

// Where the ease has come that far in time.
double parameter_at(const EaseHandles& ease, double x) {
    double low = 0;
    double high = 1;
    for (int i = 0; i < 50; ++i) {
        const double middle = (low + high) / 2;
        (cubic({0, ease.x1, ease.x2, 1}, middle) < x ? low : high) = middle;
    }
    return (low + high) / 2;
}

// Nothing if the value turns back within so that its ends are the same.
std::optional<EaseHandles> part_of_ease(const EaseHandles& ease, double from, double to) {
    if (ease.is_linear()) return EaseHandles{};
    const double a = from <= 0 ? 0 : parameter_at(ease, from);
    const double b = to >= 1 ? 1 : parameter_at(ease, to);
    const auto x = part_of_cubic({0, ease.x1, ease.x2, 1}, a, b);
    const auto y = part_of_cubic({0, ease.y1, ease.y2, 1}, a, b);
    const double width = x[3] - x[0];
    const double height = y[3] - y[0];
    if (width <= 0) return std::nullopt;
    if (std::abs(height) < 1e-9) {
        const bool is_level = std::abs(y[1] - y[0]) < 1e-9 && std::abs(y[2] - y[0]) < 1e-9;
        return is_level ? std::optional(EaseHandles{}) : std::nullopt;
    }
    return EaseHandles{(x[1] - x[0]) / width, (y[1] - y[0]) / height, (x[2] - x[0]) / width, (y[2] - y[0]) / height};
}

// The path between two points in as many dimensions as they have.
struct SpatialPath {
    std::vector<std::array<double, 4>> dimensions;

    std::vector<double> at(double u) const {
        std::vector<double> point;
        for (const auto& dimension : dimensions) point.push_back(cubic(dimension, u));
        return point;
    }
    // The parameter that lies a share of the path's length behind its start.
    double parameter_at_length(double share) const {
        std::array<double, kPathSteps + 1> lengths{};
        std::vector<double> previous = at(0);
        for (std::size_t i = 1; i <= kPathSteps; ++i) {
            std::vector<double> point = at(static_cast<double>(i) / kPathSteps);
            double squares = 0;
            for (std::size_t d = 0; d < point.size(); ++d) squares += std::pow(point[d] - previous[d], 2);
            lengths[i] = lengths[i - 1] + std::sqrt(squares);
            previous = std::move(point);
        }
        const double wanted = share * lengths.back();
        std::size_t step = 1;
        while (step < kPathSteps && lengths[step] < wanted) ++step;
        const double step_length = lengths[step] - lengths[step - 1];
        const double rest = step_length > 0 ? (wanted - lengths[step - 1]) / step_length : 0;
        return (static_cast<double>(step - 1) + rest) / kPathSteps;
    }
};

SpatialPath path_of(const KeySpan& span) {
    SpatialPath path;
    for (std::size_t i = 0; i < span.start.numbers().size(); ++i) {
        const double from = span.start.numbers()[i];
        const double to = span.end.numbers()[i];
        const double out = i < span.tangent_out.size() ? span.tangent_out[i] : 0;
        const double in = i < span.tangent_in.size() ? span.tangent_in[i] : 0;
        path.dimensions.push_back({from, from + out, to + in, to});
    }
    return path;
}

double share_of(const KeySpan& span, std::size_t dimension, double x) {
    if (span.eases.empty()) return x;
    return span.eases[std::min(dimension, span.eases.size() - 1)].at(x);
}

std::vector<double> numbers_of(const JsonTree& tree, const JsonNode* node) {
    return node == nullptr ? std::vector<double>() : tree.numbers(*node);
}

bool is_zero(const std::vector<double>& numbers) {
    return std::all_of(numbers.begin(), numbers.end(), [](double number) { return number == 0; });
}

// One coordinate of a handle; a missing dimension takes the first.
std::vector<double> handle(const JsonTree& tree, const JsonNode& key, const char* side, const char* coordinate) {
    return numbers_of(tree, tree.member(tree.member(&key, side), coordinate));
}

void read_eases(const JsonTree& tree, const JsonNode& key, KeySpan& span) {
    const auto x1 = handle(tree, key, "o", "x"), y1 = handle(tree, key, "o", "y");
    const auto x2 = handle(tree, key, "i", "x"), y2 = handle(tree, key, "i", "y");
    if (x1.empty() || y1.empty() || x2.empty() || y2.empty()) return;
    const std::size_t count = std::max({x1.size(), y1.size(), x2.size(), y2.size()});
    const auto pick = [](const std::vector<double>& numbers, std::size_t i) {
        return i < numbers.size() ? numbers[i] : numbers[0];
    };
    for (std::size_t i = 0; i < count; ++i) span.eases.push_back({pick(x1, i), pick(y1, i), pick(x2, i), pick(y2, i)});
    const JsonNode* spelled = tree.member(tree.member(&key, "o"), "x");
    span.has_one_ease = spelled->kind != JsonKind::array;
}

bool is_truthy(const JsonTree& tree, const JsonNode* node) {
    return node != nullptr &&
           (node->kind == JsonKind::yes || (node->kind == JsonKind::number && tree.number(*node) != 0));
}

void append_handles(std::string& out, const KeySpan& span) {
    const auto coordinates = [&](auto pick) {
        if (span.has_one_ease) {
            std::string text;
            document::append_number(text, span.eases.empty() ? pick(EaseHandles{}) : pick(span.eases[0]));
            return text;
        }
        std::vector<double> numbers;
        for (const EaseHandles& ease : span.eases) numbers.push_back(pick(ease));
        return document::number_array(numbers);
    };
    out += "\"i\":{\"x\":" + coordinates([](const EaseHandles& ease) { return ease.x2; }) +
           ",\"y\":" + coordinates([](const EaseHandles& ease) { return ease.y2; }) +
           "},\"o\":{\"x\":" + coordinates([](const EaseHandles& ease) { return ease.x1; }) +
           ",\"y\":" + coordinates([](const EaseHandles& ease) { return ease.y1; }) + "},";
}

void append_key(std::string& out, double frame, const std::string& before, const KeyValue& value,
                const std::string& behind) {
    out += out.size() > 1 ? ",{" : "{";
    out += before + "\"t\":";
    document::append_number(out, frame);
    out += ",\"s\":" + value.text() + behind + "}";
}

bool stands_still(const KeySpan& span) {
    return span.is_hold || (span.start == span.end && span.tangent_out.empty() && span.tangent_in.empty());
}

}  // namespace

const std::vector<double>& KeyValue::numbers() const {
    if (!numbers_) {
        numbers_.emplace();
        NumberFinder finder(text_);
        while (const auto number = finder.next_number()) numbers_->push_back(*number);
    }
    return *numbers_;
}

bool operator==(const KeyValue& a, const KeyValue& b) {
    if (a.text_ == b.text_) return true;
    NumberFinder in_a(a.text_);
    NumberFinder in_b(b.text_);
    while (true) {
        const auto one = in_a.next_number();
        const auto other = in_b.next_number();
        if (one != other) return false;
        if (!one) return true;
    }
}

KeyValue KeyValue::with(std::vector<double> other) const {
    std::string text;
    std::size_t i = 0;
    std::size_t behind = 0;  // the number before
    NumberFinder finder(text_);
    while (const auto number = finder.next()) {
        text.append(text_, behind, number->begin - behind);
        document::append_number(text, other.at(i++));
        behind = number->end;
    }
    text.append(text_, behind);
    KeyValue value(std::move(text));
    value.numbers_ = std::move(other);
    return value;
}

double EaseHandles::at(double x) const {
    if (is_linear() || x <= 0 || x >= 1) return std::clamp(x, 0.0, 1.0);
    return cubic({0, y1, y2, 1}, parameter_at(*this, x));
}

KeyValue KeySpan::at(double frame) const {
    if (is_hold || length() <= 0 || frame <= from || !is_mixable()) return start;
    if (frame >= to) return end;
    const double x = (frame - from) / length();
    if (!tangent_out.empty() || !tangent_in.empty()) {
        const SpatialPath path = path_of(*this);
        return start.with(path.at(path.parameter_at_length(share_of(*this, 0, x))));
    }
    std::vector<double> numbers;
    double share = 0;
    for (std::size_t i = 0; i < start.numbers().size(); ++i) {
        if (i == 0 || i < eases.size()) share = share_of(*this, i, x);  // the last ease is that of all others
        numbers.push_back(between(start.numbers()[i], end.numbers()[i], share));
    }
    return start.with(std::move(numbers));
}

std::optional<KeySpan> KeySpan::part(double first, double last) const {
    if (first <= from + kSameFrame && last >= to - kSameFrame) return *this;
    KeySpan part = *this;
    part.from = std::max(first, from);
    part.to = std::min(last, to);
    if (is_hold) return part;
    if (!is_mixable()) return std::nullopt;
    const bool is_one =
        std::all_of(eases.begin(), eases.end(), [this](const EaseHandles& ease) { return ease == eases[0]; });
    if (!is_one) return std::nullopt;
    const double a = (part.from - from) / length();
    const double b = (part.to - from) / length();
    part.start = at(part.from);
    part.end = at(part.to);
    if (!eases.empty()) {
        const auto ease = part_of_ease(eases[0], a, b);
        if (!ease) return std::nullopt;
        std::fill(part.eases.begin(), part.eases.end(), *ease);
    }
    if (tangent_out.empty() && tangent_in.empty()) return part;
    const double begin = share_of(*this, 0, a);
    const double finish = share_of(*this, 0, b);
    if (begin < 0 || finish > 1 || begin >= finish) return std::nullopt;  // beyond the path's ends, or back along it
    const SpatialPath path = path_of(*this);
    const double u = path.parameter_at_length(begin);
    const double v = path.parameter_at_length(finish);
    for (std::size_t i = 0; i < path.dimensions.size(); ++i) {
        const auto piece = part_of_cubic(path.dimensions[i], u, v);
        if (i < part.tangent_out.size()) part.tangent_out[i] = piece[1] - piece[0];
        if (i < part.tangent_in.size()) part.tangent_in[i] = piece[2] - piece[3];
    }
    return part;
}

KeySpan KeySpan::reversed() const {
    KeySpan back = *this;
    if (is_hold) return back;
    std::swap(back.start, back.end);
    std::swap(back.tangent_out, back.tangent_in);
    for (EaseHandles& ease : back.eases) ease = {1 - ease.x2, 1 - ease.y2, 1 - ease.x1, 1 - ease.y1};
    return back;
}

bool has_keyframes(const JsonTree& tree, const JsonNode& property) {
    const JsonNode* keys = tree.member(&property, "k");
    if (keys == nullptr || keys->kind != JsonKind::array || keys->is_numeric) return false;
    const JsonNode* first = tree.first(*keys);
    return first != nullptr && first->kind == JsonKind::object && tree.member(first, "t") != nullptr;
}

std::optional<Keyframes> Keyframes::of(const JsonTree& tree, const JsonNode& property) {
    if (!has_keyframes(tree, property)) return std::nullopt;
    const auto keys = tree.children(*tree.member(&property, "k"));
    std::vector<KeySpan> spans;
    std::optional<std::string> end_before;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const JsonNode* time = tree.member(keys[i], "t");
        const JsonNode* start = tree.member(keys[i], "s");
        if (time == nullptr || time->kind != JsonKind::number || (start == nullptr && !end_before)) return std::nullopt;
        const KeyValue value(start == nullptr ? *end_before : std::string(tree.text(*start)));
        if (!spans.empty()) {
            KeySpan& last = spans.back();
            last.to = tree.number(*time);
            if (last.to < last.from) return std::nullopt;
            if (last.end.text().empty()) last.end = value;
        }
        if (i + 1 == keys.size()) {
            if (spans.empty())
                spans.push_back({tree.number(*time), tree.number(*time), value, value, true, {}, true, {}, {}});
            break;
        }
        KeySpan span;
        span.from = tree.number(*time);
        span.start = value;
        span.is_hold =
            is_truthy(tree, tree.member(keys[i], "h")) || (start != nullptr && start->kind == JsonKind::object);
        end_before.reset();
        if (const JsonNode* end = tree.member(keys[i], "e")) {
            end_before = std::string(tree.text(*end));
            span.end = KeyValue(*end_before);
        }
        read_eases(tree, *keys[i], span);
        span.tangent_out = numbers_of(tree, tree.member(keys[i], "to"));
        span.tangent_in = numbers_of(tree, tree.member(keys[i], "ti"));
        if (is_zero(span.tangent_out) && is_zero(span.tangent_in)) {
            span.tangent_out.clear();
            span.tangent_in.clear();
        }
        spans.push_back(std::move(span));
    }
    return Keyframes(std::move(spans));
}

KeyValue Keyframes::at(double frame) const {
    const auto next = std::upper_bound(spans_.begin(), spans_.end(), frame,
                                       [](double at, const KeySpan& span) { return at < span.from; });
    if (next == spans_.begin()) return spans_.front().start;
    const KeySpan& span = *std::prev(next);
    return frame >= span.to && next == spans_.end() ? span.end : span.at(frame);
}

std::string Keyframes::text() const {
    std::string out = "[";
    const KeyValue* held = nullptr;  // by the keyframe before
    for (std::size_t i = 0; i < spans_.size(); ++i) {
        const KeySpan& span = spans_[i];
        const bool is_last = i + 1 == spans_.size();
        if (stands_still(span)) {
            if (held == nullptr || !(*held == span.start)) append_key(out, span.from, "", span.start, ",\"h\":1");
            held = &span.start;
        } else {
            std::string handles;
            append_handles(handles, span);
            std::string behind = ",\"e\":" + span.end.text();
            if (!span.tangent_out.empty() || !span.tangent_in.empty()) {
                behind += ",\"to\":" + document::number_array(span.tangent_out) +
                          ",\"ti\":" + document::number_array(span.tangent_in);
            }
            append_key(out, span.from, handles, span.start, behind);
            held = nullptr;
            // What comes next begins elsewhere: players take its value for the end of this.
            if (!is_last && !(spans_[i + 1].start == span.end)) append_key(out, span.to, "", span.end, ",\"h\":1");
        }
        if (is_last) append_key(out, span.to, "", held == nullptr ? span.end : span.start, "");
    }
    return out + "]";
}

}  // namespace lottie::mend
