// Branch and bound over the hierarchy of edge boxes for the nearest edge and the nearest vertex.
#include "cntr/internal/nearest.h"

#include "cntr/internal/tolerances.h"

#include <qc/core/internal/plane.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace qnInternal {

namespace {

double squaredDistance(Box const& box, qcVector<2> const& point)
{
    double const dx = std::max({box.min.x() - point.x(), point.x() - box.max.x(), 0.0});
    double const dy = std::max({box.min.y() - point.y(), point.y() - box.max.y(), 0.0});
    return dx * dx + dy * dy;
}

/// The search for the smallest (distance, index) in lexicographic order.
template <class Distance>
class Search {
public:
    /// `distance(i)` is the distance of item i; items of leaf j are those of [8 j, 8 j + 8), the last
    /// leaf's reaching up to `itemCount`.
    Search(EdgeIndex const& index, std::size_t itemCount, qcVector<2> const& point,
           Distance const& distance)
        : index_(index), itemCount_(itemCount), point_(point), distance_(distance)
    {
        Box const& root = index.rootBox();
        extent_ = (root.max - root.min).len();
    }

    Nearest run()
    {
        visit(index_.levelCount() - 1, 0);
        return best_;
    }

private:
    struct Child {
        double squared;
        std::size_t node;
    };

    void visit(std::size_t level, std::size_t node)
    {
        if (level == 0) {
            look(node);
            return;
        }
        std::size_t const begin = node * EdgeIndex::kFan;
        std::size_t const count = index_.childEnd(level, node) - begin;
        std::array<Child, EdgeIndex::kFan> children;
        for (std::size_t i = 0; i < count; ++i) {  // nearest boxes first
            Child const child{squaredDistance(index_.box(level - 1, begin + i), point_), begin + i};
            std::size_t at = i;
            for (; at > 0 && children[at - 1].squared > child.squared; --at)
                children[at] = children[at - 1];
            children[at] = child;
        }
        for (std::size_t i = 0; i < count && !(children[i].squared > limit_); ++i)
            visit(level - 1, children[i].node);
    }

    void look(std::size_t leaf)
    {
        std::size_t const begin = leaf * EdgeIndex::kFan;
        std::size_t const end =
            leaf + 1 == index_.leafCount() ? itemCount_ : begin + EdgeIndex::kFan;
        for (std::size_t i = begin; i < end; ++i) {
            double const d = distance_(i);
            if (d < best_.distance || (d == best_.distance && i < best_.index)) {
                best_ = {d, i};
                // The computed distance of an edge falls short of the true one by at most some ulps
                // of the distance and of the edge's length (cancellation in its cross product).
                double const reach = d * (1 + 1e-13) + 1e-13 * extent_;
                limit_ = reach * reach;
            }
        }
    }

    EdgeIndex const& index_;
    std::size_t itemCount_;
    qcVector<2> point_;
    Distance const& distance_;
    double extent_;
    Nearest best_{std::numeric_limits<double>::infinity(), 0};
    double limit_ = std::numeric_limits<double>::infinity();
};

}  // namespace

Nearest nearestEdge(EdgeIndex const& index, std::vector<qcVector<2>> const& points, bool closed,
                    qcVector<2> const& point)
{
    auto const distance = [&](std::size_t k) {
        return segmentDistance(edgeStart(points, closed, k), edgeEnd(points, closed, k), point);
    };
    return Search(index, edgeCount(points.size(), closed), point, distance).run();
}

Nearest nearestVertex(EdgeIndex const& index, std::vector<qcVector<2>> const& points,
                      qcVector<2> const& point)
{
    auto const distance = [&](std::size_t i) { return point.distance(points[i]); };
    return Search(index, points.size(), point, distance).run();
}

bool isRegularPoint(qcVector<2> const& point)
{
    // One by one: the larger of a number and NaN may be the number.
    return std::fabs(point.x()) <= kLargestRegular && std::fabs(point.y()) <= kLargestRegular;
}

}  // namespace qnInternal
