// Layers whose picture is one area within a hard edge, as mattes mostly are.
#include "one_outline.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "cut_work.h"
#include "effects.h"
#include "masks.h"
#include "paint.h"
#include "path.h"
#include "transform.h"

namespace lottie::looks {
namespace {

constexpr const char* kEaseHandles[] = {"i", "o"};
constexpr const char* kAxes[] = {"x", "y"};

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

// A rectangle or an ellipse as a path.
struct Figure {
    bool is_ellipse = false;
    Point middle;
    double width = 0;
    double height = 0;
};

// A closed path; the handle before each vertex is opposite to the one behind it.
Json path_of(const Figure& figure, JsonPool& pool) {
    constexpr double kRound = 0.5519;  // of the radius: the handles of a quarter of a circle, as players draw it
    const auto points = [&pool](std::array<Point, 4> all, double factor, Point middle) {
        Json list(rapidjson::kArrayType);
        for (const Point& point : all) {
            Json one(rapidjson::kArrayType);
            one.PushBack(point.x * factor + middle.x, pool).PushBack(point.y * factor + middle.y, pool);
            list.PushBack(one, pool);
        }
        return list;
    };
    const double w = figure.width / 2;
    const double h = figure.height / 2;
    const std::array<Point, 4> corners = {Point{w, -h}, Point{w, h}, Point{-w, h}, Point{-w, -h}};
    const std::array<Point, 4> ends = {Point{0, -h}, Point{w, 0}, Point{0, h}, Point{-w, 0}};
    const double round = figure.is_ellipse ? kRound : 0;
    const std::array<Point, 4> handles = {Point{w * round, 0}, Point{0, h * round}, Point{-w * round, 0},
                                          Point{0, -h * round}};
    Json path(rapidjson::kObjectType);
    path.AddMember("i", points(handles, -1, {}), pool).AddMember("o", points(handles, 1, {}), pool);
    path.AddMember("v", points(figure.is_ellipse ? ends : corners, 1, figure.middle), pool);
    path.AddMember("c", true, pool);
    return path;
}

// Whether all dimensions of a keyframe move alike, so that its ease is that of a path.
bool has_one_ease(const Json& key) {
    return std::all_of(std::begin(kEaseHandles), std::end(kEaseHandles), [&key](const char* name) {
        const Json* handle = member(key, name);
        if (handle == nullptr) return true;
        return std::all_of(std::begin(kAxes), std::end(kAxes), [&](const char* axis) {
            const auto parts = array_member(*handle, axis);
            return std::all_of(parts.Begin(), parts.End(), [&](const Json& part) { return part == parts[0]; });
        });
    });
}

// The figure at all the sizes of a keyframed property; nothing if a path cannot go from one to the next as it does.
std::optional<OneOutline> growing(const Figure& figure, const Json& sizes) {
    auto made = std::make_shared<JsonDocument>(rapidjson::kObjectType);
    auto& pool = made->GetAllocator();
    Json keys(rapidjson::kArrayType);
    for (const Json& key : array_member(sizes, "k")) {
        if (!has_one_ease(key)) return std::nullopt;
        Json now(rapidjson::kObjectType);
        for (const char* name : {"t", "h", "i", "o"}) {
            if (const Json* value = member(key, name))
                now.AddMember(rapidjson::StringRef(name), Json(*value, pool), pool);
        }
        for (const char* name : {"s", "e"}) {
            const auto size = array_member(key, name);
            if (size.Empty()) continue;
            if (size.Size() < 2 || !size[0].IsNumber() || !size[1].IsNumber()) return std::nullopt;
            Figure sized = figure;
            sized.width = size[0].GetDouble();
            sized.height = size[1].GetDouble();
            Json list(rapidjson::kArrayType);
            list.PushBack(path_of(sized, pool), pool);
            now.AddMember(rapidjson::StringRef(name), list, pool);
        }
        keys.PushBack(now, pool);
    }
    made->AddMember("a", 1, pool).AddMember("k", keys, pool);
    return OneOutline{made.get(), {}, true, made};
}

OneOutline standing(const Figure& figure) {
    auto made = std::make_shared<JsonDocument>(rapidjson::kObjectType);
    auto& pool = made->GetAllocator();
    made->AddMember("a", 0, pool).AddMember("k", path_of(figure, pool), pool);
    return {made.get(), {}, true, made};
}

std::optional<OneOutline> outline_of_solid(const SceneLayer& solid) {
    if (!solid.has_masks) return standing({false, {solid.width / 2, solid.height / 2}, solid.width, solid.height});
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

// A rectangle without round corners or an ellipse, whose middle stands still.
std::optional<OneOutline> outline_of_figure(const Json& shape) {
    const Property position(member(shape, "p"), {});
    const Property size(member(shape, "s"), {});
    Figure figure{text_member(shape, "ty") == "el", {}};
    if (position.is_animated() || position.has_expression() || size.has_expression() ||
        (!figure.is_ellipse && !is_always(Property(member(shape, "r"), {}), 0))) {
        return std::nullopt;
    }
    figure.middle = {position.at(0)[0], position.at(0)[1]};
    if (size.is_animated()) return growing(figure, *member(shape, "s"));
    figure.width = size.at(0)[0];
    figure.height = size.at(0)[1];
    return standing(figure);
}

// Where a group of shapes puts what is in it; nothing if it moves or lets anything through.
std::optional<Matrix> still_place(const Json& item) {
    const Transform transform(item, false, false);
    const bool is_still = is_full(item) && !transform.is_animated() && !transform.has_expression() &&
                          is_always(Property(member(item, "sk"), {}), 0);
    return is_still ? std::optional(transform.at(0)) : std::nullopt;
}

bool are_apart(const Box& a, const Box& b) {
    return a.right <= b.left || b.right <= a.left || a.bottom <= b.top || b.bottom <= a.top;
}

// Whether what several paths are filled with together is what they are filled with one by one: none of them makes a
// hole in another.
bool are_filled_alone(const Outlines& outlines) {
    if (outlines.size() == 1) return true;
    constexpr std::size_t kMostSteps = 1'000'000;
    struct Filled {
        bool turns_left;
        Hull hull;
        Box box;
    };
    std::vector<Filled> met;
    std::size_t steps = 0;
    for (const OneOutline& outline : outlines) {
        const PathProperty path(outline.path);
        if (path.is_animated()) return false;
        const std::vector<Point> points = path.at(0).points;
        Filled one{area(points) > 0, hull_of(points), around(points)};
        const auto may_make_hole = [&](const Filled& other) {
            if (one.turns_left == other.turns_left || are_apart(one.box, other.box)) return false;
            steps += steps_to_cut(one.hull, other.hull);
            return steps > kMostSteps || area(cut(one.hull, other.hull)) > 0;
        };
        if (std::any_of(met.begin(), met.end(), may_make_hole)) return false;
        met.push_back(std::move(one));
    }
    return true;
}

// Paths with one opaque fill, in a group that stands still or in none.
Outlines outlines_of_shapes(Json::ConstArray shapes) {
    constexpr std::size_t kMostPaths = 16;
    Outlines outlines;
    Matrix place;
    std::size_t fills = 0;
    for (const Json& shape : shapes) {
        const std::string type = text_member(shape, "ty");
        if (is_truthy(shape, "hd")) return {};
        if (type == "gr" && shapes.Size() == 1) return outlines_of_shapes(array_member(shape, "it"));
        if (type == "sh") {
            const Json* path = member(shape, "ks");
            if (path == nullptr || member(*path, "x") != nullptr) return {};
            outlines.push_back({path, {}, member(shape, "closed") == nullptr || is_truthy(shape, "closed")});
        } else if (type == "rc" || type == "el") {
            auto figure = outline_of_figure(shape);
            if (!figure) return {};
            outlines.push_back(std::move(*figure));
        } else if (is_opaque_fill(shape)) {
            ++fills;
        } else if (type == "tr") {
            const auto moved = still_place(shape);
            if (!moved) return {};
            place = *moved;
        } else {
            return {};
        }
    }
    if (fills != 1 || outlines.size() > kMostPaths || !are_filled_alone(outlines)) return {};
    for (OneOutline& outline : outlines) outline.place = place;
    return outlines;
}

Outlines as_list(std::optional<OneOutline> outline) {
    return outline ? Outlines{std::move(*outline)} : Outlines();
}

}  // namespace

std::optional<OneOutline> one_outline(const SceneLayer& layer) {
    if (!is_always(layer.transform().opacity, 100)) return std::nullopt;
    Outlines outlines = outlines_at_any_opacity(layer);
    return outlines.size() == 1 ? std::optional(std::move(outlines[0])) : std::nullopt;
}

Outlines outlines_at_any_opacity(const SceneLayer& layer) {
    const bool is_plain = layer.can_draw() && !layer.is_hidden && !is_picture_changed(layer) && layer.blend_mode == 0;
    if (!is_plain) return {};
    if (layer.type == LayerType::solid) return as_list(outline_of_solid(layer));
    if (layer.type != LayerType::shape || (layer.has_masks && !layer.array("masksProperties").Empty())) return {};
    return outlines_of_shapes(layer.array("shapes"));
}

}  // namespace lottie::looks
