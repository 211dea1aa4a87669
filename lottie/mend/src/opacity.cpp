// Applies to nests that were faded, where one of the two opacities stands still: a layer's own opacity times the nest's
// is what both came to, as long as no two layers lie over one another while the nest is between seen and unseen; the
// audit looks after that.
#include "document/json_text.h"
#include "key_times.h"
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

// The keyframed property with all values times `factor`, moved in time by `shift`.
std::string scaled(const Opacity& opacity, double factor, double shift) {
    const std::string moved = with_times(opacity.tree, *opacity.property, {.shift = shift});
    if (factor == 1) return moved;
    const document::Slice all{0, static_cast<std::uint32_t>(moved.size())};
    const JsonTree tree(moved, all);
    document::Patch patch;
    const JsonNode* keys = tree.member(&tree.root(), "k");
    for (const JsonNode* key = tree.first(*keys); key != nullptr; key = tree.next(*key)) {
        for (const char* member : {"s", "e"}) {
            const JsonNode* value = tree.member(key, member);
            if (value == nullptr) continue;
            for (const document::Slice number : tree.number_slices(*value)) {
                std::string spelling;
                document::append_number(spelling, document::read_number(number.of(moved)) * factor);
                patch.replace(number, std::move(spelling));
            }
        }
    }
    document::OutputText out;
    patch.write(moved, all, out);
    return out.text();
}

}  // namespace

void mend_opacity(Unnested&, Nest& nest) {
    const Opacity group = opacity_of(nest.layer.before);
    if (group.has_expression) return;
    for (CopiedLayer& copy : nest.copies) {
        if (copy.now == nullptr || copy.facts.is_matte) continue;
        const Opacity own = opacity_of(copy.before);
        if (own.has_expression || (!own.still && !group.still)) continue;
        if (!group.still) {
            copy.now->set_inside("ks", "o", scaled(group, *own.still / 100, 0));
        } else if (!own.still) {
            copy.now->set_inside("ks", "o", scaled(own, *group.still / 100, copy.shift()));
        } else {
            std::string value = "{\"a\":0,\"k\":";
            document::append_number(value, *own.still * *group.still / 100);
            copy.now->set_inside("ks", "o", value + "}");
        }
    }
}

}  // namespace lottie::mend
