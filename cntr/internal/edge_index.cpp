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
    bool tooShort = false;
    qcVector<2> from = edgeStart(points, closed, 0);
    for (std::size_t k = 0; k < edgeCount_; ++k) {
        if (k % kFan == 0) {
            boxes_.push_back(boxOf(from));
            ways_.push_back(0);
        }
        qcVector<2> const to = edgeEnd(points, closed, k);
        enclose(boxes_.back(), to);
        notFinite += to.x() * 0.0 + to.y() * 0.0;
        qcVector<2> const along = to - from;
        ways_.back() = static_cast<unsigned char>(ways_.back() | waysOf(along));
        tooShort |= along * along < kShortestSquare && !(along == qcVector<2>());
        from = to;
    }
    notFinite += points.front().x() * 0.0 + points.front().y() * 0.0;
    levelBegin_[1] = boxes_.size();
    addLevelsAbove();
    scale_ = largestCoordinate(rootBox());
    regular_ = notFinite == 0 && !tooShort && scale_ <= kLargestRegular;
}

unsigned EdgeIndex::waysOf(qcVector<2> const& along)
{
    return (along.x() < 0 ? kLeft : 0U) | (along.x() > 0 ? kRight : 0U) |
           (along.y() < 0 ? kDown : 0U) | (along.y() > 0 ? kUp : 0U);
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
