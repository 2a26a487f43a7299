/// Where the regions of a list stand while those that meet are merged, and which are to be compared.
///
/// The first of two merged regions stays in its place, and the last of the list takes the place of the
/// other. Regions are numbered as they stood in the list at first.
#pragma once

#include "cntr/internal/box_tree.h"

#include <cstddef>
#include <optional>
#include <set>
#include <vector>

namespace qnInternal {

class MergePlaces {
public:
    /// `boxes` holds those of the regions; one that has none may be anywhere.
    explicit MergePlaces(std::vector<FigureBox> const& boxes);

    /// Begins with the region at `place`: those behind it whose boxes overlap its own are candidates.
    void beginAt(std::size_t place);

    /// The place of the next candidate, in ascending order, which is one no longer.
    std::optional<std::size_t> nextCandidate();

    /// Which of the regions that were merged here have boxes that overlap that of the one at `place`:
    /// 0 stands for the region of beginAt(), 1 for the first that was merged.
    std::vector<std::size_t> mergedNear(std::size_t place) const;

    /// Merges the region at `place`. Those behind it that overlap `reach` become candidates too.
    void merge(std::size_t place, FigureBox const& reach);

private:
    /// The places from `begin` on, ascending, of regions that overlap `reach` and are no candidates yet.
    std::vector<std::size_t> newCandidates(FigureBox const& reach, std::size_t begin);

    std::vector<FigureBox> boxes_;  // by number
    BoxTree tree_;
    std::vector<std::size_t> numberAt_;                 // by place
    std::vector<std::size_t> placeOf_;                  // by number; 0 for those that are gone
    std::vector<std::optional<std::size_t>> mergedAs_;  // by number
    std::vector<std::size_t> merged_;                   // their numbers
    std::vector<std::size_t> first_;  // candidates of beginAt() that are left, the next one last
    std::set<std::size_t> further_;   // and those of later merges
    std::vector<bool> isCandidate_;   // by place
};

}  // namespace qnInternal
