/// The boxes of a contour's edges, arranged so that few edges are looked at.
///
/// The index only proposes: the caller applies the same exact test to the edges it names as to all
/// edges without it, so no result depends on there being an index.
#pragma once

#include "cntr/internal/box.h"
#include "cntr/internal/edge_walk.h"

#include <qc/core/vector.h>

#include <array>
#include <cstddef>
#include <limits>
#include <vector>

namespace qnInternal {

/// Up to here the plain loop over all edges wins (bench/edge_index_bench.cpp).
inline constexpr std::size_t kMaxPlainEdges = 32;

/// The part of the plane that a query segment can meet edges in. Sharper than the segment's box,
/// which for a long oblique segment holds most of the outline.
class SegmentReach {
public:
    /// `scale` bounds the coordinates of the edges.
    SegmentReach(qcVector<2> const& a, qcVector<2> const& b, double scale);

    /// False only where no edge inside `box` can meet the segment.
    bool operator()(Box const& box) const
    {
        if (!overlap(box, box_))
            return false;
        double const height = (box.max.y() - box.min.y()) * 0.5;
        double const width = (box.max.x() - box.min.x()) * 0.5;
        qcVector<2> const center((box.min.x() + box.max.x()) * 0.5,
                                 (box.min.y() + box.max.y()) * 0.5);
        double const offset = direction_.cross(center - a_);
        double const reach = absX_ * height + absY_ * width + slack_;
        return !(offset > reach || -offset > reach);
    }

private:
    qcVector<2> a_;
    qcVector<2> direction_;
    double absX_;
    double absY_;
    double slack_;
    Box box_;
};

/// A box over every eight consecutive edges and a hierarchy of eights above, in outline order, so
/// that edges come out ascending by themselves. Built in one pass, about 5 bytes an edge.
///
/// Where the outline jumps about at random, boxes hold back nothing and a query looks at all edges,
/// which costs about what the plain loop does.
class EdgeIndex {
public:
    static constexpr std::size_t kFan = 8;

    EdgeIndex(std::vector<qcVector<2>> const& points, bool closed);

    /// Whether it was built of closed edges.
    bool closed() const { return closed_; }

    /// Whether the coordinates are such that the bounds hold: all finite and no larger than 1e150, no
    /// edge shorter than 1e-140 except those of no length. Else only the plain loop is right.
    bool regular() const { return regular_; }

    /// The largest absolute coordinate.
    double scale() const { return scale_; }

    std::size_t leafCount() const { return nodeCount(0); }
    Box const& leafBox(std::size_t leaf) const { return boxes_[leaf]; }
    Box const& rootBox() const { return boxes_.back(); }

    /// Edges [begin, end) of a leaf.
    std::size_t leafBegin(std::size_t leaf) const { return leaf * kFan; }
    std::size_t leafEnd(std::size_t leaf) const
    {
        return leaf + 1 == leafCount() ? edgeCount_ : (leaf + 1) * kFan;
    }

    /// Calls visit(leaf) in ascending order for the leaves from `first` on whose boxes, and those
    /// above them, `touches` accepts; stops when visit returns true, and returns whether it did.
    template <class Touches, class Visit>
    bool forEachLeaf(std::size_t first, Touches const& touches, Visit const& visit) const
    {
        return descend(levelCount_ - 1, 0, first, touches, visit);
    }

    /// Whether edges of a node run both ways in x or both ways in y. If not, they meet nowhere but
    /// at shared ends; so if neither do those of this node and the next one together.
    bool turns(std::size_t level, std::size_t node) const
    {
        return turnsBack(ways_[levelBegin_[level] + node]);
    }
    bool turnsWithNext(std::size_t level, std::size_t node) const
    {
        std::size_t const at = levelBegin_[level] + node;
        return turnsBack(ways_[at] | ways_[at + 1]);
    }

    /// Level 0 holds the leaves, the last level the root alone.
    std::size_t levelCount() const { return levelCount_; }
    std::size_t nodeCount(std::size_t level) const
    {
        return levelBegin_[level + 1] - levelBegin_[level];
    }
    Box const& box(std::size_t level, std::size_t node) const
    {
        return boxes_[levelBegin_[level] + node];
    }

    /// The nodes of the level below are [node * kFan, childEnd).
    std::size_t childEnd(std::size_t level, std::size_t node) const
    {
        std::size_t const below = nodeCount(level - 1);
        return node * kFan + kFan < below ? node * kFan + kFan : below;
    }

private:
    /// The ways in which edges run, as bits.
    enum Way : unsigned { kLeft = 1, kRight = 2, kDown = 4, kUp = 8 };

    static bool turnsBack(unsigned ways)
    {
        return (ways & (kLeft | kRight)) == (kLeft | kRight) ||
               (ways & (kDown | kUp)) == (kDown | kUp);
    }

    static unsigned char waysOf(Box const& along);
    void addLevelsAbove();

    template <class Touches, class Visit>
    bool descend(std::size_t level, std::size_t node, std::size_t first, Touches const& touches,
                 Visit const& visit) const
    {
        if (!touches(box(level, node)))
            return false;
        if (level == 0)
            return visit(node);
        std::size_t const end = childEnd(level, node);
        for (std::size_t child = node * kFan; child < end; ++child) {
            std::size_t const lastLeaf = ((child + 1) << (3 * (level - 1))) - 1;
            if (lastLeaf >= first && descend(level - 1, child, first, touches, visit))
                return true;
        }
        return false;
    }

    std::size_t edgeCount_;
    bool closed_;
    double scale_ = 0;
    bool regular_ = true;
    std::size_t levelCount_ = 1;
    std::array<std::size_t, 24> levelBegin_{};  // 8^22 edges are more than memory holds
    std::vector<Box> boxes_;                    // level by level
    std::vector<unsigned char> ways_;           // as boxes_
};

}  // namespace qnInternal
