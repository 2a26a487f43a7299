/// Which edges come close to which, however long and oblique they are.
///
/// Boxes of long oblique edges overlap where the edges are far apart, as those of slanted teeth or of
/// spokes do; a search by boxes alone then compares all with all. This one goes by upright slabs
/// between the ends of the edges. Within a slab that an edge spans it is a line, and lines that do not
/// meet there lie in one order, from below to above, in which few must be looked at.
#pragma once

#include "cntr/internal/edge_boxes.h"

#include <cstddef>
#include <functional>
#include <optional>

namespace qnInternal {

/// Whether this pair is one that is looked for; the search then ends.
using AcceptsPair = std::function<bool(std::size_t, std::size_t)>;

/// Asks accepts(i, k) about edges i > k of an outline, until it accepts a pair; whether it did. Asked
/// about are all pairs of edges that a HitQuery can find to meet, and others that nearly do; some are
/// asked about several times. Nothing where they are many more than edges, and not all of them were asked
/// about. `scale` bounds the coordinates and is no larger than kLargestRegular.
///
/// O(n log^2 n) where edges cross each other little; about O(n^1.5) where those of one outline that is
/// compared with another do.
std::optional<bool> anyClosePair(Outline const& outline, double scale, AcceptsPair const& accepts);

/// The same about edges i of one outline and k of another.
std::optional<bool> anyClosePair(Outline const& outline, Outline const& other, double scale,
                                 AcceptsPair const& accepts);

}  // namespace qnInternal
