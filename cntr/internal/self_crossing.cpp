// Pairs of nodes of one index, down to pairs of edges, as far as their boxes overlap.
#include "cntr/internal/self_crossing.h"

#include "cntr/internal/edge_hits.h"
#include "cntr/internal/tolerances.h"

#include <qc/core/compare.h>

#include <algorithm>
#include <array>

namespace qnInternal {

namespace {

struct Edge {
    qcVector<2> from;
    qcVector<2> to;
    Box box;
};

/// Either edge may be the query: a vertex on the interior of an edge is found only by that edge. An
/// edge that shares an end with the query is at no distance from it, and so left out.
bool meet(Edge const& a, Edge const& b)
{
    if (!overlap(a.box, b.box) || a.to == b.from || a.from == b.to)
        return false;
    return HitQuery(a.from, a.to, false).meets(b.from, b.to) ||
           HitQuery(b.from, b.to, false).meets(a.from, a.to);
}

/// Fills `edge` with edge k; whether its ends differ.
bool fill(Edge& edge, std::vector<qcVector<2>> const& points, bool closed, std::size_t k)
{
    edge.from = edgeStart(points, closed, k);
    edge.to = edgeEnd(points, closed, k);
    edge.box = boxOf(edge.from);
    enclose(edge.box, edge.to);
    return !qfRealEq(edge.from, edge.to, kSamePoint);
}

bool anyTwoMeet(Edge const* begin, Edge const* end)
{
    for (Edge const* a = begin; a != end; ++a)
        for (Edge const* b = a + 1; b != end; ++b)
            if (meet(*a, *b))
                return true;
    return false;
}

class Search {
public:
    Search(EdgeIndex const& index, std::vector<qcVector<2>> const& points, bool closed)
        : index_(index), points_(points), closed_(closed)
    {
    }

    bool run() const { return within(index_.levelCount() - 1, 0); }

private:
    /// Some edges of a leaf.
    struct Some {
        std::array<Edge, EdgeIndex::kFan> edges;
        std::size_t count = 0;
    };

    /// The edges of a leaf whose boxes overlap `box`, save those of no length.
    Some overlapping(std::size_t leaf, Box const& box) const
    {
        Some some;
        for (std::size_t k = index_.leafBegin(leaf); k < index_.leafEnd(leaf); ++k) {
            Edge& edge = some.edges[some.count];
            if (fill(edge, points_, closed_, k) && overlap(edge.box, box))
                ++some.count;
        }
        return some;
    }

    /// Whether two edges below the boxes of one group meet.
    bool within(std::size_t level, std::size_t group) const
    {
        BoxGroup const& boxes = index_.group(level, group);
        std::size_t const begin = group * EdgeIndex::kFan;
        for (std::size_t i = 0; i < index_.boxesIn(level, group); ++i) {
            std::size_t const node = begin + i;
            if (index_.turn(level, node, node) &&
                (level == 0 ? withinLeaf(node) : within(level - 1, node)))
                return true;
            unsigned const later = boxes.overlapping(boxes.box(i)) & (~1U << i);
            if (anyBit(later, [&](std::size_t j) { return between(level, node, begin + j); }))
                return true;
        }
        return false;
    }

    /// Whether an edge below one box meets one below another, which overlaps it.
    bool between(std::size_t level, std::size_t a, std::size_t b) const
    {
        if (areNeighbours(level, a, b) && !index_.turn(level, a, b))
            return false;
        if (level == 0)
            return betweenLeaves(a, b);
        BoxGroup const& boxes = index_.group(level - 1, a);
        BoxGroup const& others = index_.group(level - 1, b);
        unsigned const near = boxes.overlapping(index_.box(level, b));
        return anyBit(near, [&](std::size_t i) {
            return anyBit(others.overlapping(boxes.box(i)), [&](std::size_t j) {
                return between(level - 1, a * EdgeIndex::kFan + i, b * EdgeIndex::kFan + j);
            });
        });
    }

    /// Whether the edges of b follow those of a on the outline, or the other way round.
    bool areNeighbours(std::size_t level, std::size_t a, std::size_t b) const
    {
        if (index_.inOutlineOrder())
            return a + 1 == b;
        return level == 0 && (index_.leafAt(a) + 1 == index_.leafAt(b) ||
                              index_.leafAt(b) + 1 == index_.leafAt(a));
    }

    bool withinLeaf(std::size_t node) const
    {
        auto const some = overlapping(index_.leafAt(node), index_.box(0, node));
        return anyTwoMeet(some.edges.data(), some.edges.data() + some.count);
    }

    bool betweenLeaves(std::size_t a, std::size_t b) const
    {
        auto const some = overlapping(index_.leafAt(a), index_.box(0, b));
        if (some.count == 0)
            return false;
        auto const others = overlapping(index_.leafAt(b), index_.box(0, a));
        for (std::size_t i = 0; i < some.count; ++i)
            for (std::size_t j = 0; j < others.count; ++j)
                if (meet(some.edges[i], others.edges[j]))
                    return true;
        return false;
    }

    EdgeIndex const& index_;
    std::vector<qcVector<2>> const& points_;
    bool closed_;
};

}  // namespace

bool anyOfFewEdgesMeets(std::vector<qcVector<2>> const& points, bool closed)
{
    std::array<Edge, kMaxPlainEdges> edges;
    std::size_t count = 0;
    for (std::size_t k = 0; k < edgeCount(points.size(), closed); ++k)
        if (fill(edges[count], points, closed, k))
            ++count;
    return anyTwoMeet(edges.data(), edges.data() + count);
}

bool anyEdgeMeetsAnother(EdgeIndex const& index, std::vector<qcVector<2>> const& points,
                         bool closed)
{
    return Search(index, points, closed).run();
}

}  // namespace qnInternal
