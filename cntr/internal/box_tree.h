/// The boxes of the figures of a list, arranged so that few are looked at.
///
/// Like the index of edges it only proposes; the caller asks the figures themselves.
#pragma once

#include "cntr/internal/box_hierarchy.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

namespace qnInternal {

/// A figure's box, or none where no box tells where the figure lies: it may then be anywhere.
using FigureBox = std::optional<Box>;

class BoxTree {
public:
    /// Sorts n boxes along a curve: O(n). Figures are numbered as they stand in `boxes`.
    explicit BoxTree(std::vector<FigureBox> const& boxes);

    /// Replaces `found` by the numbers, ascending, of the figures from `begin` on whose boxes
    /// share a point with `place`; with none, of all of them. Where these are more than `most`, some of
    /// them, still more than that.
    void collect(FigureBox const& place, std::size_t begin, std::vector<std::size_t>& found,
                 std::size_t most = std::numeric_limits<std::size_t>::max()) const;

private:
    std::vector<std::size_t> anywhere_;
    std::vector<std::uint32_t> numberAt_;  // by place on the curve
    BoxHierarchy boxes_;
    std::size_t count_;
};

}  // namespace qnInternal
