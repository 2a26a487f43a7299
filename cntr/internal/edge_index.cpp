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
    std::vector<unsigned char> ways;
    leaves.reserve(edgeCount_ / kFan + 1);
    ways.reserve(edgeCount_ / kFan + 1);
    double notFinite = 0;  // becomes NaN with the first coordinate that is not finite
    bool tooShort = false;
    qcVector<2> from = edgeStart(points, closed, 0);
    for (std::size_t k = 0; k < edgeCount_; ++k) {
        if (k % kFan == 0) {
            leaves.push_back(boxOf(from));
            ways.push_back(0);
        }
        qcVector<2> const to = edgeEnd(points, closed, k);
        enclose(leaves.back(), to);
        notFinite += to.x() * 0.0 + to.y() * 0.0;
        qcVector<2> const along = to - from;
        ways.back() = static_cast<unsigned char>(ways.back() | waysOf(along));
        tooShort |= along * along < kShortestSquare && !(along == qcVector<2>());
        from = to;
    }
    notFinite += points.front().x() * 0.0 + points.front().y() * 0.0;
    levels_.push_back(std::move(leaves));
    ways_.push_back(std::move(ways));
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
    while (levels_.back().size() > 1) {
        auto const& below = levels_.back();
        auto const& waysBelow = ways_.back();
        std::vector<Box> above;
        std::vector<unsigned char> waysAbove;
        above.reserve(below.size() / kFan + 1);
        waysAbove.reserve(below.size() / kFan + 1);
        for (std::size_t begin = 0; begin < below.size(); begin += kFan) {
            std::size_t const end = std::min(begin + kFan, below.size());
            above.push_back(joined(&below[begin], below.data() + end));
            unsigned all = 0;
            for (std::size_t i = begin; i < end; ++i)
                all |= waysBelow[i];
            waysAbove.push_back(static_cast<unsigned char>(all));
        }
        levels_.push_back(std::move(above));
        ways_.push_back(std::move(waysAbove));
    }
}

}  // namespace qnInternal
