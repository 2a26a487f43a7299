/// \file
/// Points in order from left to right.
#pragma once

#include <qc/core/vector.h>

#include <vector>

namespace qnInternal {

/// The order from left to right, of points above each other upwards.
inline bool isBefore(qcVector<2> const& a, qcVector<2> const& b) noexcept
{
    return a.x() < b.x() || (a.x() == b.x() && a.y() < b.y());
}

/// Sorts finite points by isBefore(); equal ones keep their order. O(n log r) for points in r runs
/// to the right or to the left, of which outlines have few; O(n log n) at worst.
void sortFromLeft(std::vector<qcVector<2>>& points);

}  // namespace qnInternal
