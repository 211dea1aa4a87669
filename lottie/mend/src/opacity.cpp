// Applies to nests that were faded: a layer's own opacity times the nest's is what both came to, as long as no two
// layers lie over one another while the nest is between seen and unseen; the audit looks after that. Where both are
// keyframed the product is worked out for every frame, and keyframes stand where it turns a corner.
#include <algorithm>
#include <cmath>

#include "document/json_text.h"
#include "keyframes.h"
#include "remedies.h"

namespace lottie::mend {
namespace {

using document::JsonNode;
using document::JsonTree;

// An opacity as it stands in a layer's transform; a still one of 100 where the file leaves it out.
struct Opacity {
    const JsonTree& tree;
    const JsonNode* property;
    bool has_expression = false;
    std::optional<double> still = 100;  // none if it has keyframes
};

Opacity opacity_of(const LayerText& layer) {
    const JsonTree& tree = layer.tree();
    Opacity opacity{tree, tree.member(tree.member(&tree.root(), "ks"), "o")};
    if (opacity.property == nullptr) return opacity;
    opacity.has_expression = tree.member(opacity.property, "x") != nullptr;
    const JsonNode* value = tree.member(opacity.property, "k");
    if (value == nullptr) return opacity;
    if (const auto numbers = tree.numbers(*value); !numbers.empty()) {
        opacity.still = numbers[0];
    } else {
        opacity.still.reset();
    }
    return opacity;
}

// The keyframed property with all values times `factor`.
std::string scaled(const std::string& property, double factor) {
    if (factor == 1) return property;
    const document::Slice all{0, static_cast<std::uint32_t>(property.size())};
    const JsonTree tree(property, all);
    document::Patch patch;
    const JsonNode* keys = tree.member(&tree.root(), "k");
    for (const JsonNode* key = tree.first(*keys); key != nullptr; key = tree.next(*key)) {
        for (const char* member : {"s", "e"}) {
            const JsonNode* value = tree.member(key, member);
            if (value == nullptr) continue;
            for (const document::Slice number : tree.number_slices(*value)) {
                std::string spelling;
                document::append_number(spelling, document::read_number(number.of(property)) * factor);
                patch.replace(number, std::move(spelling));
            }
        }
    }
    document::OutputText out;
    patch.write(property, all, out);
    return out.text();
}

KeyValue percent(double value) {
    std::string text = "[";
    document::append_number(text, std::round(value * 1000) / 1000);
    return KeyValue(text + "]");
}

// The values, one for each frame, as few straight lines.
std::string drawn(const std::vector<double>& values, double first_frame, looks::Work& work) {
    constexpr double kSame = 0.02;  // percent
    constexpr std::size_t kFramesPerStep = 2;
    std::vector<KeySpan> spans;
    for (std::size_t from = 0; from + 1 < values.size();) {
        std::size_t to = from + 1;
        const auto is_straight = [&](std::size_t end) {
            work.spend((end - from) / kFramesPerStep);
            for (std::size_t i = from + 1; i < end; ++i) {
                const double share = static_cast<double>(i - from) / static_cast<double>(end - from);
                if (std::abs(values[from] + (values[end] - values[from]) * share - values[i]) > kSame) return false;
            }
            return true;
        };
        while (to + 1 < values.size() && is_straight(to + 1)) ++to;
        KeySpan span;
        span.from = first_frame + static_cast<double>(from);
        span.to = first_frame + static_cast<double>(to);
        span.start = percent(values[from]);
        span.end = percent(values[to]);
        spans.push_back(std::move(span));
        from = to;
    }
    return "{\"a\":1,\"k\":" + Keyframes(std::move(spans)).text() + "}";
}

// Nothing if one of them cannot be told, or if there are too many frames.
std::optional<std::string> product(const Nest& nest, const Opacity& group, const Opacity& own) {
    constexpr double kMostFrames = 3000;
    constexpr std::size_t kStepsPerFrame = 40;
    const auto group_keys = Keyframes::of(group.tree, *group.property);
    const auto own_keys = Keyframes::of(own.tree, *own.property);
    const double first = std::floor(nest.facts().in.value_or(0));
    const double last = std::ceil(nest.facts().out.value_or(0));
    if (!group_keys || !own_keys || !nest.clock || last - first > kMostFrames) return std::nullopt;
    std::vector<double> values;
    nest.work.spend(kStepsPerFrame * static_cast<std::size_t>(std::max(last - first, 0.0)));
    for (double frame = first; frame <= last; ++frame) {
        const KeyValue outer = group_keys->at(frame);
        const KeyValue inner = own_keys->at(nest.clock->inner(frame));
        if (outer.numbers().empty() || inner.numbers().empty()) return std::nullopt;
        values.push_back(outer.numbers()[0] * inner.numbers()[0] / 100);
    }
    return drawn(values, first, nest.work);
}

}  // namespace

void mend_opacity(Unnested&, Nest& nest) {
    const Opacity group = opacity_of(nest.layer.before);
    if (group.has_expression) return;
    for (CopiedLayer& copy : nest.copies) {
        if (copy.now == nullptr || copy.facts.is_matte) continue;
        const Opacity own = opacity_of(copy.before);
        if (own.has_expression) continue;
        if (!group.still && !own.still) {
            if (const auto value = product(nest, group, own)) copy.now->set_inside("ks", "o", *value);
        } else if (!group.still) {
            copy.now->set_inside("ks", "o", scaled(std::string(group.tree.text(*group.property)), *own.still / 100));
        } else if (!own.still) {
            copy.now->set_inside("ks", "o", scaled(nest.on_outer_clock(copy, *own.property), *group.still / 100));
        } else {
            std::string value = "{\"a\":0,\"k\":";
            document::append_number(value, *own.still * *group.still / 100);
            copy.now->set_inside("ks", "o", value + "}");
        }
    }
}

}  // namespace lottie::mend
