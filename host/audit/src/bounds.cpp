// How far a layer's picture reaches, as a rectangle that surely holds it.
#include "bounds.h"

#include <algorithm>
#include <cmath>

#include "shape_outlines.h"

namespace host::audit {
namespace {

void add_point(Box& box, Point p, bool& is_first) {
    if (is_first) box = {p.x, p.y, p.x, p.y};
    is_first = false;
    box = {std::min(box.left, p.x), std::min(box.top, p.y), std::max(box.right, p.x), std::max(box.bottom, p.y)};
}

std::optional<Box> around(const std::vector<Outline>& outlines) {
    std::optional<Box> box;
    for (const Outline& outline : outlines) {
        Box part;
        bool is_first = true;
        for (const Point& point : outline.points) add_point(part, point, is_first);
        if (is_first) continue;
        const Box grown_part = grown(part, outline.growth);
        box = box ? united(*box, grown_part) : grown_part;
    }
    return box;
}

constexpr int kDeepest = 16;  // nests within nests; deeper ones count as full

// Wide letters, every one of them as wide as high: no text is larger.
std::optional<Box> text_bounds(const Json& layer, double frame) {
    const Json* text = member(layer, "t");
    const Json* source = text == nullptr ? nullptr : member(*text, "d");
    if (source == nullptr) return std::nullopt;
    const Json* document = nullptr;
    for (const Json& key : array_member(*source, "k")) {
        if (document == nullptr || number_member(key, "t", 0) <= frame) document = member(key, "s");
    }
    if (document == nullptr) return std::nullopt;
    if (const auto size = array_member(*document, "sz"); size.Size() == 2) {
        const auto corner = array_member(*document, "ps");
        const double left = corner.Size() == 2 ? corner[0].GetDouble() : 0;
        const double top = corner.Size() == 2 ? corner[1].GetDouble() : 0;
        return Box{left, top, left + size[0].GetDouble(), top + size[1].GetDouble()};
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
        } else if ((static_cast<unsigned char>(c) & 0xC0) != 0x80) {
            longest = std::max(longest, ++length);
        }
    }
    const double width =
        static_cast<double>(longest) * (height * 0.6 + number_member(*document, "tr", 0) * height / 1000);
    const int side = static_cast<int>(number_member(*document, "j", 0));
    const double left = side == 1 ? -width : side == 2 ? -width / 2 : 0;
    return Box{left, -height, left + width, (lines - 1) * line + height * 0.3};
}

// What added masks leave; null when the masks do not bound the layer.
std::optional<Box> mask_bounds(const Json& layer, double frame) {
    if (!is_truthy(layer, "hasMask")) return std::nullopt;
    std::optional<Box> box;
    for (const Json& mask : array_member(layer, "masksProperties")) {
        const std::string mode = text_member(mask, "mode");
        if (mode == "n" || (mode == "s" && box) || (mode == "i" && box)) continue;
        if (mode != "a" || is_truthy(mask, "inv")) return std::nullopt;
        const double expansion = Property(member(mask, "x"), {}).at(frame)[0];
        Outline outline = path_outline(member(mask, "pt"), frame);
        outline.growth = std::max(expansion, 0.0);
        if (const auto part = around({outline})) box = box ? united(*box, *part) : *part;
    }
    return box;
}

}  // namespace

Box united(const Box& a, const Box& b) {
    if (a.is_empty()) return b;
    if (b.is_empty()) return a;
    return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right), std::max(a.bottom, b.bottom)};
}

Box cut(const Box& a, const Box& b) {
    return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right), std::min(a.bottom, b.bottom)};
}

Box grown(const Box& box, double by) {
    return {box.left - by, box.top - by, box.right + by, box.bottom + by};
}

Box mapped(const Box& box, const Matrix& matrix) {
    Box around;
    bool is_first = true;
    for (const double x : {box.left, box.right}) {
        for (const double y : {box.top, box.bottom}) {
            add_point(around, matrix.map({x, y}), is_first);
        }
    }
    return around;
}

Placement& Extents::placement(const Stack& stack) {
    return placements_.try_emplace(&stack, stack).first->second;
}

std::optional<Box> Extents::of_nest(const SceneLayer& nest, double frame, int depth) {
    const Box whole{0, 0, nest.width, nest.height};
    const Stack* inside = scene_.find(nest.source);
    if (inside == nullptr || nest.source.empty() || depth == kDeepest) return whole;
    const double inner_frame = nest.inner_frame(frame, scene_.frame_rate);
    std::optional<Box> box;
    for (std::size_t i = 0; i < inside->layers.size(); ++i) {
        if (!inside->layers[i].draws()) continue;
        if (const auto part = in_stack(*inside, i, inner_frame, depth + 1)) box = box ? united(*box, *part) : *part;
    }
    return box ? std::optional(cut(*box, whole)) : box;
}

std::optional<Box> Extents::of(const SceneLayer& layer, double frame, int depth) {
    std::optional<Box> box;
    switch (layer.type) {
        case LayerType::nest:
            box = of_nest(layer, frame, depth);
            break;
        case LayerType::solid:
        case LayerType::image:
            box = Box{0, 0, layer.width, layer.height};
            break;
        case LayerType::shape:
            box = around(painted_outlines(array_member(*layer.json, "shapes"), frame));
            break;
        case LayerType::text:
            box = text_bounds(*layer.json, frame);
            break;
        default:
            break;
    }
    if (!box) return box;
    if (const auto mask = mask_bounds(*layer.json, frame)) box = cut(*box, *mask);
    if (box->is_empty()) return std::nullopt;
    return box;
}

std::optional<Box> Extents::in_stack(const Stack& stack, std::size_t place, double frame, int depth) {
    const SceneLayer& layer = stack.layers[place];
    if (!is_on(layer, frame) || layer.transform.opacity.at(frame)[0] <= 0) return std::nullopt;
    auto box = of(layer, frame, depth);
    if (!box) return box;
    box = mapped(*box, placement(stack).world(place, frame));
    if (layer.matte && (layer.matte_mode == 1 || layer.matte_mode == 3)) {  // what lies outside of the matte is hidden
        const auto shape = of(stack.layers[*layer.matte], frame, depth);
        if (!shape) return shape;
        box = cut(*box, mapped(*shape, placement(stack).world(*layer.matte, frame)));
    }
    if (box->is_empty()) return std::nullopt;
    return box;
}

}  // namespace host::audit
