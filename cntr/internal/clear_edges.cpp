// Marks the edges whose boxes touch those of others, by pairs of leaves.
#include "cntr/internal/clear_edges.h"

#include "cntr/internal/edge_boxes.h"
#include "cntr/internal/leaf_pairs.h"

namespace qnInternal {

namespace {

/// Beyond so many pairs of leaves for every leaf, few edges would be clear (bench/cleaning_bench.cpp).
constexpr std::size_t kMostPairsALeaf = 8;

/// A walk along few edges is over before a search for the clear ones would pay: along so many, or one in
/// so many of the outline's (`regularise` of few and rose in bench/cleaning_bench.cpp).
constexpr std::size_t kFewEdges = 16;
constexpr std::size_t kOneIn = 32;

}  // namespace

void ClearEdges::findAfterSome()
{
    if (!index_ || ++asked_ < kFewEdges + points_.size() / kOneIn)
        return;
    isFound_ = true;
    touched_.resize(index_->leafCount());
    std::size_t left = kMostPairsALeaf * index_->leafCount();
    bool const areTooMany = LeafPairs(*index_, points_).any([&](std::size_t a, std::size_t b) {
        markTouched(a, b);
        return --left == 0;
    });
    if (areTooMany)
        touched_.clear();
}

/// Marks the edges of two leaves, or of one, that touch each other and are no neighbours. The leaves are
/// named by their boxes of level 0.
void ClearEdges::markTouched(std::size_t a, std::size_t b)
{
    std::size_t const leaf = index_->leafAt(a);
    std::size_t const other = index_->leafAt(b);
    auto const boxesOf = [&](std::size_t one) {
        return boxesOfEdges({points_, true}, index_->leafBegin(one), index_->leafEnd(one));
    };
    BoxGroup const boxes = boxesOf(leaf);
    unsigned const some = boxes.overlapping(index_->box(0, b));
    if (some == 0)
        return;
    std::size_t const last = points_.size() - 1;
    BoxGroup const others = a == b ? boxes : boxesOf(other);
    unsigned touched = 0;
    unsigned othersTouched = 0;
    forEachBit(some, [&](std::size_t i) {
        std::size_t const k = index_->leafBegin(leaf) + i;
        unsigned const besides = bitIn(other, k == 0 ? last : k - 1) | bitIn(other, k) |
                                 bitIn(other, k == last ? 0 : k + 1);
        unsigned const near = others.overlapping(boxes.box(i)) & ~besides;
        othersTouched |= near;
        touched |= near != 0 ? bit(k) : 0;
    });
    touched_[leaf] = static_cast<unsigned char>(touched_[leaf] | touched);
    touched_[other] = static_cast<unsigned char>(touched_[other] | othersTouched);
}

}  // namespace qnInternal
