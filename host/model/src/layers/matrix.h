// Affine transforms in 3D, and rotations as angles.
#pragma once

#include <array>
#include <optional>

namespace host::model {

using Vector3 = std::array<double, 3>;

// Columns are the images of the axes; column 3 is the image of the origin.
struct Affine3D {
    std::array<std::array<double, 4>, 3> rows = {{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}}};

    double operator()(std::size_t row, std::size_t column) const { return rows[row][column]; }
    double& operator()(std::size_t row, std::size_t column) { return rows[row][column]; }

    static Affine3D translation(const Vector3& by);
    static Affine3D scaling(const Vector3& by);
    // Degrees about x, y, z, applied to a point z first: Rx * Ry * Rz.
    static Affine3D rotation(const Vector3& degrees);
};

Affine3D operator*(const Affine3D& a, const Affine3D& b);
Vector3 image_of(const Affine3D& m, const Vector3& p);            // of a point
Vector3 image_of_direction(const Affine3D& m, const Vector3& v);  // of a direction
double determinant(const Affine3D& m);                            // of the linear part
Affine3D transposed(const Affine3D& m);                           // of the linear part, without translation
std::optional<Affine3D> inverse(const Affine3D& m);               // null if singular
Affine3D flattened(const Affine3D& m);                            // its effect within the plane z = 0
bool is_identity(const Affine3D& m, double tolerance);
bool is_linear_identity(const Affine3D& m, double tolerance);

// The angles for rotation(), in degrees, of a pure rotation.
Vector3 rotation_angles(const Affine3D& m);

// The angle congruent to `degrees` that is nearest to `near`.
double nearest_turn(double degrees, double near);

}  // namespace host::model
