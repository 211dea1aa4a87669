// Layers whose picture is one area within a hard edge, as mattes mostly are.
#include "one_outline.h"

#include <algorithm>

#include "effects.h"
#include "transform.h"

namespace lottie::looks {
namespace {

bool is_always(const Property& property, double value) {
    return !property.is_animated() && !property.has_expression() && property.at(0)[0] == value;
}

bool is_full(const Json& item) {
    return is_always(Property(member(item, "o"), {100, 0, 0}), 100);
}

// Whether all vertices and handles of a path lie within a solid, at all times.
bool is_within(const Json& path, double width, double height) {
    if (path.IsArray()) {
        return std::all_of(path.Begin(), path.End(), [&](const Json& one) { return is_within(one, width, height); });
    }
    if (!path.IsObject()) return true;
    const auto vertices = array_member(path, "v");
    if (vertices.Empty()) {
        return std::all_of(path.MemberBegin(), path.MemberEnd(),
                           [&](const auto& one) { return is_within(one.value, width, height); });
    }
    const auto coordinate = [](const Json& point, rapidjson::SizeType axis) {
        return point.IsArray() && axis < point.Size() && point[axis].IsNumber() ? point[axis].GetDouble() : 0;
    };
    for (rapidjson::SizeType i = 0; i < vertices.Size(); ++i) {
        const double x = coordinate(vertices[i], 0);
        const double y = coordinate(vertices[i], 1);
        for (const char* handles : {"i", "o"}) {
            const auto list = array_member(path, handles);
            const double hx = i < list.Size() ? x + coordinate(list[i], 0) : x;
            const double hy = i < list.Size() ? y + coordinate(list[i], 1) : y;
            if (std::min(x, hx) < 0 || std::min(y, hy) < 0 || std::max(x, hx) > width || std::max(y, hy) > height)
                return false;
        }
    }
    return true;
}

// A closed path that stands still; the handle before each vertex is opposite to the one behind it.
OneOutline outline_through(const std::vector<Point>& vertices, const std::vector<Point>& handles) {
    auto made = std::make_shared<rapidjson::Document>(rapidjson::kObjectType);
    auto& pool = made->GetAllocator();
    const auto points = [&pool](const std::vector<Point>& all, double factor) {
        Json list(rapidjson::kArrayType);
        for (const Point& point : all) {
            Json one(rapidjson::kArrayType);
            one.PushBack(point.x * factor, pool).PushBack(point.y * factor, pool);
            list.PushBack(one, pool);
        }
        return list;
    };
    Json path(rapidjson::kObjectType);
    path.AddMember("i", points(handles, -1), pool).AddMember("o", points(handles, 1), pool);
    path.AddMember("v", points(vertices, 1), pool).AddMember("c", true, pool);
    made->AddMember("a", 0, pool).AddMember("k", path, pool);
    return {made.get(), {}, true, made};
}

OneOutline rectangle(double left, double top, double width, double height) {
    return outline_through({{left + width, top}, {left + width, top + height}, {left, top + height}, {left, top}},
                           {{}, {}, {}, {}});
}

OneOutline ellipse(double x, double y, double width, double height) {
    constexpr double kRound = 0.5519;  // of the radius: the handles of a quarter of a circle, as players draw it
    const double w = width / 2;
    const double h = height / 2;
    return outline_through({{x, y - h}, {x + w, y}, {x, y + h}, {x - w, y}},
                           {{w * kRound, 0}, {0, h * kRound}, {-w * kRound, 0}, {0, -h * kRound}});
}

std::optional<OneOutline> outline_of_solid(const SceneLayer& solid) {
    if (!solid.has_masks) return rectangle(0, 0, solid.width, solid.height);
    const auto masks = solid.array("masksProperties");
    if (masks.Size() != 1) return std::nullopt;
    const Json& mask = masks[0];
    const Json* path = member(mask, "pt");
    const Property feather(member(mask, "f"), {});
    const bool is_hard = is_full(mask) && is_always(Property(member(mask, "x"), {}), 0) && is_always(feather, 0) &&
                         feather.at(0)[1] == 0 && !is_truthy(mask, "inv") && text_member(mask, "mode") == "a";
    if (path == nullptr || !is_hard || member(*path, "x") != nullptr || !is_within(*path, solid.width, solid.height))
        return std::nullopt;
    return OneOutline{path, {}, true};
}

// A rectangle without round corners or an ellipse, that stands still.
std::optional<OneOutline> outline_of_figure(const Json& shape) {
    const Property position(member(shape, "p"), {});
    const Property size(member(shape, "s"), {});
    const Property roundness(member(shape, "r"), {});
    for (const Property* one : {&position, &size, &roundness}) {
        if (one->is_animated() || one->has_expression()) return std::nullopt;
    }
    const Values at = position.at(0);
    const Values extent = size.at(0);
    if (text_member(shape, "ty") == "el") return ellipse(at[0], at[1], extent[0], extent[1]);
    if (roundness.at(0)[0] != 0) return std::nullopt;
    return rectangle(at[0] - extent[0] / 2, at[1] - extent[1] / 2, extent[0], extent[1]);
}

// One path with one opaque fill, in a group that stands still or in none.
std::optional<OneOutline> outline_of_shapes(Json::ConstArray shapes) {
    OneOutline outline{nullptr, {}, true};
    std::size_t fills = 0;
    for (const Json& shape : shapes) {
        const std::string type = text_member(shape, "ty");
        if (is_truthy(shape, "hd")) return std::nullopt;
        if (type == "gr" && shapes.Size() == 1) return outline_of_shapes(array_member(shape, "it"));
        if (type == "sh" && outline.path == nullptr) {
            outline.path = member(shape, "ks");
            outline.is_closed = member(shape, "closed") == nullptr || is_truthy(shape, "closed");
        } else if ((type == "rc" || type == "el") && outline.path == nullptr) {
            auto figure = outline_of_figure(shape);
            if (!figure) return std::nullopt;
            figure->place = outline.place;
            outline = std::move(*figure);
        } else if (type == "fl" && is_full(shape) && number_member(shape, "r", 1) != 2) {
            if (member(shape, "fillEnabled") != nullptr && !is_truthy(shape, "fillEnabled")) return std::nullopt;
            ++fills;
        } else if (type == "tr" && is_full(shape)) {
            const Transform transform(shape, false, false);
            if (transform.is_animated() || transform.has_expression() ||
                !is_always(Property(member(shape, "sk"), {}), 0)) {
                return std::nullopt;
            }
            outline.place = transform.at(0);
        } else {
            return std::nullopt;
        }
    }
    if (outline.path == nullptr || fills != 1 || member(*outline.path, "x") != nullptr) return std::nullopt;
    return outline;
}

}  // namespace

std::optional<OneOutline> one_outline(const SceneLayer& layer) {
    const bool is_plain = layer.can_draw() && !layer.is_hidden && !is_picture_changed(layer) && layer.blend_mode == 0 &&
                          is_always(layer.transform().opacity, 100);
    if (!is_plain) return std::nullopt;
    if (layer.type == LayerType::solid) return outline_of_solid(layer);
    if (layer.type != LayerType::shape || (layer.has_masks && !layer.array("masksProperties").Empty()))
        return std::nullopt;
    return outline_of_shapes(layer.array("shapes"));
}

}  // namespace lottie::looks
