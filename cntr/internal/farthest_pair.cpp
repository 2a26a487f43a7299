// The farthest pair of points: all pairs, and a search over pairs of boxes.
#include "cntr/internal/farthest_pair.h"

#include "cntr/internal/farthest_on_hull.h"

#include <algorithm>
#include <limits>
#include <optional>

namespace qnInternal {

namespace {

/// A number that the square of no distance between points of two boxes exceeds; NaN for no box.
double squaredReach(Box const& a, Box const& b)
{
    double const dx = std::max(a.max.x() - b.min.x(), b.max.x() - a.min.x());
    double const dy = std::max(a.max.y() - b.min.y(), b.max.y() - a.min.y());
    return dx * dx + dy * dy;
}

/// The same for one box and the boxes 2 i and 2 i + 1 of a group.
Pair squaredReaches(Box const& a, BoxGroup const& b, std::size_t i)
{
    Pair const dx = larger(a.max.x() - pairAt(b.minX, i), pairAt(b.maxX, i) - a.min.x());
    Pair const dy = larger(a.max.y() - pairAt(b.minY, i), pairAt(b.maxY, i) - a.min.y());
    return dx * dx + dy * dy;
}

double squaredDistance(qcVector<2> const& a, qcVector<2> const& b)
{
    qcVector<2> const d = a - b;
    return d * d;
}

class Search {
public:
    Search(std::vector<qcVector<2>> const& points, EdgeIndex const& index)
        : points_(points), index_(index), farthest_(points)
    {
        // From far point to far point: seldom much short of the farthest pair.
        std::size_t from = 0;
        for (int i = 0; i < 3; ++i) {
            std::size_t const far = farFrom(from);
            if (far != from)
                farthest_.consider(from, far);
            from = far;
        }
    }

    /// Nothing where more pairs of leaves than `mostPairs` would have to be looked at.
    std::optional<FarthestPair> run(std::size_t mostPairs)
    {
        pairsLeft_ = mostPairs;
        if (!visit(index_.levelCount() - 1, 0, 0))
            return std::nullopt;
        return farthest_.pair();
    }

private:
    /// The farthest vertex of the leaf whose box reaches farthest.
    std::size_t farFrom(std::size_t from) const
    {
        std::size_t const leaf = farthestLeaf(boxOf(points_[from]));
        std::size_t farthest = index_.leafBegin(leaf);
        for (std::size_t i = farthest + 1; i < index_.verticesEnd(leaf); ++i)
            if (squaredDistance(points_[from], points_[i]) >
                squaredDistance(points_[from], points_[farthest]))
                farthest = i;
        return farthest;
    }

    std::size_t farthestLeaf(Box const& from) const
    {
        double best = -1;
        std::size_t leaf = 0;
        for (std::size_t node = 0; node < index_.leafCount(); node += EdgeIndex::kFan) {
            BoxGroup const& boxes = index_.group(0, node / EdgeIndex::kFan);
            std::size_t const count = index_.boxesIn(0, node / EdgeIndex::kFan);
            for (std::size_t i = 0; i < count; ++i) {
                double const reach = squaredReaches(from, boxes, i / 2)[i % 2];
                if (reach > best) {
                    best = reach;
                    leaf = index_.leafAt(node + i);
                }
            }
        }
        return leaf;
    }

    /// Which boxes of group `b` may hold a point that is far enough from one in `a`. Reaches of 0, all
    /// in one point, are never far.
    unsigned farEnough(Box const& a, std::size_t level, std::size_t b) const
    {
        BoxGroup const& boxes = index_.group(level, b);
        unsigned const far = eightBits([&](std::size_t i) {
            Pair const reach = squaredReaches(a, boxes, i);
            return bothHold(reach >= both(farthest_.lowest()), reach > Pair{});
        });
        return far & ((1U << index_.boxesIn(level, b)) - 1);
    }

    /// Looks at the pairs of boxes of two groups, the same one or the second behind the first.
    bool visit(std::size_t level, std::size_t a, std::size_t b)
    {
        unsigned const some = a == b ? (1U << index_.boxesIn(level, a)) - 1
                                     : farEnough(index_.box(level + 1, b), level, a);
        return !anyBit(some, [&](std::size_t i) {
            unsigned far = farEnough(index_.group(level, a).box(i), level, b);
            if (a == b)
                far &= ~0U << i;
            std::size_t const node = a * EdgeIndex::kFan + i;
            return anyBit(far, [&](std::size_t j) {
                std::size_t const other = b * EdgeIndex::kFan + j;
                return level == 0 ? !look(index_.leafAt(node), other)
                                  : !visit(level - 1, node, other);
            });
        });
    }

    bool look(std::size_t leaf, std::size_t other)
    {
        if (pairsLeft_ == 0)
            return false;
        --pairsLeft_;
        Box const box = index_.box(0, other);
        std::size_t const otherLeaf = index_.leafAt(other);
        for (std::size_t i = index_.leafBegin(leaf); i < index_.verticesEnd(leaf); ++i) {
            if (squaredReach(boxOf(points_[i]), box) < farthest_.lowest())
                continue;
            for (std::size_t j = index_.leafBegin(otherLeaf); j < index_.verticesEnd(otherLeaf);
                 ++j)
                if (i != j)
                    farthest_.consider(i, j);
        }
        return true;
    }

    std::vector<qcVector<2>> const& points_;
    EdgeIndex const& index_;
    FarthestSoFar farthest_;
    std::size_t pairsLeft_ = 0;
};

/// Below this all distances are taken sooner than they are compared by their squares.
constexpr std::size_t kFew = 8;

FarthestPair farthestOfFew(std::vector<qcVector<2>> const& points)
{
    FarthestPair farthest;
    for (std::size_t i = 0; i < points.size(); ++i)
        for (std::size_t j = i + 1; j < points.size(); ++j) {
            double const d = points[i].distance(points[j]);
            if (d > farthest.distance)
                farthest = {d, i, j};
        }
    return farthest;
}

}  // namespace

FarthestPair farthestPair(std::vector<qcVector<2>> const& points)
{
    if (points.size() < kFew)
        return farthestOfFew(points);
    FarthestSoFar farthest(points);
    for (std::size_t i = 0; i < points.size(); ++i)
        for (std::size_t j = i + 1; j < points.size(); ++j)
            farthest.consider(i, j);
    return farthest.pair();
}

FarthestPair farthestPair(std::vector<qcVector<2>> const& points, EdgeIndex const& index)
{
    // On most outlines a leaf has less than one other that is far enough from it on average. The hull
    // takes as long as a few pairs a leaf (bench/extremes_bench.cpp, the circle).
    if (auto const found = Search(points, index).run(64 + index.leafCount()))
        return *found;
    if (auto const found = farthestPairOnHull(points))
        return *found;
    return *Search(points, index).run(std::numeric_limits<std::size_t>::max());
}

}  // namespace qnInternal
