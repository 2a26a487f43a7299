/// Which edges of a closed outline surely meet no other between their ends.
#pragma once

#include "cntr/internal/edge_index.h"

#include <qc/core/vector.h>

#include <cstddef>
#include <vector>

namespace qnInternal {

/// Told by boxes alone: an edge is clear where its box is clear of all others, but for those of its
/// neighbours, or runs on one way with those that it touches.
class ClearEdges {
public:
    /// `index` is that of the outline, or null: then no edge is known to be clear.
    ClearEdges(std::vector<qcVector<2>> const& points, EdgeIndex const* index)
        : points_(points), index_(index)
    {
    }

    /// Whether edge k is sure to be clear. For the first few edges no search is made, and the answer is no;
    /// then all are looked for at once. Near-linear where few boxes overlap; where many do, the search is
    /// given up after some looks at every leaf.
    bool isClear(std::size_t k)
    {
        if (isFound_)
            return !touched_.empty() && (touched_[k / EdgeIndex::kFan] & bit(k)) == 0;
        findAfterSome();
        return false;
    }

    /// To be told of every crossing on the way: where there are many, few edges are clear.
    void noteCrossing() { asked_ -= asked_ < kAsksACrossing ? asked_ : kAsksACrossing; }

private:
    /// So many edges asked about are made up for by a crossing (`regularise` of rose in
    /// bench/cleaning_bench.cpp).
    static constexpr std::size_t kAsksACrossing = 4;

    /// Of an edge among those of its leaf.
    static unsigned bit(std::size_t k) { return 1U << k % EdgeIndex::kFan; }
    static unsigned bitIn(std::size_t leaf, std::size_t k)
    {
        return k / EdgeIndex::kFan == leaf ? bit(k) : 0;
    }

    void findAfterSome();
    void markTouched(std::size_t a, std::size_t b);

    std::vector<qcVector<2>> const& points_;
    EdgeIndex const* index_;
    std::size_t asked_ = 0;
    bool isFound_ = false;
    std::vector<unsigned char> touched_;  // by leaf, bits of its edges that are not clear; or empty
};

}  // namespace qnInternal
