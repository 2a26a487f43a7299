// The farthest pair of points: all pairs, and a search over pairs of boxes.
#include "cntr/internal/farthest_pair.h"

#include "cntr/internal/farthest_on_hull.h"

#include <algorithm>
#include <array>
#include <limits>
#include <optional>
#include <utility>

namespace qnInternal {

namespace {

/// A number that the square of no distance between points of two boxes exceeds.
double squaredReach(Box const& a, Box const& b)
{
    double const dx = std::max(a.max.x() - b.min.x(), b.max.x() - a.min.x());
    double const dy = std::max(a.max.y() - b.min.y(), b.max.y() - a.min.y());
    return dx * dx + dy * dy;
}

/// The same for one box and the boxes 2 i and 2 i + 1 of a group; of no meaning for no box.
Pair squaredReaches(Box const& a, BoxGroup const& b, std::size_t i)
{
    Pair const dx = larger(a.max.x() - pairAt(b.minX, i), pairAt(b.maxX, i) - a.min.x());
    Pair const dy = larger(a.max.y() - pairAt(b.minY, i), pairAt(b.maxY, i) - a.min.y());
    return dx * dx + dy * dy;
}

/// Which of eight boxes have at least that reach; of no meaning for no box.
unsigned reaching(Box const& a, BoxGroup const& boxes, double least)
{
    return eightBits([&](std::size_t i) { return squaredReaches(a, boxes, i) >= both(least); });
}

double squaredDistance(qcVector<2> const& a, qcVector<2> const& b)
{
    qcVector<2> const d = a - b;
    return d * d;
}

/// Up to eight points, to be compared with others all at once.
class EightPoints {
public:
    EightPoints(qcVector<2> const* points, std::size_t count) : bits_((1U << count) - 1)
    {
        for (std::size_t i = 0; i < 4; ++i) {
            qcVector<2> const& first = points[std::min(2 * i, count - 1)];
            qcVector<2> const& second = points[std::min(2 * i + 1, count - 1)];
            x_[i] = Pair{first.x(), second.x()};
            y_[i] = Pair{first.y(), second.y()};
        }
    }

    /// Bits of those whose squared distance from `place` is not below `least`.
    unsigned atLeast(double least, qcVector<2> const& place) const
    {
        return bits_ & eightBits([&](std::size_t i) {
                   Pair const dx = x_[i] - place.x();
                   Pair const dy = y_[i] - place.y();
                   return dx * dx + dy * dy >= both(least);
               });
    }

    /// Bits of those that may be as far from some point of a box.
    unsigned reaching(double least, Box const& box) const
    {
        return bits_ & eightBits([&](std::size_t i) {
                   Pair const dx = larger(x_[i] - box.min.x(), box.max.x() - x_[i]);
                   Pair const dy = larger(y_[i] - box.min.y(), box.max.y() - y_[i]);
                   return dx * dx + dy * dy >= both(least);
               });
    }

private:
    std::array<Pair, 4> x_;
    std::array<Pair, 4> y_;
    unsigned bits_;
};

class FarthestSearch {
    /// No square of a distance between points of a regular index is below, save that of equal points.
    static constexpr double kLeastSquare = std::numeric_limits<double>::min();

    /// So many leaves are sooner looked at one by one (bench/extremes_bench.cpp).
    static constexpr std::size_t kFewLeaves = 32;

public:
    FarthestSearch(std::vector<qcVector<2>> const& points, EdgeIndex const& index)
        : points_(points), index_(index), farthest_(points, kLeastSquare)
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

    /// Nothing where more pairs of leaves than `mostPairs` would have to be looked at. After `few` of them
    /// it tries whether the outline is convex.
    std::optional<FarthestPair> run(std::size_t few, std::size_t mostPairs)
    {
        pairsLeft_ = few;
        pairsAfter_ = mostPairs - few;
        considerLast();
        if (!visit(index_.levelCount() - 1, 0, 0))
            return ofConvex_;
        return farthest_.pair();
    }

private:
    /// The farthest vertex of the leaf whose box reaches farthest.
    std::size_t farFrom(std::size_t from) const
    {
        std::size_t const leaf = farthestLeaf(boxOf(points_[from]));
        std::size_t farthest = from;
        double best = -1;
        for (std::size_t i = index_.leafBegin(leaf); i < index_.verticesEnd(leaf); ++i) {
            double const square = squaredDistance(points_[from], points_[i]);
            if (square > best) {
                best = square;
                farthest = i;
            }
        }
        return farthest;
    }

    std::size_t farthestLeaf(Box const& from) const
    {
        std::size_t leaf = 0;
        double best = -1;
        auto const look = [&](std::size_t other, Box const& box) {
            double const reach = squaredReach(from, box);
            if (reach > best) {
                best = reach;
                leaf = other;
            }
        };
        if (index_.leafCount() <= kFewLeaves) {
            for (std::size_t node = 0; node < index_.leafCount(); ++node)
                look(index_.leafAt(node), index_.box(0, node));
            return leaf;
        }
        // From the top to the box that reaches farthest each time: few others are beyond the last one.
        std::size_t node = 0;
        for (std::size_t level = index_.levelCount(); level-- > 0;)
            node = node * EdgeIndex::kFan + farthestBox(from, level, node);
        look(index_.leafAt(node), index_.box(0, node));
        index_.forEachLeaf([&](BoxGroup const& boxes) { return reaching(from, boxes, best); },
                           look);
        return leaf;
    }

    std::size_t farthestBox(Box const& from, std::size_t level, std::size_t number) const
    {
        BoxGroup const& boxes = index_.group(level, number);
        std::array<double, EdgeIndex::kFan> reaches;
        for (std::size_t i = 0; i < 4; ++i) {
            Pair const two = squaredReaches(from, boxes, i);
            reaches[2 * i] = two[0];
            reaches[2 * i + 1] = two[1];
        }
        double* const end = reaches.data() + index_.boxesIn(level, number);
        return static_cast<std::size_t>(std::max_element(reaches.data(), end) - reaches.data());
    }

    /// Which boxes of group `b` may hold a point that is far enough from one in `a`.
    unsigned farEnough(Box const& a, std::size_t level, std::size_t b) const
    {
        return reaching(a, index_.group(level, b), farthest_.lowest()) &
               ((1U << index_.boxesIn(level, b)) - 1);
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
                return level == 0 ? !look(node, other) : !visit(level - 1, node, other);
            });
        });
    }

    bool look(std::size_t node, std::size_t other)
    {
        if (pairsLeft_ == 0 && !goesOn())
            return false;
        --pairsLeft_;
        std::size_t const leaf = index_.leafAt(node);
        unsigned const far = pointsOf(leaf).reaching(farthest_.lowest(), index_.box(0, other));
        if (far == 0)
            return true;
        std::size_t const otherLeaf = index_.leafAt(other);
        EightPoints const others = pointsOf(otherLeaf);
        forEachBit(far,
                   [&](std::size_t i) { consider(index_.leafBegin(leaf) + i, others, otherLeaf); });
        return true;
    }

    void consider(std::size_t i, EightPoints const& others, std::size_t leaf)
    {
        forEachBit(others.atLeast(farthest_.lowest(), points_[i]), [&](std::size_t bit) {
            std::size_t const j = index_.leafBegin(leaf) + bit;
            if (i != j)
                farthest_.consider(i, j);
        });
    }

    /// Considers the pairs of the last vertex where it stands behind the eight of the last leaf.
    void considerLast()
    {
        std::size_t const last = points_.size() - 1;
        if (last < index_.leafCount() * EdgeIndex::kFan)
            return;
        Box const place = boxOf(points_[last]);
        index_.forEachLeaf(
            [&](BoxGroup const& boxes) { return reaching(place, boxes, farthest_.lowest()); },
            [&](std::size_t leaf, Box const&) { consider(last, pointsOf(leaf), leaf); });
    }

    /// Up to eight vertices from the first of a leaf on.
    EightPoints pointsOf(std::size_t leaf) const
    {
        std::size_t const begin = index_.leafBegin(leaf);
        return {points_.data() + begin, std::min(EdgeIndex::kFan, points_.size() - begin)};
    }

    bool goesOn()
    {
        pairsLeft_ = std::exchange(pairsAfter_, 0);
        if (pairsLeft_ > 0)
            ofConvex_ = farthestPairOfConvex(points_);
        return pairsLeft_ > 0 && !ofConvex_;
    }

    std::vector<qcVector<2>> const& points_;
    EdgeIndex const& index_;
    FarthestSoFar farthest_;
    std::size_t pairsLeft_ = 0;
    std::size_t pairsAfter_ = 0;
    std::optional<FarthestPair> ofConvex_;
};

/// Below this all distances are taken sooner than they are compared by their squares.
constexpr std::size_t kFewPoints = 8;

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
    if (points.size() < kFewPoints)
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
    // takes as long as a few pairs a leaf, that of a convex outline as one (bench/extremes_bench.cpp, the
    // circle).
    if (auto const found =
            FarthestSearch(points, index).run(32 + index.leafCount() / 8, 64 + index.leafCount()))
        return *found;
    if (auto const found = farthestPairOnHull(points))
        return *found;
    constexpr std::size_t kAll = std::numeric_limits<std::size_t>::max();
    return *FarthestSearch(points, index).run(kAll, kAll);
}

}  // namespace qnInternal
