/// \file
/// Which points cannot be vertices of the convex hull, by an octagon of outermost ones.
#pragma once

#include <qc/core/internal/outermost.h>

namespace qnInternal {

/// Replaces `below` by points among which are all vertices of the lower chain of the convex hull,
/// from the leftmost vertex to the rightmost, and `above` likewise for the upper chain. The order
/// stays. Left out are only points that are certain to lie strictly on the inner side of the chain.
/// `points` are those that `outermost` was found of.
void chainCandidates(std::vector<qcVector<2>> const& points, Outermost const& outermost,
                     std::vector<qcVector<2>>& below, std::vector<qcVector<2>>& above);

}  // namespace qnInternal
