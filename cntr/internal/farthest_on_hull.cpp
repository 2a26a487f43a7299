// Antipodal vertices of a hull, by the directions of its edges in order.
#include "cntr/internal/farthest_on_hull.h"

#include "cntr/internal/box.h"

#include <qc/core/convex_hull.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <functional>
#include <limits>

namespace qnInternal {

namespace {

using Points = std::vector<qcVector<2>>;

/// Parts of the extent: how short an edge of the hull may be, and how near a vertex another point.
constexpr double kShortestEdge = 1e-6;
constexpr double kNearVertex = 1e-7;

/// How far directions may be off those of a vertex, in units of aroundSquare().
constexpr double kOffNormal = 1e-7;

/// Of an outline that is taken for its hull every turn is this large, far above its rounding; in units of
/// aroundSquare(). Those of a hull are above 0, but for rounding.
constexpr double kLeastTurn = 1e-12;
constexpr double kAnyTurn = -1;

/// So many pairs for each vertex of the hull are looked at before it is left to others.
constexpr std::size_t kMostPairsAVertex = 64;

/// Where a direction meets the square with corners on the axes, from 0 to 4 along it: grows with the
/// angle, by no more than it, and by 2 for half a turn.
double aroundSquare(qcVector<2> const& direction)
{
    double const part = direction.y() / (std::fabs(direction.x()) + std::fabs(direction.y()));
    if (direction.x() < 0)
        return 2 - part;
    return direction.y() < 0 ? 4 + part : part;
}

/// For each vertex of a hull, the first of the points that equal it.
class FirstOfVertex {
public:
    FirstOfVertex(Points const& hull, Box const& box, double near)
        : hull_(hull), low_(box.min.x()), near_(near),
          bucketsPerUnit_(static_cast<double>(hull.size()) / (box.max.x() - box.min.x())),
          begin_(hull.size() + 2, 0), vertices_(hull.size()), first_(hull.size(), kNone)
    {
        for (auto const& vertex : hull)
            ++begin_[bucketOf(vertex.x()) + 1];
        for (std::size_t i = 1; i < begin_.size(); ++i)
            begin_[i] += begin_[i - 1];
        auto next = begin_;
        for (std::size_t v = 0; v < hull.size(); ++v)
            vertices_[next[bucketOf(hull[v].x())]++] = v;
    }

    /// False where the point is near a vertex without being equal to it.
    bool add(qcVector<2> const& point, std::size_t index)
    {
        std::size_t const end = begin_[bucketOf(point.x() + near_) + 1];
        for (std::size_t i = begin_[bucketOf(point.x() - near_)]; i < end; ++i) {
            std::size_t const v = vertices_[i];
            qcVector<2> const d = hull_[v] - point;
            if (d == qcVector<2>())
                first_[v] = std::min(first_[v], index);
            else if (std::fabs(d.x()) <= near_ && std::fabs(d.y()) <= near_)
                return false;
        }
        return true;
    }

    std::size_t operator[](std::size_t vertex) const { return first_[vertex]; }

private:
    static constexpr std::size_t kNone = std::numeric_limits<std::size_t>::max();

    std::size_t bucketOf(double x) const
    {
        double const bucket = (x - low_) * bucketsPerUnit_;
        return bucket > 0 ? static_cast<std::size_t>(
                                std::min(bucket, static_cast<double>(hull_.size() - 1)))
                          : 0;
    }

    Points const& hull_;
    double low_;
    double near_;
    double bucketsPerUnit_;
    std::vector<std::size_t> begin_;     // per bucket, and past the last
    std::vector<std::size_t> vertices_;  // by bucket
    std::vector<std::size_t> first_;
};

/// The directions of the edges that leave the vertices at(0) to at(count - 1), twice round, ever
/// growing. Empty where these turn to the left by less than `leastTurn` somewhere, or more than once
/// around: of most outlines that are not convex that is seen at the first few points.
template <class VertexAt>
std::vector<double> directionsTwice(std::size_t count, double leastTurn, VertexAt const& at)
{
    std::vector<double> around{aroundSquare(at(1) - at(0))};
    around.reserve(2 * count);
    double turns = 0;
    auto const isTurn = [&](double step) { return step >= leastTurn && step <= 2 - leastTurn; };
    for (std::size_t i = 1; i < count; ++i) {
        double const last = around.back();
        double const next = aroundSquare(at(i + 1 < count ? i + 1 : 0) - at(i));
        if (turns + next < last - 1)
            turns += 4;
        if (!isTurn(turns + next - last) || turns + next > around[0] + 4 - leastTurn)
            return {};
        around.push_back(turns + next);
    }
    if (!isTurn(around[0] + 4 - around.back()))
        return {};
    for (std::size_t i = 0; i < count; ++i)
        around.push_back(around[i] + 4);
    return around;
}

/// Calls visit(i, j) for the pairs of vertices whose normals are opposite, or nearly so, each pair at
/// least once; false where they are too many. `around` are the directions of the edges twice.
template <class Visit>
bool forEachAntipodal(std::vector<double> const& around, Visit const& visit)
{
    std::size_t const count = around.size() / 2;
    std::size_t left = kMostPairsAVertex * count;
    std::size_t begin = 0;
    // Of two opposite normals one is within half a turn of the first.
    double const halfTurn = around[count - 1] + 2 + 2 * kOffNormal;
    for (std::size_t i = count; i < 2 * count && around[i - 1] <= halfTurn; ++i) {
        while (around[begin] < around[i - 1] - 2 - kOffNormal)
            ++begin;
        for (std::size_t j = begin; around[j == 0 ? 0 : j - 1] <= around[i] - 2 + kOffNormal; ++j) {
            if (left-- == 0)
                return false;
            visit(i - count, j < count ? j : j - count);
        }
    }
    return true;
}

/// Whether every edge of the hull is long enough for its direction to tell the antipodal vertices.
bool hasLongEdges(Points const& hull, double extent)
{
    double const least = kShortestEdge * extent;
    auto const isLong = [&](qcVector<2> const& a, qcVector<2> const& b) {
        return (b - a) * (b - a) >= least * least;
    };
    return isLong(hull.back(), hull.front()) &&
           std::adjacent_find(hull.begin(), hull.end(), std::not_fn(isLong)) == hull.end();
}

/// The farthest of the antipodal pairs; placeOf(vertex) is that of the first point at a vertex.
template <class Places>
std::optional<FarthestPair>
farthestVertices(Points const& points, std::vector<double> const& around, Places const& placeOf)
{
    FarthestSoFar farthest(points);
    if (around.empty() || !forEachAntipodal(around, [&](std::size_t i, std::size_t j) {
            if (i != j)
                farthest.consider(placeOf(i), placeOf(j));
        }))
        return std::nullopt;
    return farthest.pair();
}

Box boxOfAll(Points const& points)
{
    Box box = boxOf(points.front());
    for (auto const& point : points)
        enclose(box, point);
    return box;
}

double extentOf(Box const& box)
{
    return (box.max - box.min).len();
}

}  // namespace

std::optional<FarthestPair> farthestPairOfConvex(Points const& points)
{
    std::size_t const count = points.size();
    auto const round = [](std::size_t vertex) { return vertex; };
    auto const back = [count](std::size_t vertex) { return count - 1 - vertex; };
    auto const farthest = [&](auto const& placeOf) -> std::optional<FarthestPair> {
        auto const around = directionsTwice(
            count, kLeastTurn, [&](std::size_t vertex) { return points[placeOf(vertex)]; });
        if (around.empty() || !hasLongEdges(points, extentOf(boxOfAll(points))))
            return std::nullopt;
        return farthestVertices(points, around, placeOf);
    };
    if (count < 3)
        return std::nullopt;
    bool const left = (points[1] - points[0]).cross(points[2] - points[1]) > 0;
    return left ? farthest(round) : farthest(back);
}

std::optional<FarthestPair> farthestPairOnHull(Points const& points)
{
    Points hull;
    qfConvexHull(points, hull);
    if (hull.size() < 3)
        return std::nullopt;
    Box const box = boxOfAll(hull);
    double const extent = extentOf(box);
    if (!hasLongEdges(hull, extent))
        return std::nullopt;
    FirstOfVertex first(hull, box, kNearVertex * extent);
    for (std::size_t i = 0; i < points.size(); ++i)
        if (!first.add(points[i], i))
            return std::nullopt;
    auto const around =
        directionsTwice(hull.size(), kAnyTurn, [&](std::size_t vertex) { return hull[vertex]; });
    return farthestVertices(points, around, [&](std::size_t vertex) { return first[vertex]; });
}

}  // namespace qnInternal
