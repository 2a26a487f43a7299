// The regularised outline of a region: start edge, boundary walk, cached results.
#include <cntr/region.h>

#include "cntr/internal/blocked_rays.h"
#include "cntr/internal/boundary_walk.h"
#include "cntr/internal/clear_edges.h"
#include "cntr/internal/close_edge_lists.h"
#include "cntr/internal/edge_walk.h"
#include "cntr/internal/nearby_edges.h"
#include "cntr/internal/ray_direction.h"
#include "cntr/internal/tolerances.h"
#include "cntr/internal/winding.h"
#include "cntr/region_loops.h"

namespace {

/// So many edges are tried as they come; then it pays to prepare for the windings that reject most edges
/// without a ray.
constexpr long kTriedPlainly = 1;

}  // namespace

/// What meets segments and rays from points that lie one beside the other along the outline.
class qcRegion::Surroundings {
public:
    /// Segments stay as near to the edges as `reach`, mostly.
    Surroundings(qcRegion const& region, double reach)
        : region_(region), nearby_({region.points(), true}, region.edgeIndex(), reach)
    {
    }

    /// How often the outline meets the segment between two points at an edge.
    std::size_t hitsBetween(qcVector<2> const& from, qcVector<2> const& to, std::size_t edge)
    {
        qnInternal::HitQuery const query(from, to, true);
        if (!nearby_.findHits(query, edge, hits_))
            region_.findHits(query, hits_);
        return hits_.size();
    }

    /// Whether the outline is sure to wind around a point. Then its ray is not free. The ray the other way
    /// keeps away from no vertex, and might be: along an edge at a sine below 1e-10, or so small that
    /// rounding takes the meeting point past the edge's end. That is not looked for, which would take
    /// several times as long as all the rest; no edge beside such a point faces the outside.
    bool isWound(qcVector<2> const& point)
    {
        prepare();
        return windings_ && !windings_->isSpent() ? windings_->surelyWound(point)
                                                  : region_.surelyWound(point);
    }

    /// Whether the containment ray from a point, or the one the other way, meets nothing.
    bool isRayFree(qcVector<2> const& point)
    {
        if (!region_.encloseRect(qcXform<2>()).within(point))
            return true;
        if (sight_.crowded && surelyBlocked(point))
            return false;
        auto const ray = region_.containmentRay(point, sight_);
        return ray && (isFree(point, point + *ray, ahead_) || isFree(point, point - *ray, behind_));
    }

private:
    /// `blocker` is an edge that met such a ray before, and becomes one that meets this.
    bool isFree(qcVector<2> const& point, qcVector<2> const& end,
                std::optional<std::size_t>& blocker) const
    {
        qnInternal::HitQuery const query(point, end, false);
        if (blocker && isMetNear(query, *blocker))
            return false;
        blocker = region_.edgeMetBy(query);
        return !blocker;
    }

    /// Whether an edge meets the query that is one of a few about edge `k`, which is left at that one.
    bool isMetNear(qnInternal::HitQuery const& query, std::size_t& k) const
    {
        constexpr std::size_t kAround = 2;
        std::size_t const count = region_.points().size();
        std::size_t const first = k + count - kAround;
        for (std::size_t i = 0; i <= 2 * kAround; ++i) {
            std::size_t const near = (first + i) % count;
            if (query.meets(qnInternal::edgeStart(region_.points(), true, near),
                            region_.points()[near])) {
                k = near;
                return true;
            }
        }
        return false;
    }

    bool surelyBlocked(qcVector<2> const& point)
    {
        prepare();
        return blocked_ && blocked_->certainAt(point);
    }

    void prepare()
    {
        if (prepared_)
            return;
        prepared_ = true;
        auto const* const index = region_.edgeIndex();
        auto const reach = region_.parityReach();
        if (!index || !reach)
            return;
        windings_.emplace(region_.points(), *index, *reach);
        blocked_.emplace(region_.points(), *index, *reach, region_.medianFeatureSize());
    }

    qcRegion const& region_;
    qnInternal::NearbyEdges nearby_;
    std::vector<qnInternal::EdgeHit> hits_;
    qnInternal::RaySight sight_;
    std::optional<std::size_t> ahead_;  // edges that were in the way
    std::optional<std::size_t> behind_;
    bool prepared_ = false;
    std::optional<qnInternal::WindingCount> windings_;
    std::optional<qnInternal::BlockedRays> blocked_;
};

void qcRegion::regularize(qcRegion& result) const
{
    cleaned(regularized_, false, result);
}

void qcRegion::outerHull(qcRegion& result) const
{
    cleaned(outerHull_, true, result);
}

void qcRegion::cleaned(Result& cache, bool outerHullStage, qcRegion& result) const
{
    if (!isSelfIntersecting()) {
        result = *this;
        return;
    }
    if (!cache.valid) {
        qcPtrHandle<qcRegion> const fresh(
            new qcRegion(std::vector<qcVector<2>>(), qcContourDefs::eIgnore));
        cache.region = fresh;
        outerHullRegularize(*fresh, outerHullStage);
        cache.valid = true;
    }
    // Held here as well: where `result` is this region, the assignment replaces the handle.
    auto const held = cache.region;
    result = *held;
}

void qcRegion::outerHullRegularize(qcRegion& result, bool outerHullStage) const
{
    checkEmptyContour();
    auto const boundary = walkBoundary(startEdge());
    if (outerHullStage)
        result = qcRegion(qnInternal::outermostLoops(boundary), qcContourDefs::eIgnore);
    else
        result = qcRegion(boundary, qcContourDefs::eIgnore);
}

long qcRegion::startEdge() const
{
    double const probe = qnInternal::kProbe * medianFeatureSize();
    Surroundings around(*this, probe);
    auto const last = static_cast<long>(points().size()) - 1;
    for (long i = 0; i < last; ++i)
        if (facesOutside(i, probe, around))
            return i;
    throw qcContourDefs::BadParams(L"invalid contour");
}

bool qcRegion::facesOutside(long edge, double probe, Surroundings& around) const
{
    qcVector<2> const& from = points()[static_cast<std::size_t>(edge)];
    qcVector<2> const& to = points()[static_cast<std::size_t>(edge) + 1];
    qcVector<2> const along = (from - to).unit();
    qcVector<2> const middle = (from + to) * 0.5;
    qcVector<2> const across = qcVector<2>(-along.y(), along.x()) * probe;
    qcVector<2> const a = middle + across;
    qcVector<2> const b = middle - across;
    bool const aWound = edge >= kTriedPlainly && around.isWound(a);
    bool const bWound = edge >= kTriedPlainly && around.isWound(b);
    // Numbered here by the vertex that it begins at, in the index by the one that it ends at.
    auto const hits = [&](qcVector<2> const& p, qcVector<2> const& q) {
        return around.hitsBetween(p, q, static_cast<std::size_t>(edge) + 1);
    };
    // Of the edges that are asked for their rays most fail by them, and hardly any by its hits.
    return ((!aWound && around.isRayFree(a)) || (!bWound && around.isRayFree(b))) &&
           hits(a, b) == 1 && hits(from, to) == 2;
}

std::vector<qcVector<2>> qcRegion::walkBoundary(long start) const
{
    qnInternal::CloseEdgeLists const closeEdges({points(), true}, edgeIndex());
    qnInternal::ClearEdges clearEdges(points(), edgeIndex());
    qnInternal::NearbyEdges nearby({points(), true}, edgeIndex(), qnInternal::kOnSegment);
    auto const isClear = [&](long edge) {
        return clearEdges.isClear(static_cast<std::size_t>(edge));
    };
    std::vector<qnInternal::EdgeHit> found;
    auto const firstCrossing = [&](qcVector<2> const& from, qcVector<2> const& to,
                                   long edge) -> qnInternal::EdgeHit const* {
        auto const k = static_cast<std::size_t>(edge);
        qnInternal::HitQuery const query(from, to, false);
        if (closeEdges.known() && query.regular())
            closeEdges.findHits(query, k, found);
        else if (!nearby.findHits(query, k, found))
            findHits(query, found);
        if (found.empty())
            return nullptr;
        clearEdges.noteCrossing();
        return &found.front();
    };
    auto walked = qnInternal::walkBoundary(points(), start, isClear, firstCrossing);
    if (!walked)
        throw qcContourDefs::BadParams(L"invalid contour");
    return *walked;
}
