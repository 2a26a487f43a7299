// Building the hierarchy of edge boxes.
#include "cntr/internal/edge_index.h"

#include "cntr/internal/tolerances.h"

#include <algorithm>
#include <cmath>

namespace qnInternal {

// A computed meeting point is within kOnSegment of the edge and of the segment, save for the rounding
// of those distances: a few ulps of the coordinates. Twice the sum is ample.
SegmentReach::SegmentReach(qcVector<2> const& a, qcVector<2> const& b, double scale)
    : a_(a), direction_(b - a), absX_(std::fabs(direction_.x())), absY_(std::fabs(direction_.y())),
      slack_(0), box_(boxOf(b))
{
    enclose(box_, a);
    double const largest = std::max(scale, largestCoordinate(box_));
    slack_ = (absX_ + absY_) * (4 * kOnSegment + 1e-12 * largest);
}

EdgeIndex::EdgeIndex(std::vector<qcVector<2>> const& points, bool closed)
    : edgeCount_(edgeCount(points.size(), closed)), closed_(closed)
{
    std::size_t const room = edgeCount_ / kFan + edgeCount_ / (kFan * (kFan - 1)) + 24;
    boxes_.reserve(room);
    ways_.reserve(room);
    double notFinite = 0;  // becomes NaN with the first coordinate that is not finite
    double shortest = 1;   // of the larger extents of edges that have one
    // From the start of edge 0 on, the ends of the edges stand one behind the other.
    qcVector<2> from = edgeStart(points, closed, 0);
    qcVector<2> const* to = closed ? points.data() : points.data() + 1;
    for (std::size_t begin = 0; begin < edgeCount_; begin += kFan) {
        std::size_t const count = std::min(kFan, edgeCount_ - begin);
        Box box = boxOf(from);
        Box along{};  // the extremes of the edges' directions, and 0
        for (std::size_t i = 0; i < count; ++i, ++to) {
            enclose(box, *to);
            notFinite += (to->x() + to->y()) * 0.0;
            qcVector<2> const direction = *to - from;
            enclose(along, direction);
            double const extent = std::max(std::fabs(direction.x()), std::fabs(direction.y()));
            shortest = extent != 0 && extent < shortest ? extent : shortest;
            from = *to;
        }
        boxes_.push_back(box);
        ways_.push_back(waysOf(along));
    }
    notFinite += (points.front().x() + points.front().y()) * 0.0;
    levelBegin_[1] = boxes_.size();
    addLevelsAbove();
    scale_ = largestCoordinate(rootBox());
    regular_ =
        notFinite == 0 && shortest * shortest >= kShortestSquare && scale_ <= kLargestRegular;
}

unsigned char EdgeIndex::waysOf(Box const& along)
{
    return static_cast<unsigned char>(
        (along.min.x() < 0 ? kLeft : 0U) | (along.max.x() > 0 ? kRight : 0U) |
        (along.min.y() < 0 ? kDown : 0U) | (along.max.y() > 0 ? kUp : 0U));
}

void EdgeIndex::addLevelsAbove()
{
    for (; nodeCount(levelCount_ - 1) > 1; ++levelCount_) {
        std::size_t const levelEnd = boxes_.size();
        for (std::size_t begin = levelBegin_[levelCount_ - 1]; begin < levelEnd; begin += kFan) {
            std::size_t const end = std::min(begin + kFan, levelEnd);
            Box all = boxes_[begin];
            unsigned ways = 0;
            for (std::size_t i = begin; i < end; ++i) {
                enclose(all, boxes_[i].min);
                enclose(all, boxes_[i].max);
                ways |= ways_[i];
            }
            boxes_.push_back(all);
            ways_.push_back(static_cast<unsigned char>(ways));
        }
        levelBegin_[levelCount_ + 1] = boxes_.size();
    }
}

}  // namespace qnInternal
