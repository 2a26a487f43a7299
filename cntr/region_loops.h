/// From the boundary walk of an outline to its outer hull.
#pragma once

#include <qc/core/vector.h>

#include <vector>

namespace qnInternal {

/// Cuts a closed walk into simple loops at vertices it passes twice, drops loops that lie inside
/// another and joins those that share a vertex; gives the first of what remains.
///
/// Throws qcContourDefs::EmptyContour where a cut leaves a loop of a single vertex.
std::vector<qcVector<2>> outermostLoops(std::vector<qcVector<2>> const& boundary);

}  // namespace qnInternal
