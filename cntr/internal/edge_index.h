/// The boxes of a contour's edges, arranged so that few edges are looked at.
///
/// The index only proposes: the caller applies the same exact test to the edges it names as to all
/// edges without it, so no result depends on there being an index.
#pragma once

#include "cntr/internal/box.h"
#include "cntr/internal/box_hierarchy.h"
#include "cntr/internal/edge_hits.h"
#include "cntr/internal/edge_walk.h"

#include <qc/core/vector.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace qnInternal {

/// Up to here the plain loop over all edges wins (bench/edge_index_bench.cpp).
inline constexpr std::size_t kMaxPlainEdges = 32;

/// Whether a query segment is so long and oblique that its box alone would let much through. `scale`
/// bounds the coordinates of the edges. A long one is soon worth more than its box, since many short
/// edges lie along it (bench/crossings_bench.cpp, long and short segments).
inline bool isOblique(HitQuery const& query, double scale)
{
    constexpr double kShort = 1.0 / 64;
    constexpr double kStraight = 1.0 / 4096;
    qcVector<2> const d = query.b() - query.a();
    double const x = std::fabs(d.x());
    double const y = std::fabs(d.y());
    return std::max(x, y) > kShort * scale && std::min(x, y) > kStraight * scale;
}

/// The part of the plane that a query segment can meet edges in: its box.
class BoxReach {
public:
    explicit BoxReach(Box const& box) : box_(box), min_(pairOf(box.min)), max_(pairOf(box.max)) {}

    unsigned operator()(BoxGroup const& boxes) const { return boxes.overlapping(box_); }

    /// Bits of the edges, up to eight, from `start` to the first of `count` ends, from there to the next
    /// and so on: of those whose boxes share a point with the box.
    unsigned edges(qcVector<2> const& start, qcVector<2> const* ends, std::size_t count) const
    {
        unsigned near = 0;
        Pair from = pairOf(start);
        for (std::size_t i = 0; i < count; ++i) {
            Pair const to = pairOf(ends[i]);
            unsigned const inBoth =
                bitsOf(bothHold(larger(to, from) >= min_, smaller(to, from) <= max_));
            near |= static_cast<unsigned>(inBoth == 3) << i;
            from = to;
        }
        return near;
    }

private:
    TwiceBox box_;
    Pair min_;
    Pair max_;
};

/// The part of the plane that an oblique query segment can meet edges in: sharper than its box.
class SegmentReach {
public:
    SegmentReach(HitQuery const& query, double scale)
        : box_(query.box()), a_(query.a()), direction_(query.b() - query.a()),
          absX_(std::fabs(direction_.x())), absY_(std::fabs(direction_.y())),
          margin_(marginAt(8 * std::max(scale, largestCoordinate(query.box())))),
          squaredLimit_(direction_ * direction_ * (margin_ * margin_))
    {
    }

    /// Leaves out boxes only where no edge inside can meet the segment.
    unsigned operator()(BoxGroup const& boxes) const
    {
        unsigned const near = boxes.overlapping(box_);
        return near == 0 ? near : near & ~boxesOnOneSide(boxes);
    }

    /// Bits of edges, as BoxReach::edges(). Leaves out those only where both ends are clear of the
    /// segment's line on one side.
    unsigned edges(qcVector<2> const& start, qcVector<2> const* ends, std::size_t count) const;

private:
    unsigned boxesOnOneSide(BoxGroup const& boxes) const;

    TwiceBox box_;
    qcVector<2> a_;
    qcVector<2> direction_;
    double absX_;
    double absY_;
    double margin_;
    double squaredLimit_;
};

/// A box over every eight consecutive edges, a leaf, and a hierarchy of eights above. Built in one
/// pass, about 5 bytes an edge.
///
/// The leaves stand in outline order, and then edges come out ascending. Where the outline folds
/// back on itself so often that boxes over long stretches overlap (a comb, a spiral, a cloud of
/// points in any order), they stand along a space-filling curve instead, at twice the cost.
class EdgeIndex {
public:
    static constexpr std::size_t kFan = BoxGroup::kSize;

    /// Whether the leaves of an outline that folds back are sorted along the curve.
    enum class Folded { eSorted, eInOutlineOrder };

    EdgeIndex(std::vector<qcVector<2>> const& points, bool closed, Folded folded = Folded::eSorted);

    /// Whether it was built of closed edges.
    bool closed() const { return closed_; }

    /// Whether the coordinates are such that the bounds hold: all finite, none larger than 1e150 nor,
    /// save 0, smaller than 1e-120. Else only the plain loop is right.
    bool regular() const { return regular_; }

    /// The largest absolute coordinate.
    double scale() const { return scale_; }

    Box const& rootBox() const { return rootBox_; }

    /// Whether the outline folds back on itself.
    bool foldsBack() const { return foldsBack_; }

    /// Whether leaves come out in ascending order.
    bool inOutlineOrder() const { return leafAt_.empty(); }

    std::size_t leafCount() const { return boxes_.boxCount(0); }

    /// Edges [begin, end) of a leaf.
    std::size_t leafBegin(std::size_t leaf) const { return leaf * kFan; }
    std::size_t leafEnd(std::size_t leaf) const
    {
        return leaf + 1 == leafCount() ? edgeCount_ : (leaf + 1) * kFan;
    }

    /// The vertices from leafBegin() on that lie in the leaf's box and in that of no later leaf.
    std::size_t verticesEnd(std::size_t leaf) const
    {
        return leaf + 1 == leafCount() ? vertexCount_ : (leaf + 1) * kFan;
    }

    /// Calls visit(leaf, box) for the leaves whose boxes, and those above them, `touches` accepts:
    /// touches(BoxGroup) has a bit for every box to go on with.
    template <class Touches, class Visit>
    void forEachLeaf(Touches const& touches, Visit const& visit) const
    {
        boxes_.forEachBox(touches,
                          [&](std::size_t node, Box const& box) { visit(leafAt(node), box); });
    }

    /// Asks `accepts(k)` about the edges of leaves whose boxes share a point with `place`, in no certain
    /// order, until it accepts one; whether it did.
    template <class Accepts>
    bool anyEdgeNear(TwiceBox const& place, Accepts const& accepts) const
    {
        bool found = false;
        forEachLeaf([&](BoxGroup const& boxes) { return found ? 0 : boxes.overlapping(place); },
                    [&](std::size_t leaf, Box const&) {
                        for (std::size_t k = leafBegin(leaf); k < leafEnd(leaf) && !found; ++k)
                            found = accepts(k);
                    });
        return found;
    }

    /// The hierarchy itself, level 0 of which holds the boxes of the leaves.
    std::size_t levelCount() const { return boxes_.levelCount(); }
    BoxGroup const& group(std::size_t level, std::size_t number) const
    {
        return boxes_.group(level, number);
    }
    std::size_t boxesIn(std::size_t level, std::size_t group) const
    {
        return boxes_.boxesIn(level, group);
    }
    std::size_t boxCount(std::size_t level) const { return boxes_.boxCount(level); }
    Box box(std::size_t level, std::size_t node) const { return boxes_.box(level, node); }

    /// The leaf whose box is `node` of level 0.
    std::size_t leafAt(std::size_t node) const { return inOutlineOrder() ? node : leafAt_[node]; }

private:
    void addLeaves(std::vector<qcVector<2>> const& points);
    bool levelsOverlap() const;
    void sortLeavesAlongCurve();

    std::size_t edgeCount_;
    std::size_t vertexCount_;
    bool closed_;
    bool regular_ = true;
    bool foldsBack_ = false;
    double scale_ = 0;
    Box rootBox_;
    BoxHierarchy boxes_;
    std::vector<std::uint32_t> leafAt_;  // empty in outline order
};

}  // namespace qnInternal
