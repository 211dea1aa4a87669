// Paths of shapes and masks over time.
#include "path.h"

#include <algorithm>
#include <iterator>

namespace lottie::looks {
namespace {

Point point_of(const Json& json) {
    const auto coordinate = [&json](rapidjson::SizeType i) {
        return json.IsArray() && i < json.Size() && json[i].IsNumber() ? json[i].GetDouble() : 0;
    };
    return {coordinate(0), coordinate(1)};
}

void mix(std::vector<Point>& from, const std::vector<Point>& to, double share) {
    for (std::size_t i = 0; i < std::min(from.size(), to.size()); ++i) {
        from[i].x += share * (to[i].x - from[i].x);
        from[i].y += share * (to[i].y - from[i].y);
    }
}

}  // namespace

namespace {

bool is_by_expression(const Json& mask, const char* name) {
    const Json* property = member(mask, name);
    const Json* text = property == nullptr ? nullptr : member(*property, "x");
    return text != nullptr && text->IsString();
}

}  // namespace

MaskContent::MaskContent(const Json& mask)
    : mode(text_member(mask, "mode")),
      is_inverted(is_truthy(mask, "inv")),
      has_expression(is_by_expression(mask, "pt") || is_by_expression(mask, "x")),
      path(member(mask, "pt")),
      expansion(member(mask, "x"), {}) {}

const Hull& MaskContent::hull(double frame) const {
    if (hull_frame_ && (!is_animated() || *hull_frame_ == frame)) return hull_;
    Outline outline = path.at(frame);
    outline.growth = std::max(expansion.at(frame)[0], 0.0);
    hull_ = around({outline});
    hull_frame_ = frame;
    return hull_;
}

PathProperty::PathProperty(const Json* json) {
    const Json* value = json == nullptr ? nullptr : member(*json, "k");
    if (value == nullptr) return;
    if (!is_keyed(*json)) {
        keys_.push_back({0, true, nullptr, vertices_of(value), {}});
        return;
    }
    const Json* end = nullptr;  // of the segment before
    for (const Json& key : value->GetArray()) {
        const Json* start = member(key, "s");
        if (start == nullptr) start = end;
        if (!keys_.empty() && member(key, "s") != nullptr) keys_.back().end = vertices_of(start);
        end = member(key, "e");
        keys_.push_back({number_member(key, "t", 0), is_truthy(key, "h"), &key, vertices_of(start), vertices_of(end)});
    }
}

PathProperty::Vertices PathProperty::vertices_of(const Json* json) {
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

PathProperty::Instant PathProperty::instant_at(double frame) const {
    const auto next = std::upper_bound(keys_.begin(), keys_.end(), frame,
                                       [](double time, const Key& key) { return time < key.time; });
    if (next == keys_.begin()) return {keys_.front(), 0};
    const Key& key = *std::prev(next);
    if (next == keys_.end() || key.is_hold || next->time <= key.time) return {key, 0};
    // The ease of a path is that of a single number.
    return {key, ease_between(*key.json, (frame - key.time) / (next->time - key.time))};
}

PathProperty::Vertices PathProperty::vertices_at(double frame) const {
    if (keys_.empty()) return {};
    const auto [key, share] = instant_at(frame);
    Vertices vertices = key.start;
    if (share == 0) return vertices;
    mix(vertices.at, key.end.at, share);
    mix(vertices.in, key.end.in, share);
    mix(vertices.out, key.end.out, share);
    return vertices;
}

std::size_t PathProperty::take_into(Box& box, double frame) const {
    if (keys_.empty()) return 0;
    const auto [key, share] = instant_at(frame);
    const Vertices& from = key.start;
    const auto at = [share = share](const std::vector<Point>& start, const std::vector<Point>& end, std::size_t i) {
        if (share == 0 || i >= end.size()) return start[i];
        return Point{start[i].x + share * (end[i].x - start[i].x), start[i].y + share * (end[i].y - start[i].y)};
    };
    for (std::size_t i = 0; i < from.at.size(); ++i) {
        const Point vertex = at(from.at, key.end.at, i);
        const Point in = at(from.in, key.end.in, i);
        const Point out = at(from.out, key.end.out, i);
        box.left = std::min({box.left, vertex.x, vertex.x + in.x, vertex.x + out.x});
        box.right = std::max({box.right, vertex.x, vertex.x + in.x, vertex.x + out.x});
        box.top = std::min({box.top, vertex.y, vertex.y + in.y, vertex.y + out.y});
        box.bottom = std::max({box.bottom, vertex.y, vertex.y + in.y, vertex.y + out.y});
    }
    return from.at.size();
}

Outline PathProperty::at(double frame) const {
    return along(vertices_at(frame));
}

Outline PathProperty::along(const Vertices& vertices) {
    Outline outline;
    outline.is_closed = vertices.is_closed;
    const std::size_t count = vertices.at.size();
    if (count == 0 || (count == 1 && !vertices.is_closed)) return outline;  // goes nowhere, so nothing is drawn
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

}  // namespace lottie::looks
