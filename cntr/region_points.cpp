// A region and a point: containment, closest vertex, closest boundary point, distance.
#include <cntr/region.h>

#include "cntr/internal/first_circle.h"
#include "cntr/internal/nearest.h"
#include "cntr/internal/ray_direction.h"

#include <algorithm>
#include <unordered_map>

namespace {

/// A region asked about a point, and which of its holes to ask next.
struct Asked {
    qcRegion const* region;
    std::size_t nextHole;
};

}  // namespace

std::optional<qcVector<2>> qcRegion::containmentRay(qcVector<2> const& point,
                                                    qnInternal::RaySight& sight) const
{
    auto const* const index = edgeIndex();
    auto const direction = index && qnInternal::isRegularPoint(point)
                               ? qnInternal::rayDirection(points(), *index, point, sight)
                               : qnInternal::rayDirection(points(), point);
    if (!direction)
        return std::nullopt;
    return *direction * (2 * circle(qcContourDefs::eFromFirstPoint).radius);
}

bool qcRegion::insideByRay(qcVector<2> const& point) const
{
    if (!encloseRect(qcXform<2>()).within(point))
        return false;
    std::optional<qnInternal::FirstCircle> around;
    if (auto const reach = parityReach())
        around.emplace(points().front(), circle(qcContourDefs::eFromFirstPoint).radius, *reach);
    bool const beyond = around && around->isBeyond(point);
    if (beyond && around->isPassedFrom(point))
        return false;
    qnInternal::RaySight sight;
    if (beyond)
        sight.first = around->lowestAngle(point);
    auto const ray = containmentRay(point, sight);
    if (!ray)
        return true;  // on a vertex
    qcVector<2> const end = point + *ray;
    if (beyond && around->isBeyond(end))
        return false;
    return crossings(qcLineSeg(point, end), false, false).size() % 2 == 1;
}

bool qcRegion::insideOutline(qcVector<2> const& point) const
{
    if (auto const certain = certainlyInside(point))
        return *certain;
    return insideByRay(point);
}

bool qcRegion::inside(qcVector<2> const& point, bool considerHoles) const
{
    if (!considerHoles)
        return insideOutline(point);
    // Holes have holes of their own, to any depth, so the regions asked stand on a stack here. A
    // region contains the point when its outline does and none of its holes does.
    std::vector<Asked> asked;
    // Regions with holes are asked once, however many lists they stand in: through lists that share
    // them, level upon level, the ways to them double with every level.
    std::unordered_map<qcRegion const*, bool> answered;
    qcRegion const* next = this;
    bool answer = false;
    while (true) {
        if (next) {
            auto const known = answered.find(next);
            answer = known != answered.end() ? known->second : next->insideOutline(point);
            if (known == answered.end() && answer && !next->holes_.empty()) {
                asked.push_back({next, 1});
                next = &*next->holes_.front();
                continue;
            }
            next = nullptr;
        }
        if (asked.empty())
            return answer;
        Asked& outer = asked.back();
        if (!answer && outer.nextHole < outer.region->holes_.size()) {
            next = &*outer.region->holes_[outer.nextHole++];
            continue;
        }
        answer = !answer;  // inside a hole is outside its region, and outside all of them inside
        if (outer.region != this)
            answered.emplace(outer.region, answer);
        asked.pop_back();
    }
}

long qcRegion::closestVertexIndex(qcVector<2> const& point) const
{
    return qcContour::closestVertexIndex(point);
}

long qcRegion::closestVertexIndex(qcVector<2> const& point, bool considerHoles, long& which) const
{
    which = -1;
    long closest = qcContour::closestVertexIndex(point);
    if (!considerHoles || holes_.empty())
        return closest;
    double best = point.distance(points()[static_cast<std::size_t>(closest)]);
    for (std::size_t i = 0; i < holes_.size(); ++i) {
        qcRegion const& hole = *holes_[i];
        long const candidate = hole.qcContour::closestVertexIndex(point);
        double const d = point.distance(hole.points()[static_cast<std::size_t>(candidate)]);
        if (d < best) {
            which = static_cast<long>(i);
            closest = candidate;
            best = d;
        }
    }
    return closest;
}

qcVector<2> qcRegion::closestPoint(qcVector<2> const& point, bool verticesOnly, bool considerHoles)
{
    return boundaryPoint(point, verticesOnly, considerHoles);
}

qcVector<2> qcRegion::boundaryPoint(qcVector<2> const& point, bool verticesOnly,
                                    bool considerHoles) const
{
    if (verticesOnly) {
        long which = -1;
        auto const index =
            static_cast<std::size_t>(closestVertexIndex(point, considerHoles, which));
        return which < 0 ? points()[index]
                         : holes_[static_cast<std::size_t>(which)]->points()[index];
    }
    qcVector<2> best = qcContour::closestPoint(point, false);
    double distance = point.distance(best);
    for (auto const& hole : holes_) {
        qcVector<2> const candidate = hole->qcContour::closestPoint(point, false);
        double const d = point.distance(candidate);
        if (d < distance) {
            distance = d;
            best = candidate;
        }
    }
    return best;
}

double qcRegion::distToPoint(qcVector<2> const& point, bool verticesOnly, bool considerHoles,
                             bool insideIsZero) const
{
    if (insideIsZero && inside(point, considerHoles))
        return 0.0;
    return point.distance(boundaryPoint(point, verticesOnly, considerHoles));
}
