/// Whether any edge of a contour meets another, found through an index of edge boxes.
#pragma once

#include "cntr/internal/edge_index.h"

#include <qc/core/vector.h>

#include <vector>

namespace qnInternal {

/// Whether any edge, as a query segment that leaves out edges at its ends, meets an edge: what asking
/// every edge against every edge gives. `index` is regular.
bool anyEdgeMeetsAnother(EdgeIndex const& index, std::vector<qcVector<2>> const& points,
                         bool closed);

/// The same without an index for at most kMaxPlainEdges edges, with coordinates that are finite and
/// no larger than kLargestRegular.
bool anyOfFewEdgesMeets(std::vector<qcVector<2>> const& points, bool closed);

}  // namespace qnInternal
