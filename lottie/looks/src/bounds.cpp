// How far a layer's picture reaches, as a convex polygon that surely holds it.
#include "bounds.h"

#include <algorithm>
#include <cmath>

#include "base/unicode.h"
#include "shape_outlines.h"

namespace lottie::looks {
namespace {

Hull around(const std::vector<Outline>& outlines) {
    Hull hull;
    for (const Outline& outline : outlines) hull = united(hull, grown(hull_of(outline.points), outline.growth));
    return hull;
}

constexpr int kDeepest = 16;  // nests within nests; deeper ones count as full

// Wide letters, every one of them as wide as high: no text is larger.
Hull text_bounds(const Json& layer, double frame) {
    const Json* text = member(layer, "t");
    const Json* source = text == nullptr ? nullptr : member(*text, "d");
    if (source == nullptr) return {};
    const Json* document = nullptr;
    for (const Json& key : array_member(*source, "k")) {
        if (document == nullptr || number_member(key, "t", 0) <= frame) document = member(key, "s");
    }
    if (document == nullptr) return {};
    if (const auto size = array_member(*document, "sz"); size.Size() == 2) {
        const auto corner = array_member(*document, "ps");
        const double left = corner.Size() == 2 ? corner[0].GetDouble() : 0;
        const double top = corner.Size() == 2 ? corner[1].GetDouble() : 0;
        return hull_of(Box{left, top, left + size[0].GetDouble(), top + size[1].GetDouble()});
    }
    const double height = number_member(*document, "s", 0);
    const double line = number_member(*document, "lh", height * 1.2);
    std::size_t longest = 0;
    std::size_t length = 0;
    double lines = 1;
    for (const char c : text_member(*document, "t")) {
        if (c == '\r' || c == '\n' || c == '\x03') {
            ++lines;
            length = 0;
        } else if (!host::base::continues_character(c)) {
            longest = std::max(longest, ++length);
        }
    }
    const double width =
        static_cast<double>(longest) * (height * 0.6 + number_member(*document, "tr", 0) * height / 1000);
    const int side = static_cast<int>(number_member(*document, "j", 0));
    const double left = side == 1 ? -width : side == 2 ? -width / 2 : 0;
    return hull_of(Box{left, -height, left + width, (lines - 1) * line + height * 0.3});
}

// What added masks leave; null when the masks do not bound the layer.
std::optional<Hull> mask_bounds(const Json& layer, double frame) {
    if (!is_truthy(layer, "hasMask")) return std::nullopt;
    std::optional<Hull> hull;
    for (const Json& mask : array_member(layer, "masksProperties")) {
        const std::string mode = text_member(mask, "mode");
        if (mode == "n" || (mode == "s" && hull) || (mode == "i" && hull)) continue;
        if (mode != "a" || is_truthy(mask, "inv")) return std::nullopt;
        const double expansion = Property(member(mask, "x"), {}).at(frame)[0];
        Outline outline = path_outline(member(mask, "pt"), frame);
        outline.growth = std::max(expansion, 0.0);
        hull = united(hull.value_or(Hull{}), around({outline}));
    }
    return hull;
}

}  // namespace

Placement& Extents::placement(const Stack& stack) {
    return placements_.try_emplace(&stack, stack).first->second;
}

Hull Extents::of_nest(const SceneLayer& nest, double frame, int depth) {
    const Hull whole = hull_of(Box{0, 0, nest.width, nest.height});
    const Stack* inside = scene_.find(nest.source);
    if (inside == nullptr || nest.source.empty() || depth == kDeepest) return whole;
    const double inner_frame = nest.inner_frame(frame, scene_.frame_rate);
    Hull hull;
    for (std::size_t i = 0; i < inside->layers.size(); ++i) {
        if (inside->layers[i].draws()) hull = united(hull, in_stack(*inside, i, inner_frame, depth + 1));
    }
    return cut(hull, whole);
}

Hull Extents::of(const SceneLayer& layer, double frame, int depth) {
    Hull hull;
    switch (layer.type) {
        case LayerType::nest:
            hull = of_nest(layer, frame, depth);
            break;
        case LayerType::solid:
        case LayerType::image:
            hull = hull_of(Box{0, 0, layer.width, layer.height});
            break;
        case LayerType::shape:
            hull = around(painted_outlines(array_member(*layer.json, "shapes"), frame));
            break;
        case LayerType::text:
            hull = text_bounds(*layer.json, frame);
            break;
        default:
            break;
    }
    const auto mask = mask_bounds(*layer.json, frame);
    return mask ? cut(hull, *mask) : hull;
}

Hull Extents::in_stack(const Stack& stack, std::size_t place, double frame, int depth) {
    const SceneLayer& layer = stack.layers[place];
    if (!is_on(layer, frame) || layer.transform.opacity.at(frame)[0] <= 0) return {};
    const Hull hull = mapped(of(layer, frame, depth), placement(stack).world(place, frame));
    if (!layer.matte || (layer.matte_mode != 1 && layer.matte_mode != 3)) return hull;
    // What lies outside of the matte is hidden.
    return cut(hull, mapped(of(stack.layers[*layer.matte], frame, depth), placement(stack).world(*layer.matte, frame)));
}

}  // namespace lottie::looks
