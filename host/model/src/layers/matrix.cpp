// Affine transforms.
#include "layers/matrix.h"

#include <cmath>
#include <numbers>

namespace host::model {
namespace {

constexpr double kDegree = std::numbers::pi / 180;

// Cosine and sine, exact at quarter turns.
std::array<double, 2> turn(double degrees) {
    const double quarters = degrees / 90;
    if (quarters == std::floor(quarters) && std::abs(quarters) < 1e9) {
        switch (static_cast<long>(quarters) & 3) {
            case 0:
                return {1, 0};
            case 1:
                return {0, 1};
            case 2:
                return {-1, 0};
            default:
                return {0, -1};
        }
    }
    return {std::cos(degrees * kDegree), std::sin(degrees * kDegree)};
}

}  // namespace

Affine3D Affine3D::translation(const Vector3& by) {
    Affine3D m;
    for (std::size_t i = 0; i < 3; ++i) m(i, 3) = by[i];
    return m;
}

Affine3D Affine3D::scaling(const Vector3& by) {
    Affine3D m;
    for (std::size_t i = 0; i < 3; ++i) m(i, i) = by[i];
    return m;
}

Affine3D Affine3D::rotation(const Vector3& degrees) {
    const auto [cx, sx] = turn(degrees[0]);
    const auto [cy, sy] = turn(degrees[1]);
    const auto [cz, sz] = turn(degrees[2]);
    const Affine3D x{{{{1, 0, 0, 0}, {0, cx, -sx, 0}, {0, sx, cx, 0}}}};
    const Affine3D y{{{{cy, 0, sy, 0}, {0, 1, 0, 0}, {-sy, 0, cy, 0}}}};
    const Affine3D z{{{{cz, -sz, 0, 0}, {sz, cz, 0, 0}, {0, 0, 1, 0}}}};
    return x * y * z;
}

Affine3D operator*(const Affine3D& a, const Affine3D& b) {
    Affine3D m;
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 4; ++column) {
            double sum = column == 3 ? a(row, 3) : 0;
            for (std::size_t k = 0; k < 3; ++k) sum += a(row, k) * b(k, column);
            m(row, column) = sum;
        }
    }
    return m;
}

Vector3 image_of_direction(const Affine3D& m, const Vector3& v) {
    Vector3 image{};
    for (std::size_t row = 0; row < 3; ++row) image[row] = m(row, 0) * v[0] + m(row, 1) * v[1] + m(row, 2) * v[2];
    return image;
}

Vector3 image_of(const Affine3D& m, const Vector3& p) {
    Vector3 image = image_of_direction(m, p);
    for (std::size_t row = 0; row < 3; ++row) image[row] += m(row, 3);
    return image;
}

double determinant(const Affine3D& m) {
    return m(0, 0) * (m(1, 1) * m(2, 2) - m(1, 2) * m(2, 1)) - m(0, 1) * (m(1, 0) * m(2, 2) - m(1, 2) * m(2, 0)) +
           m(0, 2) * (m(1, 0) * m(2, 1) - m(1, 1) * m(2, 0));
}

Affine3D transposed(const Affine3D& m) {
    Affine3D t;
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column) t(row, column) = m(column, row);
    }
    return t;
}

std::optional<Affine3D> inverse(const Affine3D& m) {
    const double det = determinant(m);
    double volume = 1;  // if the axes were perpendicular: a small transform is not singular
    for (std::size_t c = 0; c < 3; ++c) volume *= std::hypot(m(0, c), m(1, c), m(2, c));
    if (!(std::abs(det) > 1e-12 * volume)) return std::nullopt;
    Affine3D result;
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column) {
            const std::size_t r1 = (column + 1) % 3;
            const std::size_t r2 = (column + 2) % 3;
            const std::size_t c1 = (row + 1) % 3;
            const std::size_t c2 = (row + 2) % 3;
            result(row, column) = (m(r1, c1) * m(r2, c2) - m(r1, c2) * m(r2, c1)) / det;
        }
    }
    const Vector3 origin = image_of_direction(result, {m(0, 3), m(1, 3), m(2, 3)});
    for (std::size_t row = 0; row < 3; ++row) result(row, 3) = -origin[row];
    return result;
}

Affine3D flattened(const Affine3D& m) {
    Affine3D flat = m;
    flat.rows[2] = {0, 0, 1, 0};
    flat(0, 2) = 0;
    flat(1, 2) = 0;
    return flat;
}

bool is_linear_identity(const Affine3D& m, double tolerance) {
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column) {
            if (std::abs(m(row, column) - (row == column ? 1 : 0)) > tolerance) return false;
        }
    }
    return true;
}

bool is_identity(const Affine3D& m, double tolerance) {
    for (std::size_t row = 0; row < 3; ++row) {
        if (std::abs(m(row, 3)) > tolerance) return false;
    }
    return is_linear_identity(m, tolerance);
}

Vector3 rotation_angles(const Affine3D& m) {
    const double sine = std::fmin(1, std::fmax(-1, m(0, 2)));
    const double y = std::asin(sine);
    if (std::abs(sine) > 1 - 1e-12) {  // gimbal lock: x and z rotate about the same axis
        return {std::atan2(m(2, 1), m(1, 1)) / kDegree, y / kDegree, 0};
    }
    return {std::atan2(-m(1, 2), m(2, 2)) / kDegree, y / kDegree, std::atan2(-m(0, 1), m(0, 0)) / kDegree};
}

double nearest_turn(double degrees, double near) {
    return degrees + 360 * std::round((near - degrees) / 360);
}

}  // namespace host::model
