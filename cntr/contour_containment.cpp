// Containment in the closed outline by parity, for the points where that is certain.
#include <cntr/contour.h>

#include "cntr/internal/parity.h"

namespace {

/// So many queries are answered by a loop over all edges; then the slabs are worth building
/// (bench/edge_index_bench.cpp).
constexpr int kQueriesWithoutSlabs = 8;

}  // namespace

std::optional<bool> qcContour::certainlyInside(qcVector<2> const& point) const
{
    if (slabIndex_)
        return slabIndex_->inside(points_, point);
    if (points_.size() < 3 || !bounds().finite)
        return std::nullopt;
    qnInternal::Box const box{bounds().min, bounds().max};
    double const radius = encloseCircle(qcContourDefs::eFromFirstPoint).radius();
    qnInternal::ParityReach const reach(box, points_.size(), points_.front(), radius);
    if (!reach.certain())
        return std::nullopt;
    if (++containmentQueries_ <= kQueriesWithoutSlabs)
        return qnInternal::insideByAllEdges(points_, point, reach);
    slabIndex_ = std::make_shared<qnInternal::SlabIndex>(points_, box, reach);
    return slabIndex_->inside(points_, point);
}
