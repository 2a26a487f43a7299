// Containment in the closed outline by parity, for the points where that is certain.
#include <cntr/contour.h>

#include "cntr/internal/parity.h"

namespace {

/// So many queries are answered by a loop over all edges; then the slabs are worth building
/// (bench/edge_index_bench.cpp).
constexpr std::size_t kQueriesWithoutSlabs = 16;

}  // namespace

std::optional<bool> qcContour::certainlyInside(qcVector<2> const& point) const
{
    if (slabIndex_ && !slabIndex_->pointsBeforeSorting())
        return slabIndex_->inside(points_, point);
    if (points_.size() < 3)
        return std::nullopt;
    if (!qnInternal::holds({bounds().min, bounds().max}, point))
        return false;
    if (!slabIndex_) {
        auto const reach = parityReachAt(point);
        if (!reach)
            return std::nullopt;
        if (++containmentQueries_ <= kQueriesWithoutSlabs)
            return qnInternal::insideByAllEdges(points_, point, *reach);
    }
    auto const* const index = slabs();
    return index ? index->inside(points_, point) : std::nullopt;
}

bool qcContour::surelyWound(qcVector<2> const& point) const
{
    auto const* const index = slabs();
    return index && index->surelyWound(points_, point);
}

std::optional<qnInternal::ParityReach> qcContour::parityReach() const
{
    double const radius = circle(qcContourDefs::eFromFirstPoint).radius;
    return parityReach({radius, radius});
}

std::optional<qnInternal::ParityReach> qcContour::parityReachAt(qcVector<2> const& point) const
{
    // The box alone mostly says enough; that spares a first question the circle.
    if (!encloseCircles_[qcContourDefs::eFromFirstPoint])
        if (auto reach = parityReach(
                qnInternal::radiusWithin({bounds().min, bounds().max}, points_.front()));
            reach && reach->rayLeavesOutline(point))
            return reach;
    return parityReach();
}

std::optional<qnInternal::ParityReach>
qcContour::parityReach(qnInternal::RadiusBounds const& radius) const
{
    if (points_.size() < 3 || !bounds().finite)
        return std::nullopt;
    qnInternal::Box const box{bounds().min, bounds().max};
    qnInternal::ParityReach const reach(box, points_.size(), points_.front(), radius);
    return reach.certain() ? std::optional(reach) : std::nullopt;
}

qnInternal::SlabIndex const* qcContour::slabs() const
{
    if (!slabIndex_) {
        auto const reach = parityReach();
        if (!reach)
            return nullptr;
        qnInternal::Box const box{bounds().min, bounds().max};
        slabIndex_ = std::make_shared<qnInternal::SlabIndex>(points_, box, *reach);
    } else if (auto const points = slabIndex_->pointsBeforeSorting();
               points && ++containmentQueries_ > *points) {
        auto sorted = std::make_shared<qnInternal::SlabIndex>(*slabIndex_);
        sorted->sortFromLeft(points_);
        slabIndex_ = std::move(sorted);
    }
    return slabIndex_.get();
}
