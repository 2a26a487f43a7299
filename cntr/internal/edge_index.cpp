// Building the hierarchy of edge boxes.
#include "cntr/internal/edge_index.h"

#include "cntr/internal/tolerances.h"

#include <algorithm>
#include <cmath>

namespace qnInternal {

namespace {

Box joined(Box const* begin, Box const* end)
{
    Box all = *begin;
    for (Box const* box = begin + 1; box != end; ++box) {
        enclose(all, box->min);
        enclose(all, box->max);
    }
    return all;
}

}  // namespace

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
    std::vector<Box> leaves;
    leaves.reserve(edgeCount_ / kFan + 1);
    double notFinite = 0;  // becomes NaN with the first coordinate that is not finite
    bool tooShort = false;
    qcVector<2> from = edgeStart(points, closed, 0);
    for (std::size_t k = 0; k < edgeCount_; ++k) {
        if (k % kFan == 0)
            leaves.push_back(boxOf(from));
        qcVector<2> const to = edgeEnd(points, closed, k);
        enclose(leaves.back(), to);
        notFinite += to.x() * 0.0 + to.y() * 0.0;
        qcVector<2> const along = to - from;
        tooShort |= along * along < kShortestSquare && !(along == qcVector<2>());
        from = to;
    }
    notFinite += points.front().x() * 0.0 + points.front().y() * 0.0;
    levels_.push_back(std::move(leaves));
    while (levels_.back().size() > 1) {
        auto const& below = levels_.back();
        std::vector<Box> above;
        above.reserve(below.size() / kFan + 1);
        for (std::size_t begin = 0; begin < below.size(); begin += kFan)
            above.push_back(
                joined(&below[begin], below.data() + std::min(begin + kFan, below.size())));
        levels_.push_back(std::move(above));
    }
    scale_ = largestCoordinate(rootBox());
    regular_ = notFinite == 0 && !tooShort && scale_ <= kLargestRegular;
}

}  // namespace qnInternal
