// Building the hierarchy of edge boxes, and which of its boxes a segment can meet edges in.
#include "cntr/internal/edge_index.h"

#include "cntr/internal/tolerances.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace qnInternal {

namespace {

/// What a run of edges adds up to.
struct Run {
    Pair low;
    Pair high;
    Pair lowStep;  // the smallest differences of consecutive points, or 0
    Pair highStep;
    Pair sum;  // of the differences: NaN where a coordinate is
};

/// Of the edges to `count` points, the first of them from `from`.
Run runOver(qcVector<2> const& from, qcVector<2> const* points, std::size_t count)
{
    Pair previous = pairOf(from);
    Run run{previous, previous, Pair{}, Pair{}, Pair{}};
    for (std::size_t i = 0; i < count; ++i) {
        Pair const point = pairOf(points[i]);
        run.low = smaller(point, run.low);
        run.high = larger(point, run.high);
        Pair const step = point - previous;
        run.lowStep = smaller(step, run.lowStep);
        run.highStep = larger(step, run.highStep);
        run.sum += step;
        previous = point;
    }
    return run;
}

/// Whether a coordinate is so near to 0 that squares of differences lose digits.
bool isTooSmall(double coordinate)
{
    return coordinate != 0 && std::fabs(coordinate) < kSmallestRegular;
}

/// Whether one of the points between `low` and `high` has a coordinate that is too small.
bool anyTooSmall(Run const& run, qcVector<2> const* points, std::size_t count)
{
    auto const mayBe = [&](std::size_t axis) {
        return run.low[axis] < kSmallestRegular && run.high[axis] > -kSmallestRegular;
    };
    return (mayBe(0) || mayBe(1)) &&
           std::any_of(points, points + count, [](qcVector<2> const& point) {
               return isTooSmall(point.x()) || isTooSmall(point.y());
           });
}

/// How far along a Hilbert curve through a square of 256 x 256 a place lies: bit by bit from the top, a
/// quarter of the square says how the curve in it is turned (D. Hilbert, 1891).
std::uint32_t alongCurve(std::uint32_t x, std::uint32_t y)
{
    std::uint32_t along = 0;
    for (std::uint32_t shift = 8; shift-- > 0;) {
        std::uint32_t const right = x >> shift & 1;
        std::uint32_t const top = y >> shift & 1;
        along = along << 2 | right << 1 | (right ^ top);
        // In the lower quarters the axes change places, on the right both run backwards as well.
        std::uint32_t const lower = top - 1;  // all bits or none
        std::uint32_t const flip = lower & (0 - right);
        std::uint32_t const exchange = (x ^ y) & lower;
        x ^= exchange ^ flip;
        y ^= exchange ^ flip;
    }
    return along;
}

struct Place {
    std::uint32_t along;
    std::uint32_t leaf;
};

/// Sorts by one byte of `along`, keeping the order of equal ones.
void sortByByte(std::vector<Place>& places, unsigned shift)
{
    std::array<std::size_t, 257> begin{};
    auto const byteOf = [&](Place const& place) { return place.along >> shift & 0xff; };
    for (auto const& place : places)
        ++begin[byteOf(place) + 1];
    for (std::size_t i = 1; i < begin.size(); ++i)
        begin[i] += begin[i - 1];
    std::vector<Place> sorted(places.size());
    for (auto const& place : places)
        sorted[begin[byteOf(place)]++] = place;
    places.swap(sorted);
}

}  // namespace

SegmentReach::SegmentReach(HitQuery const& query, double scale)
    : box_(query.box()), a_(query.a()), direction_(query.b() - query.a()),
      absX_(std::fabs(direction_.x())), absY_(std::fabs(direction_.y())),
      margin_(marginAt(8 * std::max(scale, largestCoordinate(query.box())))),
      squaredLimit_(direction_ * direction_ * (margin_ * margin_)),
      oblique_(std::min(absX_, absY_) * 64 > scale)
{
}

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
        return (offset > reach) | (-offset > reach);
    });
}

EdgeIndex::EdgeIndex(std::vector<qcVector<2>> const& points, bool closed)
    : edgeCount_(edgeCount(points.size(), closed)), vertexCount_(points.size()), closed_(closed)
{
    boxCount_[0] = (edgeCount_ + kFan - 1) / kFan;
    std::size_t groups = 0;
    for (;; ++levelCount_) {
        groupBegin_[levelCount_ - 1] = groups;
        boxCount_[levelCount_] = (boxCount_[levelCount_ - 1] + kFan - 1) / kFan;
        groups += boxCount_[levelCount_];
        if (boxCount_[levelCount_] <= 1)
            break;
    }
    groups_.resize(groups);
    addLeaves(points);
    addLevelsAbove();
    rootBox_ = groups_.back().all();
    scale_ = largestCoordinate(rootBox_);
    regular_ = regular_ && scale_ <= kLargestRegular;
    if (regular_ && foldsBack()) {
        sortLeavesAlongCurve();
        addLevelsAbove();
    }
}

void EdgeIndex::addLeaves(std::vector<qcVector<2>> const& points)
{
    // From the start of edge 0 on, the ends of the edges stand one behind the other.
    qcVector<2> from = edgeStart(points, closed_, 0);
    qcVector<2> const* to = closed_ ? points.data() : points.data() + 1;
    Pair sum{};
    bool tooSmall = isTooSmall(from.x()) || isTooSmall(from.y());
    for (std::size_t leaf = 0; leaf < leafCount(); ++leaf) {
        std::size_t const count = leafEnd(leaf) - leafBegin(leaf);
        Run const run = runOver(from, to, count);
        sum += run.sum;
        tooSmall = tooSmall || anyTooSmall(run, to, count);
        Group& group = groups_[leaf / kFan];
        group.set(leaf % kFan, {{run.low[0], run.low[1]}, {run.high[0], run.high[1]}});
        group.ways[leaf % kFan] = static_cast<unsigned char>(
            (run.lowStep[0] < 0 ? kLeft : 0U) | (run.highStep[0] > 0 ? kRight : 0U) |
            (run.lowStep[1] < 0 ? kDown : 0U) | (run.highStep[1] > 0 ? kUp : 0U));
        to += count;
        from = to[-1];
    }
    regular_ = !tooSmall && sum[0] - sum[0] == 0 && sum[1] - sum[1] == 0;
}

void EdgeIndex::addLevelsAbove()
{
    for (std::size_t level = 1; level < levelCount_; ++level)
        for (std::size_t node = 0; node < boxCount_[level]; ++node) {
            Group const& below = groups_[groupBegin_[level - 1] + node];
            Group& group = groups_[groupBegin_[level] + node / kFan];
            unsigned ways = 0;
            for (unsigned const way : below.ways)
                ways |= way;
            group.set(node % kFan, below.all());
            group.ways[node % kFan] = static_cast<unsigned char>(ways);
        }
}

bool EdgeIndex::foldsBack() const
{
    // Boxes over equal stretches of a simple outline without long folds cover little of its box.
    constexpr double kMostCovered = 2.5;
    auto const area = [](Box const& box) {
        return (box.max.x() - box.min.x()) * (box.max.y() - box.min.y());
    };
    for (std::size_t level = 1; level < levelCount_; ++level) {
        double sum = 0;
        for (std::size_t node = 0; node < boxCount_[level]; ++node)
            sum += area(box(level, node));
        if (sum > kMostCovered * area(rootBox_))
            return true;
    }
    return false;
}

void EdgeIndex::sortLeavesAlongCurve()
{
    qcVector<2> const extent = rootBox_.max - rootBox_.min;
    double const cells = 255 / std::max(extent.x(), extent.y());
    std::vector<Place> places(leafCount());
    for (std::size_t leaf = 0; leaf < places.size(); ++leaf) {
        Box const leafBox = box(0, leaf);
        qcVector<2> const place =
            ((leafBox.min - rootBox_.min) + (leafBox.max - rootBox_.min)) * (0.5 * cells);
        places[leaf] = {alongCurve(static_cast<std::uint32_t>(place.x()),
                                   static_cast<std::uint32_t>(place.y())),
                        static_cast<std::uint32_t>(leaf)};
    }
    sortByByte(places, 0);
    sortByByte(places, 8);
    leafAt_.resize(places.size());
    std::vector<Group> const former(groups_.begin(),
                                    groups_.begin() + static_cast<std::ptrdiff_t>(boxCount_[1]));
    for (std::size_t node = 0; node < places.size(); ++node) {
        leafAt_[node] = places[node].leaf;
        Group const& from = former[leafAt_[node] / kFan];
        Group& group = groups_[node / kFan];
        group.set(node % kFan, from.box(leafAt_[node] % kFan));
        group.ways[node % kFan] = from.ways[leafAt_[node] % kFan];
    }
}

}  // namespace qnInternal
