// The outlines that a shape layer paints at a frame.
#include "shape_outlines.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numbers>
#include <string>

#include "property.h"

namespace lottie::looks {
namespace {

constexpr int kSteps = 12;        // points of a curve between two vertices
constexpr int kMostCopies = 200;  // of a repeater; beyond them it has long left every frame

Point point_of(const Json& json) {
    const auto coordinate = [&json](rapidjson::SizeType i) {
        return json.IsArray() && i < json.Size() && json[i].IsNumber() ? json[i].GetDouble() : 0;
    };
    return {coordinate(0), coordinate(1)};
}

struct Vertices {
    std::vector<Point> at, in, out;
    bool is_closed = false;
};

Vertices vertices_of(const Json* json) {
    Vertices vertices;
    if (json != nullptr && json->IsArray() && !json->Empty()) json = &(*json)[0];
    if (json == nullptr || !json->IsObject()) return vertices;
    for (const Json& point : array_member(*json, "v")) vertices.at.push_back(point_of(point));
    for (const Json& point : array_member(*json, "i")) vertices.in.push_back(point_of(point));
    for (const Json& point : array_member(*json, "o")) vertices.out.push_back(point_of(point));
    vertices.in.resize(vertices.at.size());
    vertices.out.resize(vertices.at.size());
    vertices.is_closed = is_truthy(*json, "c");
    return vertices;
}

void mix(std::vector<Point>& from, const std::vector<Point>& to, double share) {
    for (std::size_t i = 0; i < std::min(from.size(), to.size()); ++i) {
        from[i].x += share * (to[i].x - from[i].x);
        from[i].y += share * (to[i].y - from[i].y);
    }
}

// How far a path has gone from its first keyframe to its last, as a number whose whole part is the keyframe: the ease
// of a path is that of a single number.
double path_progress(Json::ConstArray keys, double frame) {
    rapidjson::SizeType i = 0;
    while (i + 1 < keys.Size() && number_member(keys[i + 1], "t", 0) <= frame) ++i;
    const double start = number_member(keys[i], "t", 0);
    if (i + 1 == keys.Size() || frame < start || is_truthy(keys[i], "h")) return i;
    const double end = number_member(keys[i + 1], "t", 0);
    return i + (end > start ? ease_between(keys[i], (frame - start) / (end - start)) : 0);
}

Vertices vertices_at(const Json& path, double frame) {
    const Json* value = member(path, "k");
    if (value == nullptr || !is_keyed(path)) return vertices_of(value);
    const auto keys = value->GetArray();
    const double progress = path_progress(keys, frame);
    const auto i = static_cast<rapidjson::SizeType>(progress);
    const Json* start = member(keys[i], "s");
    if (start == nullptr && i > 0) start = member(keys[i - 1], "e");
    Vertices vertices = vertices_of(start);
    if (progress == i || i + 1 >= keys.Size()) return vertices;
    const Json* end = member(keys[i + 1], "s");
    const Vertices next = vertices_of(end != nullptr ? end : member(keys[i], "e"));
    mix(vertices.at, next.at, progress - i);
    mix(vertices.in, next.in, progress - i);
    mix(vertices.out, next.out, progress - i);
    return vertices;
}

Outline along(const Vertices& vertices) {
    Outline outline;
    outline.is_closed = vertices.is_closed;
    const std::size_t count = vertices.at.size();
    if (count == 0) return outline;
    outline.points.push_back(vertices.at[0]);
    for (std::size_t i = 0; i + (vertices.is_closed ? 0 : 1) < count; ++i) {
        const std::size_t next = (i + 1) % count;
        const Point a = vertices.at[i];
        const Point b{a.x + vertices.out[i].x, a.y + vertices.out[i].y};
        const Point d = vertices.at[next];
        const Point c{d.x + vertices.in[next].x, d.y + vertices.in[next].y};
        for (int step = 1; step <= kSteps; ++step) {
            const double u = static_cast<double>(step) / kSteps;
            const double v = 1 - u;
            outline.points.push_back({v * v * v * a.x + 3 * v * v * u * b.x + 3 * v * u * u * c.x + u * u * u * d.x,
                                      v * v * v * a.y + 3 * v * v * u * b.y + 3 * v * u * u * c.y + u * u * u * d.y});
        }
    }
    return outline;
}

double distance(Point a, Point b) {
    return std::hypot(a.x - b.x, a.y - b.y);
}

double length_of(const Outline& outline) {
    double length = 0;
    for (std::size_t i = 1; i < outline.points.size(); ++i)
        length += distance(outline.points[i - 1], outline.points[i]);
    return length;
}

// The part between two lengths from the beginning.
void append_part(const Outline& outline, double from, double to, std::vector<Outline>& parts) {
    Outline part;
    part.growth = outline.growth;
    double passed = 0;
    const auto add_at = [&](std::size_t i, double at, double span) {
        const Point a = outline.points[i - 1];
        const Point b = outline.points[i];
        const double share = span > 0 ? (at - passed) / span : 0;
        part.points.push_back({a.x + share * (b.x - a.x), a.y + share * (b.y - a.y)});
    };
    for (std::size_t i = 1; i < outline.points.size(); ++i) {
        const double span = distance(outline.points[i - 1], outline.points[i]);
        if (passed + span >= from && passed <= to) {
            if (part.points.empty()) add_at(i, std::max(from, passed), span);
            add_at(i, std::min(to, passed + span), span);
        }
        passed += span;
    }
    if (!part.points.empty()) parts.push_back(std::move(part));
}

// Shapes of one group with what has been found out about their paint.
struct Shape {
    Outline outline;
    bool is_painted = false;
};

class Painter {
  public:
    explicit Painter(double frame) : frame_(frame) {}

    std::vector<Shape> group(Json::ConstArray items) const {
        std::vector<Shape> shapes;
        for (const Json& item : items) {
            if (!is_truthy(item, "hd")) apply(item, text_member(item, "ty"), shapes);
        }
        for (const Json& item : items) {
            if (text_member(item, "ty") != "tr") continue;
            if (value(item, "o", {100, 0, 0})[0] <= 0) return {};
            move(shapes, group_matrix(item));
        }
        return shapes;
    }

  private:
    Values value(const Json& item, const char* name, const Values& missing) const {
        return Property(member(item, name), missing).at(frame_);
    }

    void apply(const Json& item, const std::string& type, std::vector<Shape>& shapes) const {
        if (type == "gr") {
            auto inner = group(array_member(item, "it"));
            shapes.insert(shapes.end(), std::make_move_iterator(inner.begin()), std::make_move_iterator(inner.end()));
        } else if (type == "st" || type == "gs") {
            paint(shapes, value(item, "w", {})[0] / 2 * miter(item), value(item, "o", {100, 0, 0})[0]);
        } else if (type == "fl" || type == "gf") {
            paint(shapes, 0, value(item, "o", {100, 0, 0})[0]);
        } else if (type == "tm") {
            trim(item, shapes);
        } else if (type == "rp") {
            repeat(item, shapes);
        } else if (type == "pb" || type == "zz" || type == "op") {
            const double more = std::abs(value(item, type == "zz" ? "s" : "a", {})[0]);
            for (Shape& shape : shapes) shape.outline.growth += more;
        } else if (Outline outline = outline_of(item, type); !outline.points.empty()) {
            shapes.push_back({std::move(outline)});
        }
    }

    // Sharp corners reach further than half the stroke's width; how far, only the angles would tell.
    static double miter(const Json& stroke) {
        return number_member(stroke, "lj", 1) == 1 ? std::min(number_member(stroke, "ml", 4), 1.25) : 1;
    }

    static void paint(std::vector<Shape>& shapes, double reach, double opacity) {
        if (opacity <= 0) return;
        for (Shape& shape : shapes) {
            shape.is_painted = true;
            shape.outline.growth = std::max(shape.outline.growth, reach);
        }
    }

    Outline outline_of(const Json& item, const std::string& type) const {
        if (type == "sh") return path_outline(member(item, "ks"), frame_);
        const Values center = value(item, "p", {});
        if (type == "rc") {
            const Values size = value(item, "s", {});
            const double w = size[0] / 2;
            const double h = size[1] / 2;
            const Point middle{center[0], center[1]};
            return {{{middle.x + w, middle.y - h},
                     {middle.x + w, middle.y + h},
                     {middle.x - w, middle.y + h},
                     {middle.x - w, middle.y - h},
                     {middle.x + w, middle.y - h}},
                    0,
                    true};
        }
        if (type == "el") {
            const Values size = value(item, "s", {});
            return round_outline(center, size[0] / 2, size[1] / 2);
        }
        if (type == "sr") {
            const double reach = std::max(std::abs(value(item, "or", {})[0]), std::abs(value(item, "ir", {})[0]));
            return round_outline(center, reach, reach);
        }
        return {};
    }

    static Outline round_outline(const Values& center, double width, double height) {
        Outline outline;
        outline.is_closed = true;
        constexpr int kPoints = 4 * kSteps;
        for (int i = 0; i <= kPoints; ++i) {
            const double angle = 2 * std::numbers::pi * i / kPoints - std::numbers::pi / 2;
            outline.points.push_back({center[0] + width * std::cos(angle), center[1] + height * std::sin(angle)});
        }
        return outline;
    }

    void trim(const Json& item, std::vector<Shape>& shapes) const {
        double from = std::clamp(value(item, "s", {})[0] / 100, 0.0, 1.0);
        double to = std::clamp(value(item, "e", {100, 0, 0})[0] / 100, 0.0, 1.0);
        if (from > to) std::swap(from, to);
        if (to - from >= 1) return;
        const double offset = std::fmod(value(item, "o", {})[0] / 360, 1.0);
        from += offset;
        to += offset;
        const bool one_after_another = number_member(item, "m", 1) == 2;
        std::vector<Shape> left;
        for (const Shape& shape : shapes) {
            std::vector<Outline> parts;
            const double length = length_of(shape.outline);
            // Where one path ends and the next begins depends on all of them: then all that is left may be anywhere.
            if (one_after_another && shapes.size() > 1 && to > from) parts.push_back(shape.outline);
            for (const double turn : {-1.0, 0.0, 1.0}) {
                const double begin = std::max(0.0, from + turn);
                const double end = std::min(1.0, to + turn);
                if (end > begin) append_part(shape.outline, begin * length, end * length, parts);
            }
            for (Outline& part : parts) left.push_back({std::move(part), shape.is_painted});
        }
        shapes = std::move(left);
    }

    static void move(std::vector<Shape>& shapes, const Matrix& matrix) {
        const Point origin = matrix.map({0, 0});
        const double scale = std::max(distance(matrix.map({1, 0}), origin), distance(matrix.map({0, 1}), origin));
        for (Shape& shape : shapes) {
            for (Point& point : shape.outline.points) point = matrix.map(point);
            shape.outline.growth *= scale;
        }
    }

    Matrix group_matrix(const Json& item) const {
        const Values a = value(item, "a", {});
        const Values s = value(item, "s", {100, 100, 100});
        const Values p = value(item, "p", {});
        return Matrix::translation(-a[0], -a[1], 0)
            .then(Matrix::scaling(s[0] / 100, s[1] / 100, 1))
            .then(Matrix::turn_z(value(item, "r", {})[0]))
            .then(Matrix::translation(p[0], p[1], 0));
    }

    // A repeater's transform, so many times over.
    Matrix repeater_matrix(const Json& item, double times) const {
        const Values a = value(item, "a", {});
        const Values s = value(item, "s", {100, 100, 100});
        const Values p = value(item, "p", {});
        return Matrix::translation(-a[0], -a[1], 0)
            .then(Matrix::scaling(std::pow(s[0] / 100, times), std::pow(s[1] / 100, times), 1))
            .then(Matrix::turn_z(value(item, "r", {})[0] * times))
            .then(Matrix::translation(a[0] + p[0] * times, a[1] + p[1] * times, 0));
    }

    void repeat(const Json& repeater, std::vector<Shape>& shapes) const {
        const Json* item = member(repeater, "tr");
        if (item == nullptr) return;
        const int copies = static_cast<int>(std::clamp(value(repeater, "c", {})[0], 0.0, double{kMostCopies}));
        const double offset = value(repeater, "o", {})[0];
        std::vector<Shape> all;
        for (int i = 0; i < copies; ++i) {
            std::vector<Shape> copy = shapes;
            move(copy, repeater_matrix(*item, i + offset));
            all.insert(all.end(), std::make_move_iterator(copy.begin()), std::make_move_iterator(copy.end()));
        }
        shapes = std::move(all);
    }

    double frame_;
};

}  // namespace

Outline path_outline(const Json* path, double frame) {
    return path == nullptr ? Outline{} : along(vertices_at(*path, frame));
}

std::vector<Outline> painted_outlines(Json::ConstArray shapes, double frame) {
    std::vector<Outline> outlines;
    for (Shape& shape : Painter(frame).group(shapes)) {
        if (shape.is_painted) outlines.push_back(std::move(shape.outline));
    }
    return outlines;
}

}  // namespace lottie::looks
