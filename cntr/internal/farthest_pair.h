/// The two points of a contour that are farthest apart.
#pragma once

#include "cntr/internal/edge_index.h"

#include <qc/core/vector.h>

#include <cstddef>
#include <vector>

namespace qnInternal {

/// Two points by index, first < second, and their distance; 0 where no two differ.
struct FarthestPair {
    double distance = 0;
    std::size_t first = 0;
    std::size_t second = 0;
};

/// The pair of largest distance, the first in index order on a tie. Quadratic.
FarthestPair farthestPair(std::vector<qcVector<2>> const& points);

/// The same through a regular index: pairs of boxes are looked at whose corners are far enough apart.
FarthestPair farthestPair(std::vector<qcVector<2>> const& points, EdgeIndex const& index);

}  // namespace qnInternal
