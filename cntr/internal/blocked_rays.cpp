// Edges that stand across all rays whose direction is possible.
#include "cntr/internal/blocked_rays.h"

#include "cntr/internal/edge_walk.h"
#include "cntr/internal/ray_direction.h"

#include <algorithm>

namespace qnInternal {

namespace {

constexpr double kClear = 1e-3;

/// How many times their usual length edges may be away from where they stand across the wedge.
constexpr double kReach = 1;

constexpr double kNarrowest = 4 * kClear;
constexpr double kWidest = 0.5;

}  // namespace

bool BlockedRays::certainAt(qcVector<2> const& point)
{
    if (!reach_.rayLeavesOutline(point))
        return false;
    double angle = std::max(angle_ / 2, kNarrowest);
    while (!rayDirectionIsBelow(outline_, index_, point, angle))
        if ((angle *= 2) > kWidest) {
            angle_ = kNarrowest;
            return false;
        }
    angle_ = angle;
    return blocked(point, 1) && blocked(point, -1);
}

bool BlockedRays::blocked(qcVector<2> const& point, double side) const
{
    qcVector<2> const below(1.0, qcRadian(-kClear));
    qcVector<2> const above(1.0, qcRadian(angle_ + kClear));
    double const squaredGap = reach_.toCrossing() * reach_.toCrossing();
    // From the point's left to its right, where `side` is -1 all is seen turned by half a turn.
    auto const crossesAll = [&](qcVector<2> const& low, qcVector<2> const& high) {
        qcVector<2> const along = high - low;
        double const cross = low.cross(along);
        return low.x() > 0 && high.x() > 0 && below.cross(low) < 0 && above.cross(high) > 0 &&
               cross * cross > squaredGap * (along * along);
    };
    double const reach = kReach * edgeLength_ / angle_;
    Box place = boxOf(point);
    enclose(place, point + qcVector<2>(side * reach, side * reach * angle_));
    TwiceBox const twice(place);
    bool found = false;
    index_.forEachLeaf(
        [&](BoxGroup const& boxes) { return found ? 0 : boxes.overlapping(twice); },
        [&](std::size_t leaf, Box const&) {
            for (std::size_t k = index_.leafBegin(leaf); k < index_.leafEnd(leaf); ++k) {
                qcVector<2> const from = (edgeStart(outline_, true, k) - point) * side;
                qcVector<2> const to = (edgeEnd(outline_, true, k) - point) * side;
                found = found || crossesAll(from, to) || crossesAll(to, from);
            }
        });
    return found;
}

}  // namespace qnInternal
