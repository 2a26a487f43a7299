/// The edge or vertex nearest to a point, found through an index of edge boxes.
#pragma once

#include "cntr/internal/edge_index.h"

#include <qc/core/vector.h>

#include <cstddef>
#include <vector>

namespace qnInternal {

/// The edge with the smallest distance to `point`, the first on a tie: what the plain loop over
/// all edges finds. `index` is regular and `point` within its bounds.
std::size_t nearestEdge(EdgeIndex const& index, std::vector<qcVector<2>> const& points,
                        qcVector<2> const& point);

/// Up to here the loop over all vertices is faster than making an index, and nearly as fast as one
/// that is there (bench/nearest_bench.cpp).
inline constexpr std::size_t kMaxPlainVertices = 128;

/// The vertex with the smallest distance to `point`, the first on a tie; 0 where no distance is finite.
std::size_t nearestVertex(std::vector<qcVector<2>> const& points, qcVector<2> const& point);

/// The same through an index, as nearestEdge().
std::size_t nearestVertex(EdgeIndex const& index, std::vector<qcVector<2>> const& points,
                          qcVector<2> const& point);

/// Whether distances from `point` can be bounded as nearestEdge() does.
bool isRegularPoint(qcVector<2> const& point);

}  // namespace qnInternal
