// 4 x 4 matrices for points as rows, in the order and with the signs that players use.
#include "matrix.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace lottie::looks {
namespace {

struct Turn {
    double cosine;
    double sine;
};

Turn turn(double degrees) {
    const double radians = degrees * std::numbers::pi / 180;
    return {std::cos(radians), std::sin(radians)};
}

}  // namespace

Matrix Matrix::then(const Matrix& next) const {
    Matrix product;
    for (std::size_t row = 0; row < 4; ++row) {
        for (std::size_t column = 0; column < 4; ++column) {
            double sum = 0;
            for (std::size_t i = 0; i < 4; ++i) sum += m_[row][i] * next.m_[i][column];
            product.m_[row][column] = sum;
        }
    }
    return product;
}

bool Matrix::is_finite() const {
    for (const auto& row : m_) {
        if (!std::all_of(row.begin(), row.end(), [](double one) { return std::isfinite(one); })) return false;
    }
    return true;
}

Point Matrix::map(Point p) const {
    return {p.x * m_[0][0] + p.y * m_[1][0] + m_[3][0], p.x * m_[0][1] + p.y * m_[1][1] + m_[3][1]};
}

Matrix Matrix::translation(double x, double y, double z) {
    Matrix matrix;
    matrix.m_[3] = {x, y, z, 1};
    return matrix;
}

Matrix Matrix::scaling(double x, double y, double z) {
    Matrix matrix;
    matrix.m_[0][0] = x;
    matrix.m_[1][1] = y;
    matrix.m_[2][2] = z;
    return matrix;
}

Matrix Matrix::turn_x(double degrees) {
    const auto [c, s] = turn(degrees);
    Matrix matrix;
    matrix.m_[1] = {0, c, -s, 0};
    matrix.m_[2] = {0, s, c, 0};
    return matrix;
}

Matrix Matrix::turn_y(double degrees) {
    const auto [c, s] = turn(degrees);
    Matrix matrix;
    matrix.m_[0] = {c, 0, s, 0};
    matrix.m_[2] = {-s, 0, c, 0};
    return matrix;
}

Matrix Matrix::turn_z(double degrees) {
    const auto [c, s] = turn(degrees);
    Matrix matrix;
    matrix.m_[0] = {c, s, 0, 0};
    matrix.m_[1] = {-s, c, 0, 0};
    return matrix;
}

}  // namespace lottie::looks
