/// \file
/// On which side of a line a point lies, decided exactly.
#pragma once

#include <qc/core/vector.h>

namespace qnInternal {

/// The sign of (b - a) x (c - a): 1 where c lies left of the way from a to b (y up), -1 right of
/// it, 0 on the line. Exact for finite coordinates unless a product over- or underflows.
int orientation(qcVector<2> const& a, qcVector<2> const& b, qcVector<2> const& c) noexcept;

}  // namespace qnInternal
