// Layers that the nest's frame hid from players without expressions.
#include "out_of_sight.h"

#include <algorithm>
#include <cmath>

#include "document/json_text.h"
#include "document/output_text.h"
#include "document/patch.h"

namespace lottie::mend {
namespace {

using document::JsonNode;
using document::JsonTree;

constexpr std::size_t kMostFrames = 10'000;  // at which it is looked for
constexpr std::size_t kStepsPerFrame = 100;

bool is_placed_by_expression(Unnested& unnested, const Nest& nest, const CopiedLayer& copy) {
    return copy.now != nullptr && !copy.now->number("parent") && !copy.now->is_set("ddd") &&
           unnested.evaluation().is_placed_by_expression(nest.source, copy.inner);
}

// The furthest that the layer reaches to the right in the composition; nothing if it can be seen in the nest.
std::optional<double> right_edge(Unnested& unnested, const Nest& nest, const CopiedLayer& copy) {
    looks::Evaluation& evaluation = unnested.evaluation();
    const std::string& around = unnested.composition();
    const auto frames = evaluation.frames(around, copy.now->number("ip", 0), copy.now->number("op", 0));
    if (frames.size() > kMostFrames) return std::nullopt;
    unnested.spend(kStepsPerFrame * frames.size());
    std::optional<double> right;
    for (const double frame : frames) {
        const auto corners =
            evaluation.reach(nest.source, copy.inner, evaluation.inner_frame(around, nest.place, frame));
        if (corners.empty()) continue;
        const auto all = [&corners](auto is_there) { return std::all_of(corners.begin(), corners.end(), is_there); };
        const double width = nest.facts().width;
        const double height = nest.facts().height;
        if (!all([](const auto& corner) { return corner.x <= 0; }) &&
            !all([](const auto& corner) { return corner.y <= 0; }) &&
            !all([width](const auto& corner) { return corner.x >= width; }) &&
            !all([height](const auto& corner) { return corner.y >= height; }))
            return std::nullopt;
        const looks::PlaneMap outwards = evaluation.place(around, nest.place, frame);
        for (const auto& corner : corners) right = std::max(right.value_or(-1e9), outwards.map(corner).x);
    }
    return right;
}

// Moves the position to the left, if it stands still.
void move_left(LayerText& layer, double distance) {
    const std::string transform(layer.member("ks"));
    const document::Slice all{0, static_cast<std::uint32_t>(transform.size())};
    const JsonTree tree(transform, all);
    const JsonNode* position = tree.member(&tree.root(), "p");
    const JsonNode* value = position == nullptr ? nullptr : tree.member(position, "k");
    if (value == nullptr || !value->is_numeric || tree.numbers(*value).empty()) return;
    std::string moved;
    document::append_number(moved, tree.numbers(*value)[0] - distance);
    document::Patch patch;
    patch.replace(tree.number_slices(*value)[0], moved);
    document::OutputText out;
    patch.write(transform, all, out);
    layer.set("ks", out.text());
}

}  // namespace

void put_out_of_sight(Unnested& unnested, Nest& nest) {
    if (!unnested.evaluation().has_reliable_placement(unnested.composition(), nest.place)) return;
    for (const CopiedLayer& copy : nest.copies) {
        if (!is_placed_by_expression(unnested, nest, copy)) continue;
        const auto right = right_edge(unnested, nest, copy);
        if (right && *right > 0) move_left(*copy.now, std::ceil(*right) + 1);
    }
}

}  // namespace lottie::mend
