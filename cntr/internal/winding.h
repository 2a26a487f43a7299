/// Whether an outline winds around a point, by an index of its edges.
#pragma once

#include "cntr/internal/edge_index.h"
#include "cntr/internal/parity.h"

#include <qc/core/vector.h>

#include <cstddef>
#include <vector>

namespace qnInternal {

/// Counts windings until that has cost as much as slabs, which answer sooner, take to be built.
class WindingCount {
public:
    /// Of a closed outline, by a regular index of it.
    WindingCount(std::vector<qcVector<2>> const& outline, EdgeIndex const& index,
                 ParityReach const& reach)
        : outline_(outline), index_(index), reach_(reach)
    {
    }

    /// Whether slabs would have been worth their cost.
    bool isSpent() const { return leaves_ > outline_.size(); }

    /// What SlabIndex::surelyWound() gives. Looks at the edges to the right of the point.
    bool surelyWound(qcVector<2> const& point);

private:
    std::vector<qcVector<2>> const& outline_;
    EdgeIndex const& index_;
    ParityReach reach_;
    std::size_t leaves_ = 0;  // looked at
};

}  // namespace qnInternal
