// Paths over time as the file says them.
#include "path_text.h"

#include <algorithm>
#include <cmath>

#include "document/json_text.h"
#include "document/output_text.h"
#include "document/patch.h"

namespace lottie::mend {
namespace {

using document::JsonKind;
using document::JsonNode;
using document::JsonTree;
using looks::PlanePoint;
using Vertices = looks::MovingPath::Vertices;

constexpr double kUnseen = 0.05;       // pixels
constexpr double kFewestDigits = 1e4;  // what is kept of a coordinate: far below what is seen
constexpr std::size_t kMostFramesApart = 100;

void append_point(std::string& out, PlanePoint p) {
    out += '[';
    document::append_number(out, std::round(p.x * kFewestDigits) / kFewestDigits);
    out += ',';
    document::append_number(out, std::round(p.y * kFewestDigits) / kFewestDigits);
    out += ']';
}

std::string points_text(const std::vector<PlanePoint>& points) {
    std::string out = "[";
    for (const PlanePoint& point : points) {
        if (out.size() > 1) out += ',';
        append_point(out, point);
    }
    return out + "]";
}

// The numbers of an array of points, two by two.
std::vector<PlanePoint> points_of(std::string_view text) {
    std::vector<double> numbers;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t begin = text.find_first_of("-0123456789", at);
        if (begin == std::string_view::npos) break;
        at = std::min(text.find_first_not_of("+-.eE0123456789", begin), text.size());
        numbers.push_back(document::read_number(text.substr(begin, at - begin)));
    }
    std::vector<PlanePoint> points;
    for (std::size_t i = 0; i + 1 < numbers.size(); i += 2) points.push_back({numbers[i], numbers[i + 1]});
    return points;
}

std::string vertices_text(const Vertices& vertices) {
    return "{\"i\":" + points_text(vertices.in) + ",\"o\":" + points_text(vertices.out) +
           ",\"v\":" + points_text(vertices.at) + ",\"c\":" + (vertices.is_closed ? "true" : "false") + "}";
}

bool is_apart(PlanePoint from, PlanePoint to, PlanePoint between, double share) {
    const double x = from.x + share * (to.x - from.x) - between.x;
    const double y = from.y + share * (to.y - from.y) - between.y;
    return x * x + y * y > kUnseen * kUnseen;
}

// Whether straight lines from one path to another lead close enough past those between.
bool is_straight(const std::vector<PathAt>& paths, std::size_t from, std::size_t to) {
    for (std::size_t i = from + 1; i < to; ++i) {
        const double share = (paths[i].frame - paths[from].frame) / (paths[to].frame - paths[from].frame);
        const Vertices& a = paths[from].vertices;
        const Vertices& b = paths[to].vertices;
        const Vertices& c = paths[i].vertices;
        for (std::size_t v = 0; v < c.at.size(); ++v) {
            if (is_apart(a.at[v], b.at[v], c.at[v], share) || is_apart(a.in[v], b.in[v], c.in[v], share) ||
                is_apart(a.out[v], b.out[v], c.out[v], share)) {
                return false;
            }
        }
    }
    return true;
}

// How far straight lines lead from a path: found in steps that double, then halve, as each look costs what lies
// between.
std::size_t straight_end(const std::vector<PathAt>& paths, std::size_t from) {
    const std::size_t last = std::min(paths.size() - 1, from + kMostFramesApart);
    std::size_t to = from + 1;
    std::size_t step = 1;
    for (; to + step <= last && is_straight(paths, from, to + step); step *= 2) to += step;
    for (; step > 0; step /= 2) {
        if (to + step <= last && is_straight(paths, from, to + step)) to += step;
    }
    return to;
}

// The fewest frames between which straight lines lead close enough past the others.
std::vector<std::size_t> straight_ends(const std::vector<PathAt>& paths) {
    std::vector<std::size_t> keys = {0};
    while (keys.back() + 1 < paths.size()) keys.push_back(straight_end(paths, keys.back()));
    return keys;
}

enum class After { straight_line, hold, end };

void append_key(std::string& keys, double frame, const std::string& path, After after) {
    keys += keys.ends_with('[') ? "{" : ",{";
    if (after == After::straight_line) keys += R"("i":{"x":0.833,"y":0.833},"o":{"x":0.167,"y":0.167},)";
    keys += "\"t\":";
    document::append_number(keys, frame);
    keys += ",\"s\":[" + path + (after == After::hold ? "],\"h\":1}" : "]}");
}

}  // namespace

std::string mapped_path(const std::string& property, const looks::PlaneMap& map) {
    const document::Slice all{0, static_cast<std::uint32_t>(property.size())};
    const JsonTree tree(property, all);
    document::Patch patch;
    std::vector<const JsonNode*> open = {&tree.root()};
    while (!open.empty()) {
        const JsonNode& node = *open.back();
        open.pop_back();
        if (tree.member(&node, "v") == nullptr) {
            for (const JsonNode* child = tree.first(node); child != nullptr; child = tree.next(*child)) {
                if (child->kind == JsonKind::object || (child->kind == JsonKind::array && !child->is_numeric))
                    open.push_back(child);
            }
            continue;
        }
        for (const char* key : {"i", "o", "v"}) {
            const JsonNode* list = tree.member(&node, key);
            if (list == nullptr) continue;
            std::vector<PlanePoint> points = points_of(tree.text(*list));
            for (PlanePoint& point : points) point = *key == 'v' ? map.map(point) : map.turn(point);
            patch.replace(list->text, points_text(points));
        }
    }
    document::OutputText out;
    patch.write(property, all, out);
    return out.text();
}

std::string path_through(const std::vector<PathAt>& paths) {
    const std::vector<std::size_t> keys = straight_ends(paths);
    std::vector<std::string> texts;
    for (const std::size_t key : keys) texts.push_back(vertices_text(paths[key].vertices));
    if (std::count(texts.begin(), texts.end(), texts[0]) == std::ssize(texts))
        return "{\"a\":0,\"k\":" + texts[0] + "}";
    std::string out = "{\"a\":1,\"k\":[";
    for (std::size_t i = 0; i < keys.size(); ++i)
        append_key(out, paths[keys[i]].frame, texts[i], i + 1 == keys.size() ? After::end : After::straight_line);
    return out + "]}";
}

std::string path_at_times(const std::vector<std::vector<PathAt>>& runs, double first_frame) {
    std::string out = "{\"a\":1,\"k\":[";
    Vertices nothing;
    nothing.is_closed = true;
    for (auto* points : {&nothing.at, &nothing.in, &nothing.out}) points->resize(runs[0][0].vertices.at.size());
    const std::string none = vertices_text(nothing);
    double end = first_frame;  // of the run before
    for (const auto& run : runs) {
        if (end < run[0].frame) append_key(out, end, none, After::hold);
        const std::vector<std::size_t> keys = straight_ends(run);
        for (const std::size_t key : keys) {
            append_key(out, run[key].frame, vertices_text(run[key].vertices),
                       key == keys.back() ? After::hold : After::straight_line);
        }
        end = run.back().frame + 1;
    }
    append_key(out, end, none, After::end);
    return out + "]}";
}

}  // namespace lottie::mend
