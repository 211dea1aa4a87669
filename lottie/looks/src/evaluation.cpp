// Layers of an animation at any frame, as the audit evaluates them: for those who say the same in another way.
#include "looks/evaluation.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <cmath>
#include <stdexcept>

#include "cut_work.h"
#include "expression_reach.h"
#include "fading.h"
#include "looks/work.h"
#include "one_outline.h"
#include "path.h"
#include "scene.h"
#include "sight.h"
#include "survey.h"

namespace lottie::looks {

PlanePoint PlaneMap::map(PlanePoint p) const {
    const PlanePoint turned = turn(p);
    return {turned.x + origin.x, turned.y + origin.y};
}

PlanePoint PlaneMap::turn(PlanePoint arrow) const {
    return {arrow.x * right.x + arrow.y * down.x, arrow.x * right.y + arrow.y * down.y};
}

PlaneMap PlaneMap::then(const PlaneMap& next) const {
    return {next.map(origin), next.turn(right), next.turn(down)};
}

std::optional<PlaneMap> PlaneMap::inverse() const {
    const double area = right.x * down.y - right.y * down.x;
    if (!(std::abs(area) > 1e-9)) return std::nullopt;
    PlaneMap inverse{{}, {down.y / area, -right.y / area}, {-down.x / area, right.x / area}};
    const PlanePoint moved = inverse.turn(origin);
    inverse.origin = {-moved.x, -moved.y};
    return inverse;
}

Survey& Evaluation::survey(const std::string& id) const {
    Survey* found = surveys_.find(id);
    if (found == nullptr) throw std::invalid_argument("the animation has no such composition");
    return *found;
}

std::vector<double> Evaluation::frames(const std::string& composition, double from, double to) const {
    const double first = survey(composition).stack().first_frame;
    std::vector<double> frames;
    for (double frame = first + std::ceil(from - first - 1e-9); frame < to - 1e-9; frame += 1) {
        work_.spend(1);
        frames.push_back(frame);
    }
    return frames;
}

double Evaluation::inner_frame(const std::string& composition, std::size_t nest, double frame) const {
    return survey(composition).stack().layer(nest).inner_frame(frame, scene_.frame_rate);
}

namespace {

std::vector<PlanePoint> plane(const std::vector<Point>& points) {
    std::vector<PlanePoint> all;
    for (const Point& point : points) all.push_back({point.x, point.y});
    return all;
}

std::vector<PlanePoint> corners(const Hull& hull) {
    return hull.size() < 3 ? std::vector<PlanePoint>() : plane(hull);
}

PlaneMap plane(const Matrix& matrix) {
    const Point origin = matrix.map({0, 0});
    const Point right = matrix.map({1, 0});
    const Point down = matrix.map({0, 1});
    return {{origin.x, origin.y}, {right.x - origin.x, right.y - origin.y}, {down.x - origin.x, down.y - origin.y}};
}

}  // namespace

PlaneMap Evaluation::place(const std::string& composition, std::size_t layer, double frame) {
    return plane(survey(composition).placement().world(layer, frame));
}

std::optional<Evaluation::Outline> Evaluation::only_outline(const std::string& composition, std::size_t layer) {
    const auto outline = one_outline(survey(composition).stack().layer(layer));
    if (!outline) return std::nullopt;
    using Text = rapidjson::GenericStringBuffer<rapidjson::UTF8<>, host::base::JsonMemory>;
    Text text;
    rapidjson::Writer<Text, rapidjson::UTF8<>, rapidjson::UTF8<>, host::base::JsonMemory> writer(text);
    outline->path->Accept(writer);
    return Outline{{text.GetString(), text.GetSize()}, plane(outline->place), outline->is_closed};
}

bool Evaluation::moves(const std::string& composition, std::size_t layer) {
    return survey(composition).placement().moves(layer);
}

bool Evaluation::has_reliable_placement(const std::string& composition, std::size_t layer) {
    return survey(composition).has_reliable_placement(layer);
}

bool Evaluation::is_placed_by_expression(const std::string& composition, std::size_t layer) {
    return looks::is_placed_by_expression(survey(composition).stack().layer(layer));
}

std::vector<PlanePoint> Evaluation::reach(const std::string& composition, std::size_t layer, double frame) {
    Survey& all = survey(composition);
    const SceneLayer& one = all.stack().layer(layer);
    const Hull hull = one.type == LayerType::nest
                          ? mapped(hull_of(Box{0, 0, one.width, one.height}), all.placement().world(layer, frame))
                          : all.reach_in_stack(layer, frame);
    return corners(hull);
}

std::optional<std::vector<PlanePoint>> Evaluation::led_reach(const std::string& composition, std::size_t layer,
                                                             const std::vector<double>& frames) {
    Survey& all = survey(composition);
    const SceneLayer& one = all.stack().layer(layer);
    std::vector<PlanePoint> reach;
    if (!all.is_drawn_otherwise(layer)) return reach;
    ExpressionReach reaches(all, layer);
    for (const double frame : frames) {
        work_.spend(1);
        if (!one.is_on(frame) || one.transform().opacity.is_nothing_at(frame)) continue;
        const auto hull = reaches.at(frame);
        if (!hull) return std::nullopt;
        const auto now = corners(*hull);
        reach.insert(reach.end(), now.begin(), now.end());
    }
    return reach;
}

bool Evaluation::may_overlap(const std::string& composition, std::size_t a, std::size_t b, double frame) {
    Survey& all = survey(composition);
    const Hull first = all.reach_in_stack(a, frame);
    const Hull& second = all.reach_in_stack(b, frame);
    work_.spend(steps_to_cut(first, second));
    return may_show_through(first, second);
}

bool Evaluation::is_large_fade(const std::string& composition, std::size_t nest, double frame) {
    Survey& stack = survey(composition);
    return looks::is_large_fade(stack, nest, survey(stack.stack().layer(nest).source), frame,
                                inner_frame(composition, nest, frame));
}

bool Evaluation::is_on(const std::string& composition, std::size_t layer, double frame) {
    return survey(composition).stack().layer(layer).is_on(frame);
}

double Evaluation::opacity(const std::string& composition, std::size_t layer, double frame) {
    return survey(composition).stack().layer(layer).transform().opacity.at(frame)[0];
}

double Evaluation::width(const std::string& composition) {
    return survey(composition).stack().width;
}

struct MovingPath::State {
    explicit State(std::string_view property) {
        json.Parse(property.data(), property.size());
        if (json.HasParseError()) throw std::runtime_error("the path cannot be read");
        path.emplace(&json);
    }
    State(std::shared_ptr<const SceneLayer> its_layer, OneOutline its_outline)
        : layer(std::move(its_layer)), outline(std::move(its_outline)), path(outline.path) {}

    JsonDocument json;
    std::shared_ptr<const SceneLayer> layer;  // what the outline lies in
    OneOutline outline{};
    std::optional<PathProperty> path;
};

MovingPath::MovingPath(std::string_view property) : state_(std::make_unique<State>(property)) {}
MovingPath::MovingPath(std::unique_ptr<State> state) : state_(std::move(state)) {}
MovingPath::~MovingPath() = default;

std::vector<Evaluation::Area> Evaluation::areas_at_any_opacity(const std::string& composition, std::size_t place) {
    const auto& layer = survey(composition).stack().shared_layer_at(place);
    std::vector<Area> areas;
    for (OneOutline& outline : outlines_at_any_opacity(*layer)) {
        const PlaneMap map = plane(outline.place);
        auto state = std::make_unique<MovingPath::State>(layer, std::move(outline));
        areas.push_back({std::shared_ptr<const MovingPath>(new MovingPath(std::move(state))), map});
    }
    return areas;
}

MovingPath::Vertices MovingPath::at(double frame) const {
    const PathProperty::Vertices vertices = state_->path->vertices_at(frame);
    return {plane(vertices.at), plane(vertices.in), plane(vertices.out), vertices.is_closed};
}

}  // namespace lottie::looks
