// Two outlines that cross, joined into one that runs around both.
#include <cntr/region.h>

#include "cntr/internal/edge_index.h"
#include "cntr/internal/edge_walk.h"
#include "cntr/internal/tolerances.h"

#include <qc/core/compare.h>

#include <algorithm>
#include <utility>

namespace {

/// Calls visit(k), ascending, for the edges near `place`, up to the first it accepts; all edges are
/// near it where there is no index.
template <class Visit>
void forEachNear(std::size_t edgeCount, qnInternal::EdgeIndex const* index,
                 std::optional<qnInternal::Box> const& place, Visit const& visit)
{
    if (!index || !place) {
        for (std::size_t k = 0; k < edgeCount; ++k)
            if (visit(k))
                return;
        return;
    }
    std::vector<std::size_t> leaves;
    index->forEachLeaf([&](qnInternal::BoxGroup const& boxes) { return boxes.overlapping(*place); },
                       [&](std::size_t leaf, qnInternal::Box const&) { leaves.push_back(leaf); });
    std::sort(leaves.begin(), leaves.end());
    for (std::size_t const leaf : leaves)
        for (std::size_t k = index->leafBegin(leaf); k < index->leafEnd(leaf); ++k)
            if (visit(k))
                return;
}

}  // namespace

void qcRegion::splice(qcRegion const& other, qcRegion& result) const
{
    auto const& outline = points();
    std::vector<qcVector<2>> spliced;
    auto const appendAround = [&](qcVector<2> const& crossing,
                                  std::vector<qcVector<2>> const& around, std::size_t edge) {
        spliced.push_back(crossing);
        auto const first = around.begin() + static_cast<std::ptrdiff_t>(edge);
        spliced.insert(spliced.end(), first, around.end());
        spliced.insert(spliced.end(), around.begin(), first);
    };
    forEachNear(outline.size(), edgeIndex(), other.outlineBox(), [&](std::size_t i) {
        qcVector<2> const& from = qnInternal::edgeStart(outline, true, i);
        if (qfRealEq(from, outline[i], qnInternal::kSamePoint))
            return false;
        std::vector<int> edges;
        auto const found = other.qcContour::intersections(qcLineSeg(from, outline[i]), edges, true);
        if (found.empty())
            return false;
        spliced.reserve(outline.size() + other.points().size() + 2);
        appendAround(found.front(), outline, i);
        appendAround(found.front(), other.points(), static_cast<std::size_t>(edges.front()));
        return true;
    });
    if (spliced.empty())
        throw qcContourDefs::BadParams(L"spliced regions do not intersect");
    result = qcRegion();
    // Not copied: long chains of regions are spliced one by one.
    result.points_ = std::move(spliced);
}
