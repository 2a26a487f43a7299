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
            edge.from = edgeStart(points_, closed_, k);
            edge.to = edgeEnd(points_, closed_, k);
            edge.box = boxOf(edge.from);
            enclose(edge.box, edge.to);
            if (overlap(edge.box, box) && !qfRealEq(edge.from, edge.to, kSamePoint))
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
        std::size_t const end = childEnd(level, node);
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
        if (!overlap(index_.level(level)[a], index_.level(level)[b]) ||
            (a + 1 == b && !index_.turnsWithNext(level, a)))
            return false;
        if (level == 0)
            return betweenLeaves(a, b);
        for (std::size_t i = a * EdgeIndex::kFan; i < childEnd(level, a); ++i)
            if (overlap(index_.level(level - 1)[i], index_.level(level)[b]))
                for (std::size_t j = b * EdgeIndex::kFan; j < childEnd(level, b); ++j)
                    if (between(level - 1, i, j))
                        return true;
        return false;
    }

    bool withinLeaf(std::size_t leaf) const
    {
        auto const some = overlapping(leaf, index_.leafBox(leaf));
        for (std::size_t i = 0; i < some.count; ++i)
            for (std::size_t j = i + 1; j < some.count; ++j)
                if (meet(some.edges[i], some.edges[j]))
                    return true;
        return false;
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

    std::size_t childEnd(std::size_t level, std::size_t node) const
    {
        return std::min((node + 1) * EdgeIndex::kFan, index_.level(level - 1).size());
    }

    EdgeIndex const& index_;
    std::vector<qcVector<2>> const& points_;
    bool closed_;
};

}  // namespace

bool anyEdgeMeetsAnother(EdgeIndex const& index, std::vector<qcVector<2>> const& points,
                         bool closed)
{
    return Search(index, points, closed).run();
}

}  // namespace qnInternal
