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

    /// Whether two edges of one node meet.
    bool within(std::size_t level, std::size_t node) const
    {
        if (!index_.turns(level, node))
            return false;
        if (level == 0)
            return withinLeaf(node);
        std::size_t const end = index_.childEnd(level, node);
        for (std::size_t i = node * EdgeIndex::kFan; i < end; ++i) {
            if (within(level - 1, i))
                return true;
            for (std::size_t j = i + 1; j < end; ++j)
                if (between(level - 1, i, j))
                    return true;
        }
        return false;
    }

    /// Whether an edge of node a meets one of the later node b.
    bool between(std::size_t level, std::size_t a, std::size_t b) const
    {
        if (!overlap(index_.box(level, a), index_.box(level, b)) ||
            (a + 1 == b && !index_.turnsWithNext(level, a)))
            return false;
        if (level == 0)
            return betweenLeaves(a, b);
        for (std::size_t i = a * EdgeIndex::kFan; i < index_.childEnd(level, a); ++i)
            if (overlap(index_.box(level - 1, i), index_.box(level, b)))
                for (std::size_t j = b * EdgeIndex::kFan; j < index_.childEnd(level, b); ++j)
                    if (between(level - 1, i, j))
                        return true;
        return false;
    }

    bool withinLeaf(std::size_t leaf) const
    {
        auto const some = overlapping(leaf, index_.leafBox(leaf));
        return anyTwoMeet(some.edges.data(), some.edges.data() + some.count);
    }

    bool betweenLeaves(std::size_t a, std::size_t b) const
    {
        auto const some = overlapping(a, index_.leafBox(b));
        if (some.count == 0)
            return false;
        auto const others = overlapping(b, index_.leafBox(a));
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
