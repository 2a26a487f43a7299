// Parity of the edges to the right of a point: over all edges, and over those of one slab.
#include "cntr/internal/parity.h"

#include "cntr/internal/box_of_points.h"
#include "cntr/internal/edge_walk.h"
#include "cntr/internal/tolerances.h"

#include <qc/core/internal/pair.h>
#include <qc/core/internal/plane.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace qnInternal {

namespace {

/// Up to these coordinates the rounding of a meeting point (some 1e-15 of them) is far below
/// kOnSegment.
constexpr double kLargestCertain = 1e6;

/// Room for rounding: a meeting point is off the ray by less than 1e-9 at such coordinates, the sine of
/// an edge with the ray by a millionth of kParallelSine.
constexpr double kRoom = 1.02;

/// Square of a length shortened by another.
double shortenedSquare(double length, double other)
{
    double const usable = length - other;
    return usable > 0 ? usable * usable : 0;
}

/// How many entries for each edge the slabs may hold beyond one.
constexpr double kSpareEntries = 1.25;

/// Vertical slabs take a point slightly longer; they pay where lines meet that many times fewer edges
/// (bench/containment_bench.cpp, the longest border).
constexpr double kFewer = 1.5;

/// With so many edges in a slab on average, sorting them pays (bench/containment_bench.cpp, the comb).
constexpr std::size_t kManyEdges = 12;

/// Edges are sorted once points have looked at each of them so often on average: sorting costs as much as
/// about sixty looks at each and spares most of the later ones.
constexpr std::size_t kLooksBeforeSorting = 16;

/// Up to so many edges, all slabs together hold less than 65 536 entries: an edge is in two slabs more
/// than its share of all the climbing at most.
constexpr std::size_t kMostNarrow = 20'000;
static_assert(kMostNarrow * (2 + kSpareEntries) < 65'536);

/// Above all rounding of differences of coordinates that may be counted.
constexpr double kRoundingOfPlaces = 1e-8;

/// The edges of an outline as they are.
struct Upright {
    std::vector<qcVector<2>> const& outline;

    static qcVector<2> const& seen(qcVector<2> const& point) { return point; }
    qcVector<2> const& start(std::size_t edge) const { return edgeStart(outline, true, edge); }
    qcVector<2> const& end(std::size_t edge) const { return edgeEnd(outline, true, edge); }
};

/// The same with x and y in each other's place.
struct Mirrored {
    std::vector<qcVector<2>> const& outline;

    static qcVector<2> seen(qcVector<2> const& point) { return {point.y(), point.x()}; }
    qcVector<2> start(std::size_t edge) const { return seen(edgeStart(outline, true, edge)); }
    qcVector<2> end(std::size_t edge) const { return seen(edgeEnd(outline, true, edge)); }
};

template <class View>
double leftEnd(View const& outline, std::size_t edge)
{
    return std::min(outline.start(edge).x(), outline.end(edge).x());
}

template <class View>
double rightEnd(View const& outline, std::size_t edge)
{
    return std::max(outline.start(edge).x(), outline.end(edge).x());
}

struct EdgeFromLeft {
    double left;
    std::size_t number;
};

/// Sorts edges that mostly come one beside the other, from the left or from the right.
void sortEdges(std::vector<EdgeFromLeft>& edges)
{
    constexpr std::size_t kFewMoves = 4;  // an edge on average
    if (!edges.empty() && edges.back().left < edges.front().left)
        std::reverse(edges.begin(), edges.end());
    std::size_t moves = 0;
    for (std::size_t i = 1; i < edges.size() && moves <= kFewMoves * edges.size(); ++i) {
        EdgeFromLeft const edge = edges[i];
        std::size_t place = i;
        for (; place > 0 && edge.left < edges[place - 1].left; --place, ++moves)
            edges[place] = edges[place - 1];
        edges[place] = edge;
    }
    if (moves > kFewMoves * edges.size())
        std::sort(edges.begin(), edges.end(),
                  [](EdgeFromLeft const& a, EdgeFromLeft const& b) { return a.left < b.left; });
}

}  // namespace

RadiusBounds radiusWithin(Box const& box, qcVector<2> const& firstVertex)
{
    // There is a vertex on each side of the box.
    double const dx = std::max(firstVertex.x() - box.min.x(), box.max.x() - firstVertex.x());
    double const dy = std::max(firstVertex.y() - box.min.y(), box.max.y() - firstVertex.y());
    return {std::max(dx, dy), dx + dy};
}

ParityReach::ParityReach(Box const& box, std::size_t vertexCount, qcVector<2> const& firstVertex,
                         RadiusBounds const& radius)
    : box_(box), toVertex_(0), toEdge_(4 * kOnSegment), toCrossing_(0), firstVertex_(firstVertex),
      squaredRadius_(0), squaredRay_(0)
{
    double const extent = (box.max - box.min).len();
    double const angle = qnAngle::kPi / (2 * static_cast<double>(vertexCount));
    double const sine = angle * (1 - angle * angle * (1.0 / 6));  // the sine is a little more
    double const rounding =
        32 * std::numeric_limits<double>::epsilon() * (largestCoordinate(box) + 2 * radius.most);
    // The rounding of the ray's end turns the ray, by no more than half of half a gap.
    double const turn = rounding / (2 * radius.least);
    toCrossing_ = toEdge_ + 2 * rounding / sine;
    double const toRay = std::max(kRoom * kOnSegment, kRoom * kParallelSine * extent / 2);
    toVertex_ = std::max(toRay / (sine - turn), toCrossing_);
    double const beyond = 16 * kOnSegment + toCrossing_;
    squaredRadius_ = shortenedSquare(radius.least, beyond);
    squaredRay_ = shortenedSquare(2 * radius.least, beyond);
    certain_ = vertexCount >= 3 && largestCoordinate(box) <= kLargestCertain && turn <= sine / 2;
}

bool ParityReach::rayLeavesBox(qcVector<2> const& point) const
{
    double const dx = std::max(point.x() - box_.min.x(), box_.max.x() - point.x());
    double const dy = std::max(point.y() - box_.min.y(), box_.max.y() - point.y());
    return dx * dx + dy * dy < squaredRay_;
}

bool ParityCount::leavesOut(Box const& box) const
{
    return box.min.y() - point_.y() > reach_ || box.max.y() - point_.y() < -reach_ ||
           box.max.x() - point_.x() < -reach_;
}

void ParityCount::addClose(qcVector<2> const& a, qcVector<2> const& b, int up)
{
    double const squaredReach = reach_ * reach_;
    qcVector<2> const along = b - a;
    double const cross = a.cross(along);
    double const squaredLength = along * along;
    if (a * a <= squaredReach || b * b <= squaredReach ||
        (cross * cross <= toEdge_ * toEdge_ * squaredLength && squaredLength > 0))
        near_ = true;
    // Upwards with the point to its left, or downwards with the point to its right.
    turns_ += (cross > 0) == (along.y() > 0) ? up : 0;
}

template <class Self, class Visit>
[[gnu::always_inline]] inline auto
SlabIndex::withLists(Self& self, std::vector<qcVector<2>> const& outline, Visit const& visit)
{
    auto const withEdges = [&](auto const& edges) {
        if (auto* const narrow = std::get_if<0>(&self.lists_))
            return visit(*narrow, edges);
        return visit(*std::get_if<1>(&self.lists_), edges);
    };
    if (self.vertical_)
        return withEdges(Mirrored{outline});
    return withEdges(Upright{outline});
}

SlabIndex::SlabIndex(std::vector<qcVector<2>> const& outline, Box const& box,
                     ParityReach const& reach)
    : reach_(reach), bottom_(box.min.y())
{
    double way = 0;
    double climb = 0;
    forEachEdge(outline, true, [&](std::size_t, qcVector<2> const& from, qcVector<2> const& to) {
        way += std::fabs(to.x() - from.x()) + 2 * reach.toVertex();
        climb += std::fabs(to.y() - from.y()) + 2 * reach.toVertex();
    });
    double const width = box.max.x() - box.min.x();
    double height = box.max.y() - box.min.y();
    vertical_ = way * height * kFewer < climb * width;
    if (vertical_) {
        bottom_ = box.min.x();
        height = width;
        climb = way;
    }
    auto const edges = static_cast<double>(outline.size());
    double const wanted = kSpareEntries * edges * (height / climb);
    // NaN where both overflow or there is no climb.
    slabCount_ = wanted > 1 ? static_cast<std::size_t>(std::min(wanted, edges)) : 1;
    slabsPerUnit_ = height > 0 ? static_cast<double>(slabCount_) / height : 0;

    if (outline.size() > kMostNarrow)
        lists_.emplace<1>();
    withLists(*this, outline, [&](auto& lists, auto const& view) { fill(lists, view); });
}

template <class Number, class View>
void SlabIndex::fill(Lists<Number>& lists, View const& outline)
{
    auto const forEachSlab = [&](auto visit) {
        forEachEdge(outline.outline, true,
                    [&](std::size_t k, qcVector<2> const& from, qcVector<2> const& to) {
                        double const one = outline.seen(from).y(), other = outline.seen(to).y();
                        auto const [low, high] =
                            slabsOf(Pair{std::min(one, other) - reach_.toVertex(),
                                         std::max(one, other) + reach_.toVertex()});
                        for (std::size_t s = low; s <= high; ++s)
                            visit(k, s);
                    });
    };
    lists.begin.assign(slabCount_ + 1, 0);
    forEachSlab([&](std::size_t, std::size_t s) { ++lists.begin[s]; });
    std::size_t total = 0;
    for (auto& begin : lists.begin) {
        total += begin;
        begin = static_cast<Number>(total);  // the end of its slab for now
    }
    lists.edges.resize(total);
    forEachSlab([&](std::size_t k, std::size_t s) {
        lists.edges[--lists.begin[s]] = static_cast<Number>(k);
    });
    if (total >= kManyEdges * slabCount_)
        pointsBeforeSorting_ = kLooksBeforeSorting * outline.outline.size() * slabCount_ / total;
}

void SlabIndex::sortFromLeft(std::vector<qcVector<2>> const& outline)
{
    pointsBeforeSorting_.reset();
    widest_.assign(slabCount_, 0);
    withLists(*this, outline, [&](auto& lists, auto const& view) { sort(lists, view); });
}

template <class Number, class View>
void SlabIndex::sort(Lists<Number>& lists, View const& outline)
{
    std::vector<EdgeFromLeft> slab;
    for (std::size_t s = 0; s < slabCount_; ++s) {
        slab.clear();
        for (std::size_t i = lists.begin[s]; i < lists.begin[s + 1]; ++i) {
            std::size_t const edge = lists.edges[i];
            slab.push_back({leftEnd(outline, edge), edge});
            widest_[s] = std::max(widest_[s], rightEnd(outline, edge) - slab.back().left);
        }
        sortEdges(slab);
        std::transform(slab.begin(), slab.end(), lists.edges.begin() + lists.begin[s],
                       [](EdgeFromLeft const& edge) { return static_cast<Number>(edge.number); });
    }
}

std::pair<std::size_t, std::size_t> SlabIndex::slabsOf(Pair heights) const
{
    Pair const place = (heights - bottom_) * slabsPerUnit_;
    // 0 for NaN too: the bottom of an outline so flat that the scale is infinite.
    Pair const slab = smaller(larger(place, both(0)), both(static_cast<double>(slabCount_ - 1)));
    return {static_cast<std::uint32_t>(slab[0]), static_cast<std::uint32_t>(slab[1])};
}

ParityCount SlabIndex::countSlab(std::vector<qcVector<2>> const& outline, qcVector<2> const& point,
                                 double toVertex, double toEdge) const
{
    return withLists(*this, outline, [&](auto const& lists, auto const& edges) {
        auto const& seen = edges.seen(point);
        ParityCount count(seen, toVertex, toEdge);
        std::size_t const slab = slabsOf(both(seen.y())).first;
        if (widest_.empty())
            addEdges(lists, edges, slab, count);
        else
            addSorted(lists, edges, seen, toVertex, slab, count);
        return count;
    });
}

std::optional<bool> SlabIndex::inside(std::vector<qcVector<2>> const& outline,
                                      qcVector<2> const& point) const
{
    if (!reach_.boxHolds(point))
        return false;
    if (!reach_.rayLeavesOutline(point))
        return std::nullopt;
    return countSlab(outline, point, reach_.toVertex(), reach_.toEdge()).inside();
}

bool SlabIndex::surelyWound(std::vector<qcVector<2>> const& outline, qcVector<2> const& point) const
{
    if (!reach_.rayLeavesOutline(point))
        return false;
    return countSlab(outline, point, reach_.toCrossing(), reach_.toCrossing()).wound();
}

template <class Number, class View>
void SlabIndex::addEdges(Lists<Number> const& lists, View const& outline, std::size_t slab,
                         ParityCount& count) const
{
    for (std::size_t i = lists.begin[slab]; i < lists.begin[slab + 1]; ++i)
        count.add(outline.start(lists.edges[i]), outline.end(lists.edges[i]));
}

template <class Number, class View>
void SlabIndex::addSorted(Lists<Number> const& lists, View const& outline, qcVector<2> const& point,
                          double toVertex, std::size_t slab, ParityCount& count) const
{
    auto const first = lists.edges.begin() + lists.begin[slab];
    auto const last = lists.edges.begin() + lists.begin[slab + 1];
    double const leftReach = toVertex + widest_[slab] + kRoundingOfPlaces;
    // From `right` on edges lie far to the right of the point, before `left` far to the left.
    auto const right = std::partition_point(first, last, [&](std::size_t edge) {
        return !(leftEnd(outline, edge) - point.x() > toVertex);
    });
    auto const left = std::partition_point(first, right, [&](std::size_t edge) {
        return leftEnd(outline, edge) - point.x() < -leftReach;
    });
    auto const turnsOf = [&](auto begin, auto end) {
        long turns = 0;
        for (auto edge = begin; edge != end; ++edge)
            turns += static_cast<long>(outline.end(*edge).y() > point.y()) -
                     static_cast<long>(outline.start(*edge).y() > point.y());
        return turns;
    };
    // All that cross the height of the point are in its slab, as many upwards as downwards.
    count.addTurns(last - right < right - first ? turnsOf(right, last) : -turnsOf(first, right));
    for (auto edge = left; edge != right; ++edge)
        count.add(outline.start(*edge), outline.end(*edge));
}

std::optional<bool> insideByAllEdges(std::vector<qcVector<2>> const& outline,
                                     qcVector<2> const& point, ParityReach const& reach)
{
    constexpr std::size_t kRun = 8;
    if (!reach.boxHolds(point))
        return false;
    if (!reach.rayLeavesOutline(point))
        return std::nullopt;
    ParityCount count(point, reach.toVertex(), reach.toEdge());
    for (std::size_t begin = 0; begin < outline.size(); begin += kRun) {
        std::size_t const end = std::min(begin + kRun, outline.size());
        if (end - begin == kRun && count.leavesOut(boxOfEdges(outline, true, begin, end)))
            continue;
        for (std::size_t k = begin; k < end; ++k)
            count.add(edgeStart(outline, true, k), edgeEnd(outline, true, k));
    }
    return count.inside();
}

}  // namespace qnInternal
