// The farthest pair of points: all pairs, and a search over pairs of boxes.
#include "cntr/internal/farthest_pair.h"

#include <algorithm>
#include <cmath>
#include <utility>

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
        : points_(points), index_(index)
    {
        // From far point to far point: seldom much short of the farthest pair.
        std::size_t from = 0;
        for (int i = 0; i < 3; ++i) {
            std::size_t const far = farFrom(from);
            consider(from, far);
            from = far;
        }
    }

    FarthestPair run()
    {
        visit(index_.levelCount() - 1, 0, 0);
        return best_;
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

    /// Keeps the largest rounded distance and, of equal ones, the first pair of indices.
    void consider(std::size_t i, std::size_t j)
    {
        if (j < i)
            std::swap(i, j);
        double const d = points_[i].distance(points_[j]);
        bool const earlier = i < best_.first || (i == best_.first && j < best_.second);
        if (d > best_.distance || (d == best_.distance && d > 0 && earlier)) {
            best_ = {d, i, j};
            // Where squares are below this, roots are smaller even after rounding.
            lowest_ = d * d * (1 - 2e-14);
        }
    }

    /// Which boxes of group `b` may hold a point that is far enough from one in `a`. Reaches of 0, all
    /// in one point, are never far.
    unsigned farEnough(Box const& a, std::size_t level, std::size_t b) const
    {
        BoxGroup const& boxes = index_.group(level, b);
        unsigned const far = eightBits([&](std::size_t i) {
            Pair const reach = squaredReaches(a, boxes, i);
            return (reach >= both(lowest_)) & (reach > Pair{});
        });
        return far & ((1U << index_.boxesIn(level, b)) - 1);
    }

    /// Looks at the pairs of boxes of two groups, the same one or the second behind the first.
    void visit(std::size_t level, std::size_t a, std::size_t b)
    {
        for (std::size_t i = 0; i < index_.boxesIn(level, a); ++i) {
            unsigned far = farEnough(index_.group(level, a).box(i), level, b);
            if (a == b)
                far &= ~0U << i;
            std::size_t const node = a * EdgeIndex::kFan + i;
            forEachBit(far, [&](std::size_t j) {
                std::size_t const other = b * EdgeIndex::kFan + j;
                if (level == 0)
                    look(index_.leafAt(node), other);
                else
                    visit(level - 1, node, other);
            });
        }
    }

    void look(std::size_t leaf, std::size_t other)
    {
        Box const box = index_.box(0, other);
        std::size_t const otherLeaf = index_.leafAt(other);
        for (std::size_t i = index_.leafBegin(leaf); i < index_.verticesEnd(leaf); ++i) {
            if (squaredReach(boxOf(points_[i]), box) < lowest_)
                continue;
            for (std::size_t j = index_.leafBegin(otherLeaf); j < index_.verticesEnd(otherLeaf);
                 ++j)
                if (!(squaredDistance(points_[i], points_[j]) < lowest_) && i != j)
                    consider(i, j);
        }
    }

    std::vector<qcVector<2>> const& points_;
    EdgeIndex const& index_;
    FarthestPair best_;
    double lowest_ = 0;
};

}  // namespace

FarthestPair farthestPair(std::vector<qcVector<2>> const& points)
{
    // Distances are symmetric, so the first of all ordered pairs to reach the maximum has i < j.
    FarthestPair best;
    for (std::size_t i = 0; i < points.size(); ++i)
        for (std::size_t j = i + 1; j < points.size(); ++j) {
            double const d = points[i].distance(points[j]);
            if (d > best.distance)
                best = {d, i, j};
        }
    return best;
}

FarthestPair farthestPair(std::vector<qcVector<2>> const& points, EdgeIndex const& index)
{
    return Search(points, index).run();
}

}  // namespace qnInternal
