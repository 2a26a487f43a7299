// Eigenvalues of symmetric 3x3 matrices by cyclic rotations.
#include <qc/core/internal/symmetric3.h>

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace {

using qnInternal::Matrix3;

/// Turns the plane of axes p and q so that m[p][q] becomes 0; `axes` turns along. An element that is
/// a rounding to both elements on the diagonal turns nothing.
void rotate(Matrix3& m, Matrix3& axes, std::size_t p, std::size_t q)
{
    if (m[p][p] + m[p][q] == m[p][p] && m[q][q] + m[p][q] == m[q][q]) {
        m[p][q] = 0.0;
        m[q][p] = 0.0;
        return;
    }
    double const theta = (m[q][q] - m[p][p]) / (2.0 * m[p][q]);
    // A square beyond the largest double means no turn.
    double const root = std::sqrt(theta * theta + 1.0);
    double const tangent = std::copysign(1.0, theta) / (std::fabs(theta) + root);
    double const cosine = 1.0 / std::sqrt(tangent * tangent + 1.0);
    double const sine = tangent * cosine;
    for (std::size_t k = 0; k < 3; ++k) {
        double const kp = m[k][p];
        double const kq = m[k][q];
        m[k][p] = cosine * kp - sine * kq;
        m[k][q] = sine * kp + cosine * kq;
    }
    for (std::size_t k = 0; k < 3; ++k) {
        double const pk = m[p][k];
        double const qk = m[q][k];
        m[p][k] = cosine * pk - sine * qk;
        m[q][k] = sine * pk + cosine * qk;
        double const ap = axes[p][k];
        double const aq = axes[q][k];
        axes[p][k] = cosine * ap - sine * aq;
        axes[q][k] = sine * ap + cosine * aq;
    }
    m[p][q] = 0.0;
    m[q][p] = 0.0;
}

}  // namespace

qnInternal::Eigen3 qnInternal::eigenOfSymmetric(Matrix3 matrix)
{
    constexpr int kSweeps = 30;  // convergence is quadratic: 5 or 6 do
    Matrix3 axes{{{1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}, {0.0, 0.0, 1.0}}};
    for (int sweep = 0; sweep < kSweeps; ++sweep) {
        if (matrix[0][1] == 0.0 && matrix[0][2] == 0.0 && matrix[1][2] == 0.0)
            break;
        rotate(matrix, axes, 0, 1);
        rotate(matrix, axes, 0, 2);
        rotate(matrix, axes, 1, 2);
    }
    std::array<std::size_t, 3> order{0, 1, 2};
    std::sort(order.begin(), order.end(),
              [&](std::size_t a, std::size_t b) { return matrix[a][a] < matrix[b][b]; });
    Eigen3 result;
    for (std::size_t k = 0; k < 3; ++k) {
        result.values[k] = matrix[order[k]][order[k]];
        result.vectors[k] = axes[order[k]];
    }
    return result;
}
