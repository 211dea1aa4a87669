// Keyframes at other times.
#include "retimed.h"

#include <algorithm>
#include <vector>

#include "document/json_text.h"
#include "document/patch.h"
#include "keyframes.h"

namespace lottie::mend {
namespace {

using document::JsonKind;
using document::JsonNode;
using document::JsonTree;

constexpr double kForever = 1e7;  // frames; a run that comes first or last goes on before and after it
constexpr double kSameFrame = 1e-6;

class Retiming {
  public:
    explicit Retiming(const Keyframes& keys) : keys_(keys) {}

    std::optional<Keyframes> on(const NestClock& clock) {
        const auto& runs = clock.runs();
        for (std::size_t i = 0; i < runs.size(); ++i) {
            EvenRun run = runs[i];
            const double rate = run.rate();
            if (i == 0) run.inner_from -= rate * kForever, run.from -= kForever;
            if (i + 1 == runs.size()) run.inner_to += rate * kForever, run.to += kForever;
            if (!add_run(run)) return std::nullopt;
        }
        trim_ends();
        return Keyframes(std::move(spans_));
    }

  private:
    bool add_run(const EvenRun& run) {
        if (run.inner_from == run.inner_to) {
            const KeyValue value = keys_.at(run.inner_from);
            spans_.push_back({run.from, run.to, value, value, true, {}, true, {}, {}});
            return true;
        }
        const std::size_t first = spans_.size();
        const double low = std::min(run.inner_from, run.inner_to);
        const double high = std::max(run.inner_from, run.inner_to);
        const auto& all = keys_.spans();
        add_still(low, std::min(high, all.front().from), all.front().start);
        for (const KeySpan& span : all) {
            if (span.to - span.from < kSameFrame || span.to <= low + kSameFrame || span.from >= high - kSameFrame)
                continue;
            const auto part = span.part(low, high);
            if (!part) return false;
            spans_.push_back(*part);
        }
        add_still(std::max(low, all.back().to), high, keys_.at(all.back().to));
        const auto begin = spans_.begin() + static_cast<std::ptrdiff_t>(first);
        if (run.inner_to < run.inner_from) {
            std::reverse(begin, spans_.end());
            std::transform(begin, spans_.end(), begin, [](const KeySpan& span) { return span.reversed(); });
        }
        for (auto span = begin; span != spans_.end(); ++span) {
            const double a = run.outer(span->from);
            const double b = run.outer(span->to);
            span->from = rounded_frame(std::min(a, b));
            span->to = rounded_frame(std::max(a, b));
        }
        return true;
    }

    void add_still(double from, double to, const KeyValue& value) {
        if (to - from > kSameFrame) spans_.push_back({from, to, value, value, true, {}, true, {}, {}});
    }

    // Before the first keyframe and after the last the value stands still anyway.
    void trim_ends() {
        const auto is_still = [](const KeySpan& span) { return span.is_hold; };
        if (spans_.size() > 1 && is_still(spans_[0]) && spans_[0].start == spans_[1].start)
            spans_.erase(spans_.begin());
        if (spans_.size() > 1 && is_still(spans_.back())) {
            const KeySpan& before = spans_[spans_.size() - 2];
            if (!before.is_hold && before.end == spans_.back().start) spans_.pop_back();
        }
        KeySpan& first = spans_.front();
        KeySpan& last = spans_.back();
        if (is_still(first)) first.from = std::max(first.from, std::min(first.to, 1.0) - 1);
        if (is_still(last)) last.to = std::min(last.to, std::max(last.from, 0.0) + 1);
    }

    const Keyframes& keys_;
    std::vector<KeySpan> spans_;
};

std::optional<std::string> retimed_keys(const JsonTree& tree, const JsonNode& property, const NestClock& clock) {
    const JsonNode* expression = tree.member(&property, "x");
    if (expression != nullptr && expression->kind == JsonKind::string) return std::nullopt;
    const auto keys = Keyframes::of(tree, property);
    if (!keys) return std::nullopt;
    const auto moved = Retiming(*keys).on(clock);
    return moved ? std::optional(moved->text()) : std::nullopt;
}

// A single keyframe holds a value that never changes, or a text.
bool is_cycled(const JsonTree& tree, const JsonNode& property, const NestClock& clock) {
    return !clock.expression().empty() && tree.children(*tree.member(&property, "k")).size() > 1;
}

}  // namespace

std::string expression_member(const NestClock& clock) {
    if (clock.expression().empty()) return "";
    return ",\"x\":" + document::encode_string(clock.expression());
}

std::string shifted(const JsonTree& tree, const JsonNode& value, double shift) {
    document::Patch patch;
    std::vector<const JsonNode*> open;
    if (shift != 0) open.push_back(&value);
    while (!open.empty()) {
        const JsonNode& node = *open.back();
        open.pop_back();
        for (const JsonNode* child = tree.first(node); child != nullptr; child = tree.next(*child)) {
            if (child->kind != JsonKind::object && (child->kind != JsonKind::array || child->is_numeric)) continue;
            open.push_back(child);
            if (child->kind != JsonKind::array || !tree.has_key(*child, "k")) continue;
            for (const JsonNode* key = tree.first(*child); key != nullptr; key = tree.next(*key)) {
                const JsonNode* time = tree.member(key, "t");
                if (time == nullptr || time->kind != JsonKind::number) continue;
                std::string spelling;
                document::append_number(spelling, tree.number(*time) + shift);
                patch.replace(time->text, std::move(spelling));
            }
        }
    }
    document::OutputText out;
    patch.write(tree.whole_text(), value.text, out);
    return out.text();
}

std::string retimed(const JsonTree& tree, const JsonNode& value, const NestClock& clock) {
    document::Patch patch;
    std::vector<const JsonNode*> open = {&value};
    while (!open.empty()) {
        const JsonNode& node = *open.back();
        open.pop_back();
        if (node.kind == JsonKind::object && has_keyframes(tree, node)) {
            const auto keys = retimed_keys(tree, node, clock);
            if (keys) patch.replace(tree.member(&node, "k")->text, *keys);
            if (keys && is_cycled(tree, node, clock)) patch.insert(node.text.end - 1, expression_member(clock));
            continue;
        }
        for (const JsonNode* child = tree.first(node); child != nullptr; child = tree.next(*child))
            open.push_back(child);
    }
    document::OutputText out;
    patch.write(tree.whole_text(), value.text, out);
    return out.text();
}

}  // namespace lottie::mend
