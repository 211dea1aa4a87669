// Affine transforms of space, and rotations as angles.
#pragma once

#include <array>
#include <optional>

namespace host::model {

using Point = std::array<double, 3>;

// Columns are the images of the axes; column 3 is where the origin goes.
struct Matrix {
    std::array<std::array<double, 4>, 3> rows = {{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}}};

    double operator()(std::size_t row, std::size_t column) const { return rows[row][column]; }
    double& operator()(std::size_t row, std::size_t column) { return rows[row][column]; }

    static Matrix translation(const Point& by);
    static Matrix scaling(const Point& by);
    // Degrees about x, y, z, applied to a point z first: Rx * Ry * Rz.
    static Matrix rotation(const Point& degrees);
};

Matrix operator*(const Matrix& a, const Matrix& b);
Point image_of(const Matrix& m, const Point& p);            // to a place
Point image_of_direction(const Matrix& m, const Point& v);  // to a direction
double determinant(const Matrix& m);                        // of the linear part
Matrix transposed(const Matrix& m);                         // of the linear part, without translation
std::optional<Matrix> inverse(const Matrix& m);             // null if singular
Matrix flattened(const Matrix& m);                          // its effect within the plane z = 0, z left alone
bool is_identity(const Matrix& m, double tolerance);
bool is_linear_identity(const Matrix& m, double tolerance);

// Degrees for rotation(), of a pure rotation.
Point rotation_angles(const Matrix& m);

// The angle congruent to `degrees` that is nearest to `near`.
double nearest_turn(double degrees, double near);

}  // namespace host::model
