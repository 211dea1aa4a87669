// The transform of a layer over time.
#include <algorithm>
#include <cmath>
#include <numbers>

#include "transform.h"

namespace lottie::looks {
namespace {

const Json* rotation_of(const Json& ks) {
    const Json* flat = member(ks, "r");
    return flat != nullptr ? flat : member(ks, "rz");
}

bool leaves(const Property& property, const Values& values, std::size_t from) {
    const auto all = property.key_values();
    return std::any_of(all.begin(), all.end(), [&](const Values& v) {
        return !std::equal(v.begin() + static_cast<std::ptrdiff_t>(from), v.end(),
                           values.begin() + static_cast<std::ptrdiff_t>(from));
    });
}

}  // namespace

Transform::Transform(const Json& ks, bool layer_is_3d, bool layer_is_auto_oriented)
    : anchor(member(ks, "a"), {}),
      position(member(ks, "p"), {}),
      scale(member(ks, "s"), {100, 100, 100}),
      rotation(rotation_of(ks), {}),
      turn_x(member(ks, "rx"), {}),
      turn_y(member(ks, "ry"), {}),
      orientation(member(ks, "or"), {}),
      opacity(member(ks, "o"), {100, 0, 0}),
      is_3d(layer_is_3d),
      is_auto_oriented(layer_is_auto_oriented) {
    const Property* all[] = {&anchor, &position, &scale, &rotation, &turn_x, &turn_y, &orientation};
    is_animated_ = std::any_of(std::begin(all), std::end(all), [](const Property* p) { return p->is_animated(); });
    is_spatial_ = is_3d && (leaves(turn_x, {}, 0) || leaves(turn_y, {}, 0) || leaves(orientation, {}, 0) ||
                            leaves(anchor, {}, 2) || leaves(position, {}, 2));
}

Matrix Transform::at(double frame, double led) const {
    const auto value = [=](const Property& property) { return property.at(property.has_expression() ? led : frame); };
    const Values a = value(anchor);
    const Values s = value(scale);
    const Values p = value(position);
    Matrix matrix = Matrix::translation(-a[0], -a[1], a[2])
                        .then(Matrix::scaling(s[0] / 100, s[1] / 100, is_3d ? s[2] / 100 : 1))
                        .then(Matrix::turn_z(value(rotation)[0]));
    if (is_3d) {
        const Values o = orientation.at(frame);
        matrix = matrix.then(Matrix::turn_y(turn_y.at(frame)[0]))
                     .then(Matrix::turn_x(turn_x.at(frame)[0]))
                     .then(Matrix::turn_z(o[2]))
                     .then(Matrix::turn_y(o[1]))
                     .then(Matrix::turn_x(o[0]));
    }
    if (is_auto_oriented && position.is_animated()) {
        const Values next = position.at(frame + 0.01);
        const Values last = position.at(frame - 0.01);
        const double angle = std::atan2(next[1] - last[1], next[0] - last[0]);
        matrix = matrix.then(Matrix::turn_z(angle * 180 / std::numbers::pi));
    }
    return matrix.then(Matrix::translation(p[0], p[1], -p[2]));
}

bool Transform::stands_still_between(double a, double b) const {
    if (is_auto_oriented) return false;  // it looks a little ahead
    const Property* all[] = {&anchor, &position, &scale, &rotation, &turn_x, &turn_y, &orientation};
    return std::all_of(std::begin(all), std::end(all),
                       [=](const Property* p) { return p->stands_still_between(a, b); });
}

bool Transform::has_expression() const {
    const Property* all[] = {&anchor, &position, &scale, &rotation, &turn_x, &turn_y, &orientation, &opacity};
    return std::any_of(std::begin(all), std::end(all), [](const Property* p) { return p->has_expression(); });
}

}  // namespace lottie::looks
