// One look at the index for all queries around eight edges.
#include "cntr/internal/nearby_edges.h"

#include <algorithm>

namespace qnInternal {

namespace {

/// Of more edges than these the index finds the right ones sooner (bench/cleaning_bench.cpp).
constexpr std::size_t kMostNearby = 32;

}  // namespace

bool NearbyEdges::findHits(HitQuery const& query, std::size_t k, std::vector<EdgeHit>& found)
{
    if (!index_ || index_->levelCount() == 1)  // one group of boxes is looked at as soon
        return false;
    if (std::size_t const leaf = k / EdgeIndex::kFan; leaf != leaf_)
        moveTo(leaf);
    if (!areFew_ || !holds(place_, query.box().min) || !holds(place_, query.box().max))
        return false;
    findHitsAmong(edges_.begin(), edges_.end(), query, outline_.points, outline_.closed, found);
    return true;
}

void NearbyEdges::moveTo(std::size_t leaf)
{
    leaf_ = leaf;
    Box const box = boxesOfEdges(outline_, index_->leafBegin(leaf), index_->leafEnd(leaf)).all();
    qcVector<2> const margin(reach_, reach_);
    place_ = {box.min - margin, box.max + margin};
    edges_.clear();
    areFew_ = !index_->anyEdgeNear(TwiceBox(place_), [&](std::size_t edge) {
        if (edgeOverlaps(edgeStart(outline_.points, outline_.closed, edge),
                         edgeEnd(outline_.points, outline_.closed, edge), place_))
            edges_.push_back(edge);
        return edges_.size() > kMostNearby;
    });
    std::sort(edges_.begin(), edges_.end());
}

}  // namespace qnInternal
