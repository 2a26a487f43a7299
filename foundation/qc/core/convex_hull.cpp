// Convex hull: lower and upper chain over the sorted points, each turn decided exactly.
#include <qc/core/convex_hull.h>
#include <qc/core/internal/hull_filter.h>
#include <qc/core/internal/orientation.h>
#include <qc/core/internal/sort_points.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>

namespace {

using namespace qnInternal;
using Points = std::vector<qcVector<2>>;

/// Up to so many points sorting them all is as fast as looking for those that need not be sorted.
constexpr std::size_t kMaxPlainPoints = 20;

/// The points whose coordinates are finite.
Points finitePoints(Points const& points)
{
    Points finite;
    finite.reserve(points.size());
    std::copy_if(points.begin(), points.end(), std::back_inserter(finite),
                 [](qcVector<2> const& p) { return std::isfinite(p.x()) && std::isfinite(p.y()); });
    return finite;
}

template <class Places>
double largestCoordinate(Places const& places)
{
    double largest = 0.0;
    for (auto const& p : places)
        largest = std::max(largest, std::max(std::fabs(p.x()), std::fabs(p.y())));
    return largest;
}

/// The power of two that keeps products of coordinates, and their rounding errors, in range.
double safeScale(double largest)
{
    if (largest == 0.0 || (largest > 0x1p-300 && largest < 0x1p+500))
        return 1.0;
    return std::ldexp(1.0, std::clamp(-std::ilogb(largest), -1022, 1022));
}

/// Points among which are all vertices of the hull's lower, and of its upper chain, from left to
/// right, and the largest size of a coordinate.
struct Candidates {
    Points below;
    Points above;
    double largest = 0;
};

Candidates candidates(Points const& points)
{
    Candidates found;
    Outermost outermost;
    if (points.size() > kMaxPlainPoints && findOutermost(points, outermost)) {
        found.largest = largestCoordinate(outermost.corners);
        // Scaled turns may lose the smallest coordinates: then no point is left out beforehand.
        if (safeScale(found.largest) == 1.0) {
            chainCandidates(points, outermost, found.below, found.above);
            sortFromLeft(found.below);
            sortFromLeft(found.above);
            return found;
        }
    }
    found.below = finitePoints(points);
    if (found.below.size() > kMaxPlainPoints && found.below.size() < points.size())
        return candidates(found.below);
    sortFromLeft(found.below);
    found.above = found.below;
    found.largest = largestCoordinate(found.below);
    return found;
}

/// Moves the vertices of the chain over [first, last) to its front, and gives their end: what turns
/// left on the way to `end`, which is not among them. Of equal points, which may have zeros of either
/// sign, the last one stays if `lastOfEqual`, else the first one.
template <class Iterator, class Side>
Iterator keepLeftTurns(Iterator first, Iterator last, qcVector<2> const& end, bool lastOfEqual,
                       Side const& side)
{
    Iterator top = first;
    auto const drop = [&](qcVector<2> const& next) {
        while (top - first >= 2 && side(*(top - 2), *(top - 1), next) <= 0)
            --top;
    };
    for (Iterator p = first; p != last && *p != end; ++p) {
        if (top != first && *p == *(top - 1)) {
            if (lastOfEqual)
                *(top - 1) = *p;
            continue;
        }
        drop(*p);
        *top++ = *p;
    }
    drop(end);
    return top;
}

/// The vertices in order; `side` says on which side of the way from a to b a point lies.
template <class Side>
Points hullOf(Candidates& found, Side const& side)
{
    if (found.below.empty())
        return {};
    qcVector<2> const leftmost = found.below.front();
    qcVector<2> const rightmost = found.above.back();
    if (leftmost == rightmost)
        return {leftmost};
    auto const lower = found.below.begin();
    auto const upper = found.above.rbegin();
    auto const lowerEnd = keepLeftTurns(lower, found.below.end(), rightmost, false, side);
    auto const upperEnd = keepLeftTurns(upper, found.above.rend(), leftmost, true, side);
    Points hull;
    hull.reserve(static_cast<std::size_t>((lowerEnd - lower) + (upperEnd - upper)));
    hull.insert(hull.end(), lower, lowerEnd);
    hull.insert(hull.end(), upper, upperEnd);
    return hull;
}

}  // namespace

void qfConvexHull(Points const& points, Points& hull)
{
    Candidates found = candidates(points);
    double const scale = safeScale(found.largest);
    auto const side = [](auto const& a, auto const& b, auto const& c) {
        return orientation(a, b, c);
    };
    auto const scaledSide = [scale](auto const& a, auto const& b, auto const& c) {
        return orientation(a * scale, b * scale, c * scale);
    };
    Points made = scale == 1.0 ? hullOf(found, side) : hullOf(found, scaledSide);
    hull.swap(made);
}
