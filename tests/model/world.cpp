// Where a layer really is: each step of the way applied to the point itself.
#include "world.h"

#include <cmath>
#include <numbers>

namespace host::model::testing {
namespace {

void turn(Point3& p, std::size_t a, std::size_t b, double degrees) {
    const double angle = degrees * std::numbers::pi / 180;
    const double x = p[a];
    const double y = p[b];
    p[a] = x * std::cos(angle) - y * std::sin(angle);
    p[b] = x * std::sin(angle) + y * std::cos(angle);
}

void turn_about_axes(Point3& p, const Point3& degrees) {
    turn(p, 0, 1, degrees[2]);
    turn(p, 2, 0, degrees[1]);
    turn(p, 1, 2, degrees[0]);
}

Point3 read(Layer& layer, int number) {
    const Value v = layer.stream(number).value_at(layer.comp().current_time() - layer.offset());
    return {v.n[0], v.n[1], v.n[2]};
}

}  // namespace

Point3 place(Layer& layer, Point3 point) {
    const bool surface = layer.kind() != LayerKind::camera && layer.kind() != LayerKind::light;
    const std::size_t dimensions = layer.is_3d() ? 3 : 2;
    const Point3 anchor = surface ? read(layer, kAnchorPoint) : Point3{};
    const Point3 scale = surface ? read(layer, kScale) : Point3{100, 100, 100};
    const Point3 position = read(layer, kPosition);
    for (std::size_t d = 0; d < dimensions; ++d) point[d] = (point[d] - anchor[d]) * scale[d] / 100;
    const double z_rotation = read(layer, kRotation)[0];
    if (layer.is_3d()) {
        turn_about_axes(point, {read(layer, kRotateX)[0], read(layer, kRotateY)[0], z_rotation});
        turn_about_axes(point, read(layer, kOrientation));
    } else {
        turn(point, 0, 1, z_rotation);
    }
    for (std::size_t d = 0; d < dimensions; ++d) point[d] += position[d];
    return layer.parent() != nullptr ? place(*layer.parent(), point) : point;
}

std::array<Point3, PlaceWatch::kCorners> PlaceWatch::corners() const {
    const double depth = layer_.is_3d() ? 50 : 0;
    return {place(layer_, {0, 0, 0}), place(layer_, {200, 0, 0}), place(layer_, {0, 100, 0}),
            place(layer_, {30, 40, depth})};
}

double PlaceWatch::moved() const {
    const auto now = corners();
    double most = 0;
    for (std::size_t i = 0; i < now.size(); ++i) {
        most =
            std::max(most, std::hypot(now[i][0] - before_[i][0], now[i][1] - before_[i][1], now[i][2] - before_[i][2]));
    }
    return most;
}

}  // namespace host::model::testing
