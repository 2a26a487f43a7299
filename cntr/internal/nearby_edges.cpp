// One look at the index for all queries around eight edges.
#include "cntr/internal/nearby_edges.h"

#include "cntr/internal/edge_ways.h"

#include <algorithm>

namespace qnInternal {

namespace {

/// Among more edges than these, or more leaves, the index finds the right ones sooner
/// (bench/cleaning_bench.cpp).
constexpr std::size_t kMostNearby = 32;

constexpr unsigned kAllOfLeaf = (1U << EdgeIndex::kFan) - 1;

}  // namespace

bool NearbyEdges::isClear(std::size_t k)
{
    if (!moveTo(k))
        return false;
    if (!touched_)
        touched_ = runsAlone() ? 0 : edgesTouched();
    return (*touched_ >> (k - index_->leafBegin(leaf_)) & 1U) == 0;
}

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
    touched_.reset();
    areListed_ = false;
    return areFew_;
}

/// Whether all edges around are those of the leaf and its neighbours, and go on without turning back.
bool NearbyEdges::runsAlone()
{
    std::size_t const last = index_->leafCount() - 1;
    return std::all_of(leaves_.begin(), leaves_.end(), [&](std::size_t leaf) {
        bool const follows = leaf == leaf_ || leaf == (leaf_ == last ? 0 : leaf_ + 1) ||
                             leaf_ == (leaf == last ? 0 : leaf + 1);
        return follows && !EdgeWays::turn(waysOf(leaf_) | waysOf(leaf));
    });
}

unsigned NearbyEdges::waysOf(std::size_t leaf)
{
    if (ways_.empty())
        ways_.resize(index_->leafCount());
    if (ways_[leaf] == 0)
        ways_[leaf] = EdgeWays::waysOf(*index_, outline_.points, leaf);
    return ways_[leaf];
}

unsigned NearbyEdges::edgesTouched()
{
    listEdges();
    if (!areFew_)
        return kAllOfLeaf;
    std::size_t const begin = index_->leafBegin(leaf_);
    BoxGroup const boxes = boxesOfEdges(outline_, begin, index_->leafEnd(leaf_));
    unsigned touched = 0;
    for (std::size_t const k : edges_) {
        unsigned near = boxes.overlapping(boxOfBoth(edgeStart(outline_.points, outline_.closed, k),
                                                    edgeEnd(outline_.points, outline_.closed, k)));
        // Not by itself nor by its neighbours, as far as they are of this leaf.
        std::size_t const place = k + 1 - begin;
        if (place <= EdgeIndex::kFan + 1)
            near &= ~((7U << place) >> 2);
        touched |= near;
    }
    return touched;
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
