/// Where the edges of one outline meet another, found through an index of the other's edge boxes.
#pragma once

#include "cntr/internal/edge_boxes.h"
#include "cntr/internal/edge_index.h"

#include <qc/core/vector.h>

#include <vector>

namespace qnInternal {

/// Where the edges of `others`, each as a query segment with touching ends, meet `outline`: in the
/// order of these edges, and along each. `index` is that of `outline`, and regular; without one,
/// which suits few edges, the coordinates of `outline` are finite.
std::vector<qcVector<2>> meetings(Outline const& outline, EdgeIndex const* index,
                                  Outline const& others);

}  // namespace qnInternal
