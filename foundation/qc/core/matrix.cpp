// Inverses of matrices and affine transforms.
#include <qc/core/exception.h>
#include <qc/core/matrix.h>

#include <algorithm>
#include <cmath>

// The formatter would move the const behind the name.
// clang-format off
qcXform<2> const qcXform<2>::I;
// clang-format on

qcMatrix<2> qcMatrix<2>::inverse() const
{
    double const largest = std::max(std::max(std::fabs(e00_), std::fabs(e01_)),
                                    std::max(std::fabs(e10_), std::fabs(e11_)));
    // Elements of about 1 keep the determinant away from over- and underflow.
    double const a = e00_ / largest;
    double const b = e01_ / largest;
    double const c = e10_ / largest;
    double const d = e11_ / largest;
    double const determinant = a * d - b * c;
    if (!(std::fabs(determinant) > 0.0))  // NaN too: a zero matrix, elements that are not finite
        throw qcMathError::Singular();
    qcMatrix const inverse(d / determinant / largest, -b / determinant / largest,
                           -c / determinant / largest, a / determinant / largest);
    if (!std::isfinite(inverse.e00_) || !std::isfinite(inverse.e01_) ||
        !std::isfinite(inverse.e10_) || !std::isfinite(inverse.e11_))
        throw qcMathError::Singular();
    return inverse;
}

qcXform<2> qcXform<2>::inverse() const
{
    qcMatrix<2> const back = matrix_.inverse();
    return {back, -(back * trans_)};
}
