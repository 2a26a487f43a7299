/// The median of an outline's edge lengths.
#pragma once

#include <qc/core/vector.h>

#include <vector>

namespace qnInternal {

/// Of the lengths from the longest on the one at place count / 2, counted from 0. NaN counts as shorter than
/// any: at another place it would not be an order. At least one edge; linear.
double medianEdgeLength(std::vector<qcVector<2>> const& points, bool closed);

}  // namespace qnInternal
