// Counting what a look at the index costs, and lists of close edges instead.
#include "cntr/internal/close_edge_lists.h"

#include "cntr/internal/close_edges.h"

#include <algorithm>
#include <utility>

namespace qnInternal {

namespace {

/// From so many leaves an edge on, a look at the index takes longer than anyClosePair() takes for an edge
/// (`self_crossing` of teeth in bench/crossings_bench.cpp).
constexpr std::size_t kManyLeaves = 96;

/// Lists of more edges than these, on average and with those that are found twice, take more memory than
/// they are worth.
constexpr std::size_t kMostClose = 32;

/// Whether queries along the edges of an outline look at kManyLeaves on average, by a few of them.
bool looksAtManyLeaves(Outline const& outline, EdgeIndex const& index)
{
    constexpr std::size_t kAsked = 16;
    if (index.leafCount() <= kManyLeaves)
        return false;
    std::size_t leaves = 0;
    for (std::size_t i = 0; i < kAsked; ++i) {
        std::size_t const k = i * outline.edges() / kAsked;
        HitQuery const query(edgeStart(outline.points, outline.closed, k),
                             edgeEnd(outline.points, outline.closed, k), false);
        index.forEachLeaf(SegmentReach(query, index.scale()),
                          [&](std::size_t, Box const&) { ++leaves; });
    }
    return leaves > kAsked * kManyLeaves;
}

}  // namespace

CloseEdgeLists::CloseEdgeLists(Outline const& outline, EdgeIndex const* index) : outline_(outline)
{
    if (!index || !looksAtManyLeaves(outline, *index))
        return;
    std::size_t const count = outline.edges();
    std::vector<std::pair<std::uint32_t, std::uint32_t>> pairs;
    auto const keep = [&](std::size_t i, std::size_t k) {
        pairs.emplace_back(i, k);
        pairs.emplace_back(k, i);
        return pairs.size() > kMostClose * count;
    };
    if (anyClosePair(outline, index->scale(), keep).value_or(true))
        return;
    std::sort(pairs.begin(), pairs.end());
    pairs.erase(std::unique(pairs.begin(), pairs.end()), pairs.end());
    begin_.reserve(count + 1);
    edges_.reserve(pairs.size());
    for (auto const& [edge, close] : pairs) {
        begin_.resize(edge + 1, edges_.size());
        edges_.push_back(close);
    }
    begin_.resize(count + 1, edges_.size());
}

void CloseEdgeLists::findHits(HitQuery const& query, std::size_t k,
                              std::vector<EdgeHit>& found) const
{
    findHitsAmong(edges_.data() + begin_[k], edges_.data() + begin_[k + 1], query, outline_.points,
                  outline_.closed, found);
}

}  // namespace qnInternal
