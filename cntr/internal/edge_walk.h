/// The order in which the edges of a contour are walked, once for the whole library.
#pragma once

#include <qc/core/vector.h>

#include <cstddef>
#include <vector>

namespace qnInternal {

/// Number of edges of `pointCount` points.
inline std::size_t edgeCount(std::size_t pointCount, bool closed)
{
    return closed || pointCount == 0 ? pointCount : pointCount - 1;
}

/// Start of edge k: the last point for the closing edge, which is edge 0 of a closed contour.
inline qcVector<2> const& edgeStart(std::vector<qcVector<2>> const& points, bool closed,
                                    std::size_t k)
{
    return closed ? points[k == 0 ? points.size() - 1 : k - 1] : points[k];
}

/// End of edge k.
inline qcVector<2> const& edgeEnd(std::vector<qcVector<2>> const& points, bool closed,
                                  std::size_t k)
{
    return closed ? points[k] : points[k + 1];
}

/// Calls visit(k, from, to) in edge order: a closed contour begins with its closing edge, k = 0.
template <class Visit>
void forEachEdge(std::vector<qcVector<2>> const& points, bool closed, Visit visit)
{
    std::size_t const count = edgeCount(points.size(), closed);
    for (std::size_t k = 0; k < count; ++k)
        visit(k, edgeStart(points, closed, k), edgeEnd(points, closed, k));
}

}  // namespace qnInternal
