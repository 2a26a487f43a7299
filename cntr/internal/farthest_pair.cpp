// The farthest pair of points: all pairs, and a search over pairs of boxes.
#include "cntr/internal/farthest_pair.h"

#include <algorithm>
#include <cmath>

namespace qnInternal {

namespace {

/// Two nodes of one level.
struct Nodes {
    std::size_t level;
    std::size_t a;
    std::size_t b;
};

/// Square of a distance that no two points in the boxes exceed.
double squaredReach(Box const& a, Box const& b)
{
    double const dx = std::max(a.max.x() - b.min.x(), b.max.x() - a.min.x());
    double const dy = std::max(a.max.y() - b.min.y(), b.max.y() - a.min.y());
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
        // Twice to the farthest point: seldom much short of the farthest pair.
        consider(farthestFrom(0), farthestFrom(farthestFrom(0)));
    }

    FarthestPair run()
    {
        visit({index_.levelCount() - 1, 0, 0});
        return best_;
    }

private:
    std::size_t farthestFrom(std::size_t from) const
    {
        std::size_t farthest = from;
        double best = -1;
        for (std::size_t i = 0; i < points_.size(); ++i) {
            double const d = squaredDistance(points_[from], points_[i]);
            if (d > best) {
                best = d;
                farthest = i;
            }
        }
        return farthest;
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
            lowest_ = d * d * (1 - 1e-14);
        }
    }

    void visit(Nodes const& nodes)
    {
        Box const& a = index_.box(nodes.level, nodes.a);
        Box const& b = index_.box(nodes.level, nodes.b);
        double const reach = squaredReach(a, b);
        if (reach * (1 + 1e-14) < lowest_ || reach == 0)  // all in one point: none is farther
            return;
        if (nodes.level == 0) {
            look(nodes.a, nodes.b);
            return;
        }
        std::size_t const aEnd = index_.childEnd(nodes.level, nodes.a);
        std::size_t const bEnd = index_.childEnd(nodes.level, nodes.b);
        for (std::size_t i = nodes.a * EdgeIndex::kFan; i < aEnd; ++i)
            for (std::size_t j = nodes.a == nodes.b ? i : nodes.b * EdgeIndex::kFan; j < bEnd; ++j)
                visit({nodes.level - 1, i, j});
    }

    std::size_t end(std::size_t leaf) const
    {
        return leaf + 1 == index_.leafCount() ? points_.size() : (leaf + 1) * EdgeIndex::kFan;
    }

    void look(std::size_t leafA, std::size_t leafB)
    {
        Box const& b = index_.leafBox(leafB);
        for (std::size_t i = leafA * EdgeIndex::kFan; i < end(leafA); ++i) {
            if (squaredReach(boxOf(points_[i]), b) * (1 + 1e-14) < lowest_)
                continue;
            for (std::size_t j = leafB * EdgeIndex::kFan; j < end(leafB); ++j)
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
