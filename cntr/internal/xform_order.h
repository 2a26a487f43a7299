/// The order of transforms as keys, and when a transform counts as the identity.
#pragma once

#include "cntr/internal/tolerances.h"

#include <qc/core/compare.h>
#include <qc/core/matrix.h>

#include <array>

namespace qnInternal {

inline std::array<double, 6> xformKey(qcXform<2> const& xform)
{
    qcMatrix<2> const& m = xform.matrix();
    return {xform.trans().x(), xform.trans().y(), m.element(0, 0),
            m.element(0, 1),   m.element(1, 0),   m.element(1, 1)};
}

/// Lexicographic: the translation's x and y, then the matrix row by row. An order only among
/// transforms without NaN (see isOrdered()).
struct XformLess {
    bool operator()(qcXform<2> const& a, qcXform<2> const& b) const
    {
        return xformKey(a) < xformKey(b);
    }
};

/// Whether `xform` can be a key: NaN would break the order of a map.
inline bool isOrdered(qcXform<2> const& xform)
{
    for (double const value : xformKey(xform))
        if (value != value)
            return false;
    return true;
}

inline bool isIdentity(qcXform<2> const& xform)
{
    return qfRealEq(xform.trans(), qcVector<2>(), kSamePoint) &&
           qfRealEq(xform.matrix(), qcMatrix<2>(), kSamePoint);
}

}  // namespace qnInternal
