/// \file
/// Eigenvalues of symmetric 3x3 matrices.
#pragma once

#include <array>

namespace qnInternal {

using Vector3 = std::array<double, 3>;
using Matrix3 = std::array<Vector3, 3>;

/// Eigenvalues ascending; `vectors[k]` is the unit eigenvector of `values[k]`.
struct Eigen3 {
    Vector3 values;
    Matrix3 vectors;
};

/// Eigenvalues and eigenvectors of a symmetric matrix, by rotations that each bring one pair of
/// elements to 0. Small eigenvalues are right to a rounding of the largest one.
Eigen3 eigenOfSymmetric(Matrix3 matrix);

}  // namespace qnInternal
