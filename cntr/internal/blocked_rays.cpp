// Edges that stand across all rays whose direction is possible.
#include "cntr/internal/blocked_rays.h"

#include "cntr/internal/edge_walk.h"
#include "cntr/internal/ray_direction.h"

#include <algorithm>
#include <cmath>

namespace qnInternal {

namespace {

/// The highest slope asked about: of rays so steep, less is in the way of the search for a gap.
constexpr double kSteepest = 0.5;

/// How far the directions must be from the ends of an edge, in slopes, which up to kSteepest grow less
/// than a third faster than angles; and how far its line from the point.
constexpr double kClearOfEnds = 1.5e-5;
constexpr double kNearestLine = 0.01;

/// How far away edges are looked for, in units of how long they usually are.
constexpr double kReachInEdges = 24;

/// More edges are not looked at: some may be much shorter than usual.
constexpr std::size_t kMostEdges = 512;

}  // namespace

bool BlockedRays::certainAt(qcVector<2> const& point)
{
    if (!reach_.rayLeavesOutline(point))
        return false;
    double const ahead = blockedBelow(point, 1, kSteepest);
    double const slope = ahead > 0 ? blockedBelow(point, -1, ahead) : 0;
    return slope > 0 && rayDirectionIsBelow(outline_, index_, point, std::atan(slope), width_);
}

double BlockedRays::blockedBelow(qcVector<2> const& point, double side, double highest)
{
    double const gap = std::max(reach_.toCrossing(), kNearestLine);
    double const squaredGap = gap * gap;
    double const reach = kReachInEdges * edgeLength_;
    Box place = boxOf(point);
    enclose(place, point + qcVector<2>(side * reach, side * reach * highest));
    crossed_.clear();
    std::size_t edges = 0;
    auto const addSlopes = [&](std::size_t k) {
        // Seen turned by half a turn where `side` is -1: the rays then go to the right as well.
        qcVector<2> const a = (edgeStart(outline_, true, k) - point) * side;
        qcVector<2> const b = (edgeEnd(outline_, true, k) - point) * side;
        qcVector<2> const along = b - a;
        double const cross = a.cross(along);
        if (a.x() > 0 && b.x() > 0 && cross * cross > squaredGap * (along * along)) {
            double const one = a.y() / a.x(), other = b.y() / b.x();
            crossed_.push_back(
                {std::min(one, other) + kClearOfEnds, std::max(one, other) - kClearOfEnds});
        }
        return ++edges == kMostEdges;
    };
    index_.anyEdgeNear(TwiceBox(place), addSlopes);
    std::sort(crossed_.begin(), crossed_.end(),
              [](Slopes const& a, Slopes const& b) { return a.lowest < b.lowest; });
    double covered = 0;
    for (auto const& slopes : crossed_)
        if (slopes.lowest <= covered)
            covered = std::max(covered, slopes.highest);
    return std::min(covered, highest);
}

}  // namespace qnInternal
