// 4 x 4 matrices for points as rows, in the order and with the signs that players use.
#pragma once

#include <array>

namespace lottie::looks {

struct Point {
    double x = 0;
    double y = 0;

    friend bool operator==(const Point&, const Point&) = default;
};

class Matrix {
  public:
    Matrix() = default;  // leaves everything in place

    // The transform of a point that goes through this matrix first.
    Matrix then(const Matrix& next) const;
    bool is_finite() const;
    friend bool operator==(const Matrix&, const Matrix&) = default;
    // Where a point of the plane comes to lie, seen from the front.
    Point map(Point p) const;

    static Matrix translation(double x, double y, double z);
    static Matrix scaling(double x, double y, double z);
    // Degrees; turn_z is clockwise where y points down.
    static Matrix turn_x(double degrees);
    static Matrix turn_y(double degrees);
    static Matrix turn_z(double degrees);

  private:
    std::array<std::array<double, 4>, 4> m_ = {{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}};
};

}  // namespace lottie::looks
