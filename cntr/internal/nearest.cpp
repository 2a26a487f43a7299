// Branch and bound over the hierarchy of edge boxes for the nearest edge and the nearest vertex.
#include "cntr/internal/nearest.h"

#include "cntr/internal/tolerances.h"

#include <qc/core/internal/plane.h>

#include <array>
#include <cmath>
#include <limits>

namespace qnInternal {

namespace {

/// Squares of the distances of boxes i and i + 1 from a point.
Pair squaredDistances(BoxGroup const& boxes, std::size_t i, qcVector<2> const& point)
{
    Pair const x = both(point.x());
    Pair const y = both(point.y());
    Pair const dx = larger(larger(pairAt(boxes.minX, i) - x, x - pairAt(boxes.maxX, i)), Pair{});
    Pair const dy = larger(larger(pairAt(boxes.minY, i) - y, y - pairAt(boxes.maxY, i)), Pair{});
    return dx * dx + dy * dy;
}

/// Square of the distance of the box of two points from a third one.
double squaredDistance(qcVector<2> const& a, qcVector<2> const& b, qcVector<2> const& point)
{
    Pair const p = pairOf(point);
    Pair const d =
        larger(larger(smaller(pairOf(a), pairOf(b)) - p, p - larger(pairOf(a), pairOf(b))), Pair{});
    Pair const squares = d * d;
    return squares[0] + squares[1];
}

/// The search for the smallest (distance, index) in lexicographic order.
class Search {
public:
    Search(EdgeIndex const& index, std::vector<qcVector<2>> const& points, qcVector<2> const& point)
        : index_(index), points_(points), point_(point),
          // The computed distance of an edge falls short of the true one by at most some ulps of the
          // distance and of the edge's length (cancellation in its cross product).
          shortfall_(1e-13 * (index.rootBox().max - index.rootBox().min).len())
    {
    }

    /// `look(leaf)` considers what lies in a leaf.
    template <class Look>
    Nearest run(Look const& look)
    {
        visit(index_.levelCount() - 1, 0, look);
        return best_;
    }

    void lookAtEdges(std::size_t leaf)
    {
        std::size_t const end = index_.leafEnd(leaf);
        for (std::size_t k = index_.leafBegin(leaf); k < end; ++k) {
            qcVector<2> const& from = edgeStart(points_, index_.closed(), k);
            qcVector<2> const& to = edgeEnd(points_, index_.closed(), k);
            if (!(squaredDistance(from, to, point_) > limit_))
                consider(segmentDistance(from, to, point_), k);
        }
    }

    void lookAtVertices(std::size_t leaf)
    {
        for (std::size_t i = index_.leafBegin(leaf); i < index_.verticesEnd(leaf); ++i) {
            qcVector<2> const d = point_ - points_[i];
            if (!(d * d > limit_))
                consider(d.len(), i);
        }
    }

private:
    struct Child {
        double squared;
        std::size_t node;
    };

    template <class Look>
    void visit(std::size_t level, std::size_t number, Look const& look)
    {
        std::array<Child, EdgeIndex::kFan> children;
        std::size_t const count = nearestFirst(level, number, children);
        for (std::size_t i = 0; i < count && !(children[i].squared > limit_); ++i) {
            if (level == 0)
                look(index_.leafAt(children[i].node));
            else
                visit(level - 1, children[i].node, look);
        }
    }

    /// Fills `children` with the boxes of a group that are near enough; gives their number.
    std::size_t nearestFirst(std::size_t level, std::size_t number,
                             std::array<Child, EdgeIndex::kFan>& children) const
    {
        BoxGroup const& boxes = index_.group(level, number);
        std::size_t const available = index_.boxesIn(level, number);
        Eight squared;
        for (std::size_t i = 0; i < 4; ++i) {
            Pair const two = squaredDistances(boxes, i, point_);
            squared[2 * i] = two[0];
            squared[2 * i + 1] = two[1];
        }
        std::size_t count = 0;
        for (std::size_t i = 0; i < available; ++i) {
            if (squared[i] > limit_)
                continue;
            std::size_t at = count++;
            for (; at > 0 && children[at - 1].squared > squared[i]; --at)
                children[at] = children[at - 1];
            children[at] = {squared[i], number * EdgeIndex::kFan + i};
        }
        return count;
    }

    void consider(double distance, std::size_t index)
    {
        if (distance < best_.distance || (distance == best_.distance && index < best_.index)) {
            best_ = {distance, index};
            double const reach = distance * (1 + 1e-13) + shortfall_;
            limit_ = reach * reach;
        }
    }

    EdgeIndex const& index_;
    std::vector<qcVector<2>> const& points_;
    qcVector<2> point_;
    double shortfall_;
    Nearest best_{std::numeric_limits<double>::infinity(), 0};
    double limit_ = std::numeric_limits<double>::infinity();
};

}  // namespace

Nearest nearestEdge(EdgeIndex const& index, std::vector<qcVector<2>> const& points,
                    qcVector<2> const& point)
{
    Search search(index, points, point);
    return search.run([&](std::size_t leaf) { search.lookAtEdges(leaf); });
}

Nearest nearestVertex(EdgeIndex const& index, std::vector<qcVector<2>> const& points,
                      qcVector<2> const& point)
{
    Search search(index, points, point);
    return search.run([&](std::size_t leaf) { search.lookAtVertices(leaf); });
}

bool isRegularPoint(qcVector<2> const& point)
{
    // One by one: the larger of a number and NaN may be the number.
    return std::fabs(point.x()) <= kLargestRegular && std::fabs(point.y()) <= kLargestRegular;
}

}  // namespace qnInternal
