/// The order in which the edges of a contour are walked, once for the whole library.
#pragma once

#include <qc/core/vector.h>

#include <array>
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
    if (points.empty())
        return;
    qcVector<2> const* from = closed ? &points.back() : &points.front();
    qcVector<2> const* to = closed ? &points.front() : from + 1;
    std::size_t const count = edgeCount(points.size(), closed);
    for (std::size_t k = 0; k < count; ++k, from = to++)
        visit(k, *from, *to);
}

/// Calls visit(length) for every edge, in edge order.
template <class Visit>
void forEachEdgeLength(std::vector<qcVector<2>> const& points, bool closed, Visit visit)
{
    if (closed && !points.empty())
        visit(points.back().distance(points.front()));
    // Roots by runs, which the compiler takes several at a time; the order is the same.
    constexpr std::size_t kRun = 16;
    std::array<double, kRun> lengths{};
    std::size_t i = 0;
    for (; i + kRun < points.size(); i += kRun) {
        for (std::size_t j = 0; j < kRun; ++j)
            lengths[j] = points[i + j].distance(points[i + j + 1]);
        for (double const length : lengths)
            visit(length);
    }
    for (; i + 1 < points.size(); ++i)
        visit(points[i].distance(points[i + 1]));
}

}  // namespace qnInternal
