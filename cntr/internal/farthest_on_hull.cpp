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

/// So many pairs for each vertex of the hull are looked at before it is left to others.
constexpr std::size_t kMostPairs = 64;

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

/// The directions of the edges that leave the vertices, twice round, ever growing.
std::vector<double> directionsTwice(Points const& hull)
{
    std::size_t const count = hull.size();
    std::vector<double> around(2 * count);
    for (std::size_t i = 0; i + 1 < count; ++i)
        around[i] = aroundSquare(hull[i + 1] - hull[i]);
    around[count - 1] = aroundSquare(hull.front() - hull.back());
    std::copy_n(around.begin(), count, around.begin() + static_cast<std::ptrdiff_t>(count));
    double turns = 0;
    for (std::size_t i = 1; i < around.size(); ++i) {
        if (turns + around[i] < around[i - 1] - 2)
            turns += 4;
        around[i] += turns;
    }
    return around;
}

/// Calls visit(i, j) for the pairs of vertices whose normals are opposite, or nearly so, each pair at
/// least once; false where they are too many.
template <class Visit>
bool forEachAntipodal(Points const& hull, Visit const& visit)
{
    std::size_t const count = hull.size();
    std::vector<double> const around = directionsTwice(hull);
    std::size_t left = kMostPairs * count;
    std::size_t begin = 0;
    for (std::size_t i = count; i < 2 * count; ++i) {
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

/// Where the vertices of a hull stand among points that are nothing but these, one after the other,
/// in their order or against it.
class RoundOfVertices {
public:
    /// Nothing for other points.
    static std::optional<RoundOfVertices> of(Points const& points, Points const& hull)
    {
        if (points.size() != hull.size())
            return std::nullopt;
        auto const start = std::find(points.begin(), points.end(), hull.front());
        if (start == points.end())
            return std::nullopt;
        RoundOfVertices round(start - points.begin(), hull.size());
        round.backwards_ = !(points[round[1]] == hull[1]);
        for (std::size_t i = 0; i < hull.size(); ++i)
            if (!(points[round[i]] == hull[i]))
                return std::nullopt;
        return round;
    }

    std::size_t operator[](std::size_t vertex) const
    {
        std::size_t const place = backwards_ ? first_ + count_ - vertex : first_ + vertex;
        return place < count_ ? place : place - count_;
    }

private:
    RoundOfVertices(std::ptrdiff_t first, std::size_t count)
        : first_(static_cast<std::size_t>(first)), count_(count)
    {
    }

    std::size_t first_;
    std::size_t count_;
    bool backwards_ = false;
};

/// Whether every edge of the hull is at least so long.
bool hasEdgesOf(Points const& hull, double length)
{
    auto const isLong = [&](qcVector<2> const& a, qcVector<2> const& b) {
        return a.distance(b) >= length;
    };
    return isLong(hull.back(), hull.front()) &&
           std::adjacent_find(hull.begin(), hull.end(), std::not_fn(isLong)) == hull.end();
}

/// The farthest of the antipodal pairs; placeOf[vertex] is that of the first point at a vertex.
template <class Places>
std::optional<FarthestPair> farthestVertices(Points const& points, Points const& hull,
                                             Places const& placeOf)
{
    FarthestSoFar farthest(points);
    if (!forEachAntipodal(hull, [&](std::size_t i, std::size_t j) {
            if (i != j)
                farthest.consider(placeOf[i], placeOf[j]);
        }))
        return std::nullopt;
    return farthest.pair();
}

}  // namespace

std::optional<FarthestPair> farthestPairOnHull(Points const& points)
{
    Points hull;
    qfConvexHull(points, hull);
    if (hull.size() < 3)
        return std::nullopt;
    Box box = boxOf(hull.front());
    for (auto const& vertex : hull)
        enclose(box, vertex);
    double const extent = (box.max - box.min).len();
    if (!hasEdgesOf(hull, kShortestEdge * extent))
        return std::nullopt;
    if (auto const round = RoundOfVertices::of(points, hull))
        return farthestVertices(points, hull, *round);
    FirstOfVertex first(hull, box, kNearVertex * extent);
    for (std::size_t i = 0; i < points.size(); ++i)
        if (!first.add(points[i], i))
            return std::nullopt;
    return farthestVertices(points, hull, first);
}

}  // namespace qnInternal
