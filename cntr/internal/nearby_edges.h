/// The edges around a short stretch of an outline, for queries along it one after the other.
#pragma once

#include "cntr/internal/edge_boxes.h"
#include "cntr/internal/edge_hits.h"
#include "cntr/internal/edge_index.h"

#include <cstddef>
#include <vector>

namespace qnInternal {

class NearbyEdges {
public:
    /// `index` is that of the outline, or null. Queries mostly stay as near as `reach` to the edge that they
    /// are said to be at.
    NearbyEdges(Outline const& outline, EdgeIndex const* index, double reach)
        : outline_(outline), index_(index), reach_(reach)
    {
    }

    /// Replaces `found` by the hits of a query at edge k. False, and `found` is as it was, where the query
    /// reaches further, or too many edges are around: then the index is to be asked.
    bool findHits(HitQuery const& query, std::size_t k, std::vector<EdgeHit>& found);

private:
    bool moveTo(std::size_t edge);
    void listEdges();

    Outline outline_;
    EdgeIndex const* index_;
    double reach_;

    std::size_t leaf_ = static_cast<std::size_t>(-1);  // around which the rest was looked for
    Box place_{};
    bool areFew_ = false;
    std::vector<std::size_t> leaves_;  // whose boxes share a point with place_
    bool areListed_ = false;
    std::vector<std::size_t> edges_;  // whose boxes share a point with place_, ascending
};

}  // namespace qnInternal
