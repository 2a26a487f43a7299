// Pairs of leaves of one index, and in them pairs of edges, as far as their boxes overlap.
#include "cntr/internal/self_crossing.h"

#include "cntr/internal/edge_hits.h"
#include "cntr/internal/tolerances.h"

#include <qc/core/compare.h>

#include <array>

namespace qnInternal {

namespace {

struct Edge {
    qcVector<2> from;
    qcVector<2> to;
    Box box;
    bool valid;
};

/// The edges of one leaf, with their boxes.
class Leaf {
public:
    Leaf(EdgeIndex const& index, std::vector<qcVector<2>> const& points, bool closed,
         std::size_t leaf)
    {
        for (std::size_t k = index.leafBegin(leaf); k < index.leafEnd(leaf); ++k) {
            Edge& edge = edges_[count_++];
            edge.from = edgeStart(points, closed, k);
            edge.to = edgeEnd(points, closed, k);
            edge.box = boxOf(edge.from);
            enclose(edge.box, edge.to);
            edge.valid = !qfRealEq(edge.from, edge.to, kSamePoint);
        }
        isMonotone_ = monotone();
    }

    Edge const* begin() const { return edges_.data(); }
    Edge const* end() const { return edges_.data() + count_; }

    /// Edges of a chain that runs one way in x and one way in y meet nowhere but at shared ends, and
    /// edges at the ends of a query segment are left out of its answer.
    bool isMonotone() const { return isMonotone_; }

private:
    bool monotone() const
    {
        bool left = false;
        bool right = false;
        bool up = false;
        bool down = false;
        for (Edge const& edge : *this) {
            left |= edge.to.x() < edge.from.x();
            right |= edge.to.x() > edge.from.x();
            down |= edge.to.y() < edge.from.y();
            up |= edge.to.y() > edge.from.y();
        }
        return !(left && right) && !(up && down);
    }

    std::array<Edge, EdgeIndex::kFan> edges_;
    std::size_t count_ = 0;
    bool isMonotone_ = false;
};

/// Either edge may be the query: a vertex on the interior of an edge is found only by that edge.
bool meet(Edge const& a, Edge const& b)
{
    if (!a.valid || !b.valid || !overlap(a.box, b.box))
        return false;
    return HitQuery(a.from, a.to, false).meets(b.from, b.to) ||
           HitQuery(b.from, b.to, false).meets(a.from, a.to);
}

bool anyMeetWithin(Leaf const& leaf)
{
    if (leaf.isMonotone())
        return false;
    for (Edge const& a : leaf)
        for (Edge const* b = &a + 1; b < leaf.end(); ++b)
            if (meet(a, *b))
                return true;
    return false;
}

bool anyMeet(Leaf const& leaf, Box const& box, Leaf const& other)
{
    for (Edge const& b : other)
        if (overlap(box, b.box))
            for (Edge const& a : leaf)
                if (meet(a, b))
                    return true;
    return false;
}

}  // namespace

bool anyEdgeMeetsAnother(EdgeIndex const& index, std::vector<qcVector<2>> const& points,
                         bool closed)
{
    for (std::size_t a = 0; a < index.leafCount(); ++a) {
        Leaf const leaf(index, points, closed, a);
        if (anyMeetWithin(leaf))
            return true;
        Box const& box = index.leafBox(a);
        auto const touches = [&](Box const& other) { return overlap(box, other); };
        auto const visit = [&](std::size_t b) {
            return anyMeet(leaf, box, Leaf(index, points, closed, b));
        };
        if (index.forEachLeaf(a + 1, touches, visit))
            return true;
    }
    return false;
}

}  // namespace qnInternal
