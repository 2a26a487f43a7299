/// The order of boxes along a space-filling curve, in which boxes near each other in the plane
/// mostly stand near each other.
#pragma once

#include "cntr/internal/box.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace qnInternal {

/// How far along the curve number `number` of some list lies.
struct PlaceOnCurve {
    std::uint32_t along;
    std::uint32_t number;
};

/// A curve through 256 x 256 cells of a square over the root box.
class CurveOverBox {
public:
    /// `root` holds all boxes; its coordinates are no larger than 1e150.
    explicit CurveOverBox(Box const& root);

    /// How far along the curve the middle of a box lies, below 65 536.
    std::uint32_t along(Box const& box) const;

private:
    qcVector<2> min_;
    double cellsPerUnit_;
};

/// Sorts by `along`, keeping the order of equal ones.
void sortAlongCurve(std::vector<PlaceOnCurve>& places);

}  // namespace qnInternal
