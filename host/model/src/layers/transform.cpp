// Keeps a layer in place while its parent changes.
#include "model/transform.h"

#include <cmath>
#include <numbers>
#include <optional>

#include "layers/matrix.h"
#include "model/comp.h"
#include "model/layer.h"

namespace host::model {
namespace {

constexpr double kTolerance = 1e-9;
constexpr double kTinyScale = 1e-12;  // a scale that keeps its direction but rounds to zero
constexpr double kDegree = std::numbers::pi / 180;

double rounded(double v) {
    const double r = std::round(v * 1e6) / 1e6;
    return r == 0 ? 0 : r;  // no negative zero
}

bool is_camera_or_light(const Layer& layer) {
    return layer.kind() == LayerKind::camera || layer.kind() == LayerKind::light;
}

// A layer's transform streams at the composition's current time.
struct Pose {
    Vector3 anchor{};
    Vector3 position{};
    Vector3 scale = {1, 1, 1};
    double rotation = 0;
    Vector3 orientation{};
    Vector3 rotations{};  // X, Y and Z rotation

    explicit Pose(Layer& layer) {
        const Time now = layer.comp().current_time() - layer.offset();
        const auto point = [&](int number) {
            const Value value = layer.stream_value(number, now);
            return Vector3{value.n[0], value.n[1], value.n[2]};
        };
        const auto number = [&](int stream) { return layer.stream_value(stream, now).n[0]; };
        position = point(kPosition);
        rotation = number(kRotation);
        rotations[2] = rotation;
        if (!is_camera_or_light(layer)) {
            anchor = point(kAnchorPoint);
            scale = point(kScale);
            for (double& s : scale) s /= 100;
        }
        if (layer.is_3d()) {
            orientation = point(kOrientation);
            rotations[0] = number(kRotateX);
            rotations[1] = number(kRotateY);
        } else {
            anchor[2] = 0;
            position[2] = 0;
            scale[2] = 1;
        }
    }

    Affine3D turn() const { return Affine3D::rotation(orientation) * Affine3D::rotation(rotations); }
    Affine3D matrix() const {
        return Affine3D::translation(position) * turn() * Affine3D::scaling(scale) *
               Affine3D::translation({-anchor[0], -anchor[1], -anchor[2]});
    }
};

// The combined transform of a layer and its ancestors.
struct Chain {
    Affine3D matrix;
    double rotation = 0;  // sum of the Z rotations, whole turns included
    double sign = 1;      // of the product of the horizontal scales
    bool has_zeros = false;

    // Scales of zero are replaced by `zero`.
    Chain(Layer* layer, double zero) {
        for (; layer != nullptr; layer = layer->parent()) {
            Pose pose(*layer);
            for (double& s : pose.scale) {
                if (s != 0) continue;
                has_zeros = true;
                s = zero;
            }
            matrix = pose.matrix() * matrix;
            rotation += pose.rotation;
            if (pose.scale[0] < 0) sign = -sign;
        }
    }
};

// How to change the child's own transform.
struct Change {
    Affine3D matrix;  // for positions
    Affine3D axes;    // the linear part, without zero scales
    Affine3D orient;  // 3D: applied before its orientation
    double rotation_factor = 1;
    double rotation = 0;  // 2D: degrees added after the factor
    Vector3 scale = {1, 1, 1};
};

// Rotation and scale of a matrix according to its x axis; shear is lost.
struct Parts2D {
    double angle;  // degrees
    double sx, sy;
};

// `sign` is the wanted sign of sx. Null if the x axis vanishes.
std::optional<Parts2D> parts_2d(const Affine3D& m, double sign) {
    const double length = std::hypot(m(0, 0), m(1, 0));
    if (length == 0) return std::nullopt;
    const double det = m(0, 0) * m(1, 1) - m(0, 1) * m(1, 0);
    return Parts2D{std::atan2(sign * m(1, 0), sign * m(0, 0)) / kDegree, sign * length, sign * det / length};
}

bool is_similarity_2d(const Affine3D& m) {
    const double x2 = m(0, 0) * m(0, 0) + m(1, 0) * m(1, 0);
    const double y2 = m(0, 1) * m(0, 1) + m(1, 1) * m(1, 1);
    const double dot = m(0, 0) * m(0, 1) + m(1, 0) * m(1, 1);
    return std::abs(dot) <= kTolerance * x2 && std::abs(x2 - y2) <= kTolerance * x2;
}

double sign_of(double v) {
    return v < 0 ? -1 : 1;
}

void find_turn_2d(Change& change, const Pose& child, double rotation_hint, double sign) {
    const auto own = parts_2d(change.axes, sign);
    if (!own) return;
    if (is_similarity_2d(change.axes)) {
        // Mirroring reverses rotations.
        change.rotation_factor = own->sx * own->sy < 0 ? -1 : 1;
        change.rotation = nearest_turn(own->angle, rotation_hint);
        change.scale = {own->sx, own->sy, 1};
        return;
    }
    // Exact at the current time; all keyframes change by the same amount.
    const double sx = child.scale[0] == 0 ? 1 : child.scale[0];
    const double sy = child.scale[1] == 0 ? 1 : child.scale[1];
    const Affine3D wanted = change.axes * Affine3D::rotation({0, 0, child.rotation}) * Affine3D::scaling({sx, sy, 1});
    const auto parts = parts_2d(wanted, sign * sign_of(sx));
    if (!parts) return;
    change.rotation = nearest_turn(parts->angle - child.rotation, rotation_hint);
    change.scale = {parts->sx / sx, parts->sy / sy, 1};
}

Vector3 column(const Affine3D& m, std::size_t c) {
    return {m(0, c), m(1, c), m(2, c)};
}
double dot(const Vector3& a, const Vector3& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}
Vector3 scaled(const Vector3& p, double by) {
    return {p[0] * by, p[1] * by, p[2] * by};
}
Vector3 cross(const Vector3& a, const Vector3& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

void find_turn_3d(Change& change, const Pose& child) {
    Vector3 scale = child.scale;
    for (double& s : scale) s = s == 0 ? 1 : s;
    const Affine3D turn = child.turn();
    const Affine3D wanted = change.axes * turn * Affine3D::scaling(scale);
    const Vector3 x = column(wanted, 0);
    const double length = std::sqrt(dot(x, x));
    if (length == 0) return;
    const Vector3 x_axis = scaled(x, sign_of(scale[0]) / length);
    const Vector3 y = column(wanted, 1);
    const double along = dot(x_axis, y);
    const Vector3 y_rest = {y[0] - along * x_axis[0], y[1] - along * x_axis[1], y[2] - along * x_axis[2]};
    const double height = std::sqrt(dot(y_rest, y_rest));
    if (height == 0) return;
    const Vector3 y_axis = scaled(y_rest, sign_of(scale[1]) / height);
    const Vector3 z_axis = cross(x_axis, y_axis);
    Affine3D axes;
    for (std::size_t row = 0; row < 3; ++row) {
        axes(row, 0) = x_axis[row];
        axes(row, 1) = y_axis[row];
        axes(row, 2) = z_axis[row];
    }
    change.orient = axes * transposed(turn);
    change.scale = {dot(x_axis, x) / scale[0], dot(y_axis, y) / scale[1], dot(z_axis, column(wanted, 2)) / scale[2]};
}

// Applies the change to the static value and every keyframe.
template <class ChangeKeyframe>
void rewrite(Stream& stream, ChangeKeyframe change_keyframe) {
    const StreamData& data = stream.data();
    Keyframe still;
    still.value = data.static_value;
    change_keyframe(still);
    KeyframeList keyframes = data.keyframes;
    keyframes.for_each(change_keyframe);
    if (still.value != data.static_value || keyframes != data.keyframes) {
        stream.replace(still.value, std::move(keyframes));
    }
}

void move_points(Stream& stream, const Affine3D& matrix, std::size_t dimensions, double mean_scale) {
    const auto assign = [dimensions](Value& value, const Vector3& to) {
        for (std::size_t d = 0; d < dimensions; ++d) value.n[d] = rounded(to[d]);
    };
    const auto place = [](const Value& value) { return Vector3{value.n[0], value.n[1], value.n[2]}; };
    rewrite(stream, [&](Keyframe& keyframe) {
        assign(keyframe.value, image_of(matrix, place(keyframe.value)));
        assign(keyframe.tangent_in, image_of_direction(matrix, place(keyframe.tangent_in)));
        assign(keyframe.tangent_out, image_of_direction(matrix, place(keyframe.tangent_out)));
        keyframe.ease_in[0].speed = rounded(keyframe.ease_in[0].speed * mean_scale);
        keyframe.ease_out[0].speed = rounded(keyframe.ease_out[0].speed * mean_scale);
    });
}

void turn_about_z(Stream& stream, double factor, double degrees) {
    if (factor == 1 && std::abs(degrees) <= kTolerance) return;
    rewrite(stream, [&](Keyframe& keyframe) {
        keyframe.value.n[0] = rounded(factor * keyframe.value.n[0] + degrees);
        if (factor == 1) return;
        keyframe.ease_in[0].speed = -keyframe.ease_in[0].speed;
        keyframe.ease_out[0].speed = -keyframe.ease_out[0].speed;
    });
}

void orient(Stream& stream, const Affine3D& turn) {
    if (is_linear_identity(turn, kTolerance)) return;
    rewrite(stream, [&](Keyframe& keyframe) {
        auto& n = keyframe.value.n;
        const Vector3 angles = rotation_angles(turn * Affine3D::rotation({n[0], n[1], n[2]}));
        for (std::size_t d = 0; d < 3; ++d) n[d] = rounded(nearest_turn(angles[d], n[d]));
    });
}

void resize(Stream& stream, const Vector3& factors) {
    rewrite(stream, [&](Keyframe& keyframe) {
        for (std::size_t d = 0; d < 3; ++d) {
            if (std::abs(factors[d] - 1) <= kTolerance) continue;
            keyframe.value.n[d] = rounded(keyframe.value.n[d] * factors[d]);
            keyframe.ease_in[d].speed = rounded(keyframe.ease_in[d].speed * factors[d]);
            keyframe.ease_out[d].speed = rounded(keyframe.ease_out[d].speed * factors[d]);
        }
    });
}

}  // namespace

void compensate_for_parent(Layer& child, Layer* new_parent) {
    const Chain from(child.parent(), 0);
    const Chain to(new_parent, 1);  // a scale of zero cannot be inverted
    const bool is_3d = child.is_3d();
    const auto seen = [is_3d](const Affine3D& matrix) { return is_3d ? matrix : flattened(matrix); };
    const auto back = inverse(seen(to.matrix));
    if (!back) return;  // the new parent is seen edge-on and cannot be compensated
    Change change;
    change.matrix = *back * seen(from.matrix);
    if (is_identity(change.matrix, kTolerance)) return;
    change.axes = from.has_zeros ? *back * seen(Chain(child.parent(), kTinyScale).matrix) : change.matrix;

    const bool turns = !is_linear_identity(change.matrix, kTolerance);
    if (turns) {
        const Pose pose(child);
        if (is_3d) {
            find_turn_3d(change, pose);
        } else {
            find_turn_2d(change, pose, from.rotation - to.rotation, from.sign * to.sign);
        }
    }

    const std::size_t dimensions = is_3d ? 3 : 2;
    const double volume = std::abs(determinant(change.matrix));
    const double mean_scale = is_3d ? std::cbrt(volume) : std::sqrt(volume);
    move_points(child.stream(kPosition), change.matrix, dimensions, mean_scale);
    const bool aims = is_camera_or_light(child) && child.has_flag(kLookAtPoi);
    if (is_camera_or_light(child)) move_points(child.stream(kAnchorPoint), change.matrix, dimensions, mean_scale);
    if (!turns) return;
    if (is_3d) {
        if (!aims) orient(child.stream(kOrientation), change.orient);
    } else {
        turn_about_z(child.stream(kRotation), change.rotation_factor, change.rotation);
    }
    if (!is_camera_or_light(child)) resize(child.stream(kScale), change.scale);
}

}  // namespace host::model
