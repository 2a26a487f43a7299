// One look at the index for all queries around eight edges.
#include "cntr/internal/nearby_edges.h"

#include <algorithm>

namespace qnInternal {

namespace {

/// Among more edges than these, or more leaves, the index finds the right ones sooner
/// (bench/cleaning_bench.cpp).
constexpr std::size_t kMostNearby = 32;

}  // namespace

bool NearbyEdges::findHits(HitQuery const& query, std::size_t k, std::vector<EdgeHit>& found)
{
    if (!moveTo(k) || !holds(place_, query.box().min) || !holds(place_, query.box().max))
        return false;
    listEdges();
    if (areFew_)
        findHitsAmong(edges_.begin(), edges_.end(), query, outline_.points, outline_.closed, found);
    return areFew_;
}

/// Looks for the leaves around that of an edge; false where they are of no use.
bool NearbyEdges::moveTo(std::size_t edge)
{
    if (!index_ || index_->levelCount() == 1)  // one group of boxes is looked at as soon
        return false;
    std::size_t const leaf = edge / EdgeIndex::kFan;
    if (leaf == leaf_)
        return areFew_;
    leaf_ = leaf;
    Box const box =
        index_->inOutlineOrder()
            ? index_->box(0, leaf)
            : boxesOfEdges(outline_, index_->leafBegin(leaf), index_->leafEnd(leaf)).all();
    qcVector<2> const margin(reach_, reach_);
    place_ = {box.min - margin, box.max + margin};
    leaves_.clear();
    TwiceBox const place(place_);
    index_->forEachLeaf(
        [&](BoxGroup const& boxes) {
            return leaves_.size() > kMostNearby ? 0 : boxes.overlapping(place);
        },
        [&](std::size_t near, Box const&) { leaves_.push_back(near); });
    areFew_ = leaves_.size() <= kMostNearby;
    areListed_ = false;
    return areFew_;
}

void NearbyEdges::listEdges()
{
    if (areListed_)
        return;
    areListed_ = true;
    edges_.clear();
    for (std::size_t const leaf : leaves_) {
        for (std::size_t k = index_->leafBegin(leaf); k < index_->leafEnd(leaf); ++k)
            if (edgeOverlaps(edgeStart(outline_.points, outline_.closed, k),
                             edgeEnd(outline_.points, outline_.closed, k), place_))
                edges_.push_back(k);
        areFew_ = edges_.size() <= kMostNearby;
        if (!areFew_)
            return;
    }
    std::sort(edges_.begin(), edges_.end());
}

}  // namespace qnInternal
