// Pairs of nodes of one index, down to pairs of edges, as far as their boxes overlap.
#include "cntr/internal/self_crossing.h"

#include "cntr/internal/close_edges.h"
#include "cntr/internal/edge_boxes.h"
#include "cntr/internal/edge_hits.h"
#include "cntr/internal/leaf_pairs.h"
#include "cntr/internal/tolerances.h"

#include <qc/core/compare.h>

#include <algorithm>
#include <array>
#include <limits>

namespace qnInternal {

namespace {

/// Beyond so many comparisons an edge, of edges or leaves, their boxes are of too little use
/// (`self_crossing` of teeth in bench/crossings_bench.cpp).
constexpr std::size_t kMostComparisonsAnEdge = 20;

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

/// Fills `edge` with an edge; whether its ends differ.
bool fillWith(Edge& edge, qcVector<2> const& from, qcVector<2> const& to)
{
    edge = {from, to, boxOf(from)};
    enclose(edge.box, to);
    return !qfRealEq(from, to, kSamePoint);
}

class SelfCrossingSearch {
public:
    SelfCrossingSearch(EdgeIndex const& index, std::vector<qcVector<2>> const& points, bool closed)
        : index_(index), points_(points), closed_(closed), pairs_(index, points),
          mostComparisons_(kMostComparisonsAnEdge * edgeCount(points.size(), closed))
    {
    }

    bool run()
    {
        bool const stopped = search();
        if (!tooMany())
            return stopped;
        if (auto const found =
                anyClosePair({points_, closed_}, index_.scale(),
                             [&](std::size_t i, std::size_t k) { return edgesMeet(i, k); }))
            return *found;
        mostComparisons_ = std::numeric_limits<std::size_t>::max();
        return search();
    }

private:
    /// Whether to stop: two edges meet, or comparisons are too many.
    bool search()
    {
        return pairs_.any([&](std::size_t a, std::size_t b) {
            return a == b ? withinLeaf(a) : betweenLeaves(a, b) || tooMany();
        });
    }

    BoxGroup edgesOf(std::size_t leaf) const
    {
        return boxesOfEdges({points_, closed_}, index_.leafBegin(leaf), index_.leafEnd(leaf));
    }

    bool withinLeaf(std::size_t node)
    {
        std::size_t const leaf = index_.leafAt(node);
        std::size_t const begin = index_.leafBegin(leaf);
        BoxGroup const boxes = edgesOf(leaf);
        for (std::size_t i = 0; i + 2 < index_.leafEnd(leaf) - begin; ++i) {
            unsigned const later = boxes.overlapping(boxes.box(i)) & (~3U << i);  // not the next
            if (anyBit(later, [&](std::size_t j) { return edgesMeet(begin + i, begin + j); }))
                return true;
        }
        return false;
    }

    bool tooMany() const { return comparisons_ > mostComparisons_; }

    bool betweenLeaves(std::size_t a, std::size_t b)
    {
        ++comparisons_;
        std::size_t const leaf = index_.leafAt(a);
        std::size_t const other = index_.leafAt(b);
        BoxGroup const boxes = edgesOf(leaf);
        unsigned const some = boxes.overlapping(index_.box(0, b));
        if (some == 0)
            return false;
        BoxGroup const others = edgesOf(other);
        return anyBit(some, [&](std::size_t i) {
            return anyBit(others.overlapping(boxes.box(i)), [&](std::size_t j) {
                return edgesMeet(index_.leafBegin(leaf) + i, index_.leafBegin(other) + j);
            });
        });
    }

    bool edgesMeet(std::size_t k, std::size_t other)
    {
        ++comparisons_;
        Edge first;
        Edge second;
        return fill(first, k) && fill(second, other) && meet(first, second);
    }

    bool fill(Edge& edge, std::size_t k) const
    {
        return fillWith(edge, edgeStart(points_, closed_, k), edgeEnd(points_, closed_, k));
    }

    EdgeIndex const& index_;
    std::vector<qcVector<2>> const& points_;
    bool closed_;
    LeafPairs pairs_;
    std::size_t comparisons_ = 0;
    std::size_t mostComparisons_;
};

}  // namespace

bool anyOfFewEdgesMeets(std::vector<qcVector<2>> const& points, bool closed)
{
    std::array<Extent, kMaxPlainEdges> extents;
    auto const meetAt = [&](std::size_t i, std::size_t k) {
        Edge one, other;
        return fillWith(one, edgeStart(points, closed, i), edgeEnd(points, closed, i)) &&
               fillWith(other, edgeStart(points, closed, k), edgeEnd(points, closed, k)) &&
               meet(one, other);
    };
    std::size_t const count = edgeCount(points.size(), closed);
    for (std::size_t k = 0; k < count; ++k) {
        Pair const from = pairOf(edgeStart(points, closed, k));
        Pair const to = pairOf(edgeEnd(points, closed, k));
        extents[k] = {smaller(to, from), larger(to, from)};
        // Neighbours share an end; the first and the last edge of a closed outline are neighbours.
        for (std::size_t i = closed && k + 1 == count ? 1 : 0; i + 1 < k; ++i)
            if (overlap(extents[i], extents[k]) && meetAt(i, k))
                return true;
    }
    return false;
}

bool anyEdgeMeetsAnother(EdgeIndex const& index, std::vector<qcVector<2>> const& points,
                         bool closed)
{
    return SelfCrossingSearch(index, points, closed).run();
}

}  // namespace qnInternal
