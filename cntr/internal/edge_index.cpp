// Building the hierarchy of edge boxes, and which of its boxes a segment can meet edges in.
#include "cntr/internal/edge_index.h"

#include "cntr/internal/curve_order.h"
#include "cntr/internal/tolerances.h"

#include <qc/core/internal/extremes.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace qnInternal {

namespace {

/// Whether a coordinate is so near to 0 that squares of differences lose digits.
bool isTooSmall(double coordinate)
{
    return coordinate != 0 && std::fabs(coordinate) < kSmallestRegular;
}

/// Whether one of the points between `low` and `high` has a coordinate that is too small.
bool anyTooSmall(Extremes const& run, qcVector<2> const* points, std::size_t count)
{
    auto const mayBe = [&](std::size_t axis) {
        return run.low[axis] < kSmallestRegular && run.high[axis] > -kSmallestRegular;
    };
    return (mayBe(0) || mayBe(1)) &&
           std::any_of(points, points + count, [](qcVector<2> const& point) {
               return isTooSmall(point.x()) || isTooSmall(point.y());
           });
}

}  // namespace

unsigned SegmentReach::boxesOnOneSide(BoxGroup const& boxes) const
{
    double const slack = (absX_ + absY_) * margin_;
    return eightBits([&](std::size_t i) {
        Pair const half = both(0.5);
        Pair const lowX = pairAt(boxes.minX, i);
        Pair const lowY = pairAt(boxes.minY, i);
        Pair const highX = pairAt(boxes.maxX, i);
        Pair const highY = pairAt(boxes.maxY, i);
        Pair const reach =
            absX_ * ((highY - lowY) * half) + absY_ * ((highX - lowX) * half) + slack;
        Pair const offset = direction_.x() * ((lowY + highY) * half - a_.y()) -
                            direction_.y() * ((lowX + highX) * half - a_.x());
        return eitherHolds(offset > reach, -offset > reach);
    });
}

unsigned SegmentReach::edges(qcVector<2> const& start, qcVector<2> const* ends,
                             std::size_t count) const
{
    unsigned left = 0;  // bits of the points, the start first
    unsigned right = 0;
    auto const add = [&](qcVector<2> const& p, qcVector<2> const& q, std::size_t i) {
        Pair const x = Pair{p.x(), q.x()} - a_.x();
        Pair const y = Pair{p.y(), q.y()} - a_.y();
        Pair const offset = direction_.x() * y - direction_.y() * x;
        unsigned const far = bitsOf(offset * offset > both(squaredLimit_));
        unsigned const positive = bitsOf(offset > Pair{});
        left |= (far & positive) << i;
        right |= (far & ~positive) << i;
    };
    add(start, ends[0], 0);
    for (std::size_t i = 1; i < count; i += 2)
        add(ends[i], ends[std::min(i + 1, count - 1)], i + 1);
    unsigned const oneSide = (left & (left >> 1)) | (right & (right >> 1));
    return ~oneSide & ((1U << count) - 1);
}

EdgeIndex::EdgeIndex(std::vector<qcVector<2>> const& points, bool closed, Folded folded)
    : edgeCount_(edgeCount(points.size(), closed)), vertexCount_(points.size()), closed_(closed),
      boxes_((edgeCount_ + kFan - 1) / kFan)
{
    addLeaves(points);
    boxes_.addLevelsAbove();
    rootBox_ = boxes_.rootBox();
    scale_ = largestCoordinate(rootBox_);
    regular_ = regular_ && scale_ <= kLargestRegular;
    foldsBack_ = regular_ && levelsOverlap();
    if (foldsBack_ && folded == Folded::eSorted) {
        sortLeavesAlongCurve();
        boxes_.addLevelsAbove();
    }
}

void EdgeIndex::addLeaves(std::vector<qcVector<2>> const& points)
{
    // From the start of edge 0 on, the ends of the edges stand one behind the other.
    qcVector<2> from = edgeStart(points, closed_, 0);
    qcVector<2> const* to = closed_ ? points.data() : points.data() + 1;
    Pair zeroIfFinite{};
    bool tooSmall = isTooSmall(from.x()) || isTooSmall(from.y());
    for (std::size_t leaf = 0; leaf < leafCount(); ++leaf) {
        std::size_t const count = leafEnd(leaf) - leafBegin(leaf);
        Extremes const run = extremesFrom(from, to, count);
        zeroIfFinite *= run.zeroIfFinite;
        tooSmall = tooSmall || anyTooSmall(run, to, count);
        boxes_.lowest(leaf / kFan)
            .set(leaf % kFan, {{run.low[0], run.low[1]}, {run.high[0], run.high[1]}});
        to += count;
        from = to[-1];
    }
    regular_ = !tooSmall && zeroIfFinite[0] == 0 && zeroIfFinite[1] == 0;
}

bool EdgeIndex::levelsOverlap() const
{
    // Boxes over equal stretches of a simple outline without long folds cover little of its box.
    constexpr double kMostCovered = 2.5;
    auto const area = [](Box const& box) {
        return (box.max.x() - box.min.x()) * (box.max.y() - box.min.y());
    };
    for (std::size_t level = 1; level < levelCount(); ++level) {
        double sum = 0;
        for (std::size_t node = 0; node < boxes_.boxCount(level); ++node)
            sum += area(box(level, node));
        if (sum > kMostCovered * area(rootBox_))
            return true;
    }
    return false;
}

void EdgeIndex::sortLeavesAlongCurve()
{
    CurveOverBox const curve(rootBox_);
    std::vector<PlaceOnCurve> places(leafCount());
    for (std::size_t leaf = 0; leaf < places.size(); ++leaf)
        places[leaf] = {curve.along(box(0, leaf)), static_cast<std::uint32_t>(leaf)};
    sortAlongCurve(places);
    leafAt_.resize(places.size());
    auto const former = boxes_;
    for (std::size_t node = 0; node < places.size(); ++node) {
        leafAt_[node] = places[node].number;
        boxes_.lowest(node / kFan).set(node % kFan, former.box(0, leafAt_[node]));
    }
}

}  // namespace qnInternal
