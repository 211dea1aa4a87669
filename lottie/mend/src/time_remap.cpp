// Applies to nests whose clock is remapped or stretched: every property of a copy takes, at each frame outside, the
// value that it had at the frame inside which the nest showed then. While the clock runs evenly keyframes only move;
// where it turns a corner they are cut in two. A nest inside gets the clocks of both. Where an expression plays the
// clock again and again one does so with each property; other expressions cannot be told.
#include "document/json_text.h"
#include "keyframes.h"
#include "remedies.h"
#include "retimed.h"

namespace lottie::mend {
namespace {

using document::JsonNode;
using document::JsonTree;

// The time remapping, in seconds, of a nest that had none, for a clock of the composition that it was in.
std::string remap_of(const CopiedLayer& copy, const NestClock& clock, double frame_rate) {
    const auto seconds = [&](double frame) {
        std::string text = "[";
        document::append_number(text, (frame - copy.facts.start) / copy.facts.stretch / frame_rate);
        return KeyValue(text + "]");
    };
    std::vector<KeySpan> spans;
    for (const EvenRun& run : clock.runs()) {
        KeySpan span;
        span.from = run.from;
        span.to = run.to;
        span.start = seconds(run.inner_from);
        span.end = seconds(run.inner_to);
        span.is_hold = run.inner_from == run.inner_to;
        spans.push_back(std::move(span));
    }
    return "{\"a\":1,\"k\":" + Keyframes(std::move(spans)).text() + expression_member(clock) + "}";
}

// The run moved the layer's keyframes by its shift.
void mend_copy(const Nest& nest, CopiedLayer& copy) {
    const JsonTree& tree = copy.now->members();
    for (const JsonNode* member : tree.children(tree.root())) {
        const std::string key = document::decode_string(member->key.of(tree.whole_text()));
        const std::string value(copy.now->member(key));
        if (!value.starts_with('{') && !value.starts_with('[')) continue;
        const JsonTree inside(value, {0, static_cast<std::uint32_t>(value.size())});
        nest.spend_for_retiming(value.size());
        copy.now->set(key, retimed(inside, inside.root(), nest.clock->counted_from(copy.shift())));
    }
}

}  // namespace

void mend_time_remap(Unnested& unnested, Nest& nest) {
    if (!nest.clock) return;
    for (CopiedLayer& copy : nest.copies) {
        if (copy.now == nullptr) continue;
        mend_copy(nest, copy);
        const bool is_nest = copy.facts.type == 0;
        if (is_nest && !copy.facts.remaps_time) copy.now->set("tm", remap_of(copy, *nest.clock, unnested.frame_rate()));
    }
}

}  // namespace lottie::mend
