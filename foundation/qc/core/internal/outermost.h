/// \file
/// One pass over many points: which reach furthest, and the boxes of consecutive ones.
#pragma once

#include <qc/core/vector.h>

#include <array>
#include <cstddef>
#include <vector>

namespace qnInternal {

/// So many consecutive points share a box. Neighbours on an outline are near each other, so that
/// most questions about them are answered by their box.
inline constexpr std::size_t kPointsPerBox = 16;

/// The box of a block of points.
struct BlockBox {
    qcVector<2> min;
    qcVector<2> max;
};

/// What one pass over points finds.
struct Outermost {
    /// Points furthest in eight directions, counter-clockwise: of least x, of least x + y, of least
    /// y, and so on.
    std::array<qcVector<2>, 8> corners;
    /// Of each kPointsPerBox points; the last one encloses its block and perhaps some points before.
    std::vector<BlockBox> boxes;
};

/// Looks at all points, at least kPointsPerBox of them. False where a coordinate is not finite; then
/// `found` means nothing.
bool findOutermost(std::vector<qcVector<2>> const& points, Outermost& found);

}  // namespace qnInternal
