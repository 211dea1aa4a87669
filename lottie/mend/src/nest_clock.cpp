// Which frame inside a nest shows at which frame outside.
#include "nest_clock.h"

#include <algorithm>
#include <cmath>

#include "document/json_text.h"
#include "looks/expressions.h"

namespace lottie::mend {
namespace {

constexpr double kSameFrame = 1e-6;
constexpr double kMostRuns = 100'000;

// Joined with the run before where it goes on as that does.
void add(std::vector<EvenRun>& runs, EvenRun run) {
    if (run.to - run.from < kSameFrame) return;
    if (!runs.empty()) {
        EvenRun& last = runs.back();
        if (std::abs(last.inner(run.from) - run.inner_from) < kSameFrame &&
            std::abs(last.inner(run.to) - run.inner_to) < kSameFrame) {
            last.to = run.to;
            last.inner_to = run.inner_to;
            return;
        }
    }
    runs.push_back(run);
}

bool is_even(const KeySpan& span) {
    return span.is_hold || span.eases.empty() || span.eases[0].is_linear();
}

// What of a span of the time remapping lies between two frames.
void add_span(std::vector<EvenRun>& runs, const KeySpan& span, double in, double out, double frame_rate) {
    const double from = std::max(span.from, in);
    const double to = std::min(span.to, out);
    const auto inner = [&](double frame) { return span.at(frame).numbers().at(0) * frame_rate; };
    if (to <= from) return;
    if (span.is_hold) return add(runs, {from, to, inner(from), inner(from)});
    if (is_even(span)) return add(runs, {from, to, inner(from), inner(to)});
    for (double at = from; at < to;) {
        const double next = std::min(std::floor(at + kSameFrame) + 1, to);
        add(runs, {at, next, inner(at), inner(next)});
        at = next;
    }
}

}  // namespace

double rounded_frame(double frame) {
    constexpr double kSteps = 1e4;
    return std::round(frame * kSteps) / kSteps;
}

std::optional<NestClock> NestClock::of(const document::ScannedLayer& nest, const LayerText& text, double frame_rate) {
    const double in = nest.in.value_or(0);
    const double out = nest.out.value_or(0);
    if (!(out > in) || out - in > kMostRuns || nest.stretch == 0) return std::nullopt;
    NestClock clock;
    std::vector<EvenRun>& runs = clock.runs_;
    const document::JsonTree& tree = text.tree();
    const document::JsonNode* remap = tree.member(&tree.root(), "tm");
    if (remap == nullptr) {
        runs.push_back({in, out, (in - nest.start) / nest.stretch, (out - nest.start) / nest.stretch});
        return clock;
    }
    const document::JsonNode* expression = tree.member(remap, "x");
    if (expression != nullptr && expression->kind != document::JsonKind::string) return std::nullopt;
    if (expression != nullptr && !looks::is_cycle(document::decode_string(tree.text(*expression)))) return std::nullopt;
    if (!has_keyframes(tree, *remap)) {
        const document::JsonNode* value = tree.member(remap, "k");
        const auto numbers = value == nullptr ? std::vector<double>() : tree.numbers(*value);
        if (numbers.empty() || expression != nullptr) return std::nullopt;
        runs.push_back({in, out, numbers[0] * frame_rate, numbers[0] * frame_rate});
        return clock;
    }
    clock.remap_ = Keyframes::of(tree, *remap);
    clock.frame_rate_ = frame_rate;
    if (!clock.remap_) return std::nullopt;
    const auto& spans = clock.remap_->spans();
    const bool are_numbers = std::all_of(spans.begin(), spans.end(), [](const KeySpan& span) {
        return span.start.numbers().size() == 1 && span.end.numbers().size() == 1 && span.tangent_out.empty();
    });
    if (!are_numbers) return std::nullopt;
    const auto inner = [&](double frame) { return clock.remap_->at(frame).numbers()[0] * frame_rate; };
    const double first = spans.front().from;
    const double last = spans.back().to;
    if (expression != nullptr) clock.expression_ = looks::cycle_between(first / frame_rate, last / frame_rate);
    add(runs, {in, std::min(out, first), inner(first), inner(first)});
    for (const KeySpan& span : spans) add_span(runs, span, in, out, frame_rate);
    add(runs, {std::max(in, last), out, inner(last), inner(last)});
    if (runs.empty()) return std::nullopt;  // it is on for less than a moment
    return clock;
}

double NestClock::inner(double outer) const {
    if (remap_) return remap_->at(outer).numbers()[0] * frame_rate_;
    return runs_.front().inner(outer);
}

NestClock NestClock::counted_from(double by) const {
    NestClock clock = *this;
    for (EvenRun& run : clock.runs_) run.inner_from += by, run.inner_to += by;
    return clock;
}

std::optional<NestClock::Range> NestClock::when(double in, double out) const {
    std::optional<Range> range;
    for (const EvenRun& run : runs_) {
        double from = run.from;
        double to = run.to;
        const double rate = run.rate();
        if (rate == 0) {
            if (run.inner_from < in || run.inner_from >= out) continue;
        } else {
            const double begins = run.outer(rate > 0 ? in : out);
            const double ends = run.outer(rate > 0 ? out : in);
            from = std::max(from, begins);
            to = std::min(to, ends);
            if (to - from < kSameFrame) continue;
        }
        if (!range) {
            range = Range{from, to};
        } else if (std::abs(range->out - from) < kSameFrame) {
            range->out = to;
        } else {
            return std::nullopt;
        }
    }
    return range.value_or(Range{runs_.front().from, runs_.front().from});
}

}  // namespace lottie::mend
