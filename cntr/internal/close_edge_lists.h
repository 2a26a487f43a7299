/// The edges close to each edge of an outline, where they are found sooner all at once than one by one.
#pragma once

#include "cntr/internal/edge_boxes.h"
#include "cntr/internal/edge_hits.h"
#include "cntr/internal/edge_index.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace qnInternal {

/// For every edge of an outline those that come close to it, if a look at the index for every step of a
/// walk would take longer than to find them all: where boxes of long oblique edges overlap much.
class CloseEdgeLists {
public:
    /// `index` is that of the outline, or null.
    CloseEdgeLists(Outline const& outline, EdgeIndex const* index);

    /// Whether they were found.
    bool known() const { return !begin_.empty(); }

    /// Replaces `found` by the hits of a regular query that lies along edge k, within kOnSegment of it, in
    /// the order that HitQuery::sortAlong() gives.
    void findHits(HitQuery const& query, std::size_t k, std::vector<EdgeHit>& found) const;

private:
    Outline outline_;
    std::vector<std::size_t> begin_;    // by edge, in edges_
    std::vector<std::uint32_t> edges_;  // ascending for each
};

}  // namespace qnInternal
