/// Containment by counting the edges to the right of a point, where that is certain to agree with
/// the crossings of a containment ray.
///
/// The ray leaves the point in the middle of a gap of at least pi / n between the directions of the n
/// vertices, so every vertex at distance r is at least r sin(pi / 2n) away from it. Where that is
/// more than kOnSegment, with room for rounding, an edge counts as met exactly where it crosses
/// the ray: it can not be met beyond its ends. Where it is also more than half the outline's extent
/// times the sine below which lines are parallel, no edge from one side of the ray to the other is
/// parallel to it. Where no edge is within kOnSegment of the point, and the ray ends farther than that
/// beyond the bounding box, no edge is left out for touching its ends. Then the parity of the crossings
/// is that of the closed outline, and any ray gives it. A point for which one of this is in doubt is
/// asked the ray itself.
///
/// Less is needed to be certain that the ray meets something at all. Where the outline winds around the
/// point, the ray crosses an edge. Its ends are on both sides of the ray, at least (r + s) sin(pi / 2n)
/// apart across it where they are r and s away from the point; and the edge is no longer than r + s.
/// So it is never parallel to the ray, and is met up to the rounding of the meeting point: some ulps
/// across the ray, as many ulps / sin(pi / 2n) along it. An edge nearer to the point than that is
/// in doubt.
#pragma once

#include "cntr/internal/box.h"

#include <qc/core/internal/pair.h>
#include <qc/core/vector.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <utility>
#include <variant>
#include <vector>

namespace qnInternal {

/// How far the vertex is that is farthest from the first one.
struct RadiusBounds {
    double least;
    double most;
};

/// What the box of the vertices says about it. The least may be too large by some
/// ulps, far less than what ParityReach keeps between the outline and the end of a ray.
RadiusBounds radiusWithin(Box const& box, qcVector<2> const& firstVertex);

/// What must hold around a point for the parity to be certain. All coordinates are finite.
///
/// - No vertex within toVertex(): the ray passes all of them clearly, so an edge is met exactly where it
///   crosses the ray.
/// - No edge within toEdge(): none is left out for touching the start of the ray.
/// - rayLeavesOutline(): none is left out for touching its end.
///
/// Less makes a ray certain to meet something: rayLeavesOutline() and no edge within toCrossing(), so that
/// an edge from one side of the ray to the other is met.
class ParityReach {
public:
    /// `box` bounds the `vertexCount` vertices, which lie within `radius` of the first one; the
    /// containment ray is twice as long.
    ParityReach(Box const& box, std::size_t vertexCount, qcVector<2> const& firstVertex,
                RadiusBounds const& radius);

    /// Whether any point has an answer here. If not, the coordinates are too large, perhaps even for
    /// the arithmetic of the slabs.
    bool certain() const { return certain_; }

    /// Whether the point lies in the box.
    bool boxHolds(qcVector<2> const& point) const { return holds(box_, point); }

    /// Whether the ray from `point`, which lies in the box, is sure to end beyond the outline.
    bool rayLeavesOutline(qcVector<2> const& point) const
    {
        if (!certain_)
            return false;
        qcVector<2> const offset = point - firstVertex_;
        return offset * offset < squaredRadius_ || rayLeavesBox(point);
    }

    double toVertex() const { return toVertex_; }
    double toEdge() const { return toEdge_; }
    double toCrossing() const { return toCrossing_; }

private:
    bool rayLeavesBox(qcVector<2> const& point) const;

    Box box_;
    double toVertex_;
    double toEdge_;
    double toCrossing_;
    qcVector<2> firstVertex_;
    // Where the point is nearer than this to the first vertex, or than that to every corner of the box,
    // its ray ends well beyond the outline: these are the radius and the ray, both shortened.
    double squaredRadius_;
    double squaredRay_;
    bool certain_;
};

/// Counts edges to the right of a point, and whether one comes too near.
class ParityCount {
public:
    /// `toVertex` is at least `toEdge`.
    ParityCount(qcVector<2> const& point, double toVertex, double toEdge)
        : point_(point), reach_(toVertex), toEdge_(toEdge)
    {
    }

    void add(qcVector<2> const& from, qcVector<2> const& to);

    /// Counts edges that lie far to the right, by their sum of 1 upwards and -1 downwards.
    void addTurns(long turns) { turns_ += turns; }

    /// Whether add() passes over all edges in the box, which stands above, below or left of the point.
    bool leavesOut(Box const& box) const;

    /// Whether the point is inside, nothing where an edge or vertex was too near.
    std::optional<bool> inside() const
    {
        return near_ ? std::nullopt : std::optional<bool>(turns_ % 2 != 0);
    }

    /// Whether the outline winds around the point; false also where an edge was too near.
    bool wound() const { return !near_ && turns_ != 0; }

private:
    void addClose(qcVector<2> const& a, qcVector<2> const& b, int up);

    qcVector<2> point_;
    double reach_;
    double toEdge_;
    long turns_ = 0;
    bool near_ = false;
};

[[gnu::always_inline]] inline void ParityCount::add(qcVector<2> const& from, qcVector<2> const& to)
{
    qcVector<2> const a = from - point_;
    qcVector<2> const b = to - point_;
    if ((a.y() > reach_ && b.y() > reach_) || (a.y() < -reach_ && b.y() < -reach_))
        return;
    if (a.x() < -reach_ && b.x() < -reach_)
        return;
    // 1 upwards and -1 downwards across the height of the point, else 0.
    int const up = static_cast<int>(b.y() > 0) - static_cast<int>(a.y() > 0);
    if (a.x() > reach_ && b.x() > reach_)
        turns_ += up;
    else
        addClose(a, b, up);
}

/// The edges of a closed outline by horizontal slabs: as many as the edges about fill, so that a
/// point looks at a few edges only. At most about 12 bytes an edge, half of it for up to 20 000.
///
/// An outline that crosses vertical lines far less often than horizontal ones, such as a long row of
/// teeth, has vertical slabs: there x and y change places, which changes no parity.
///
/// Where the outline folds back so often that slabs hold many edges, these can be sorted from left to
/// right: a point then counts those on the side where they are fewer.
class SlabIndex {
public:
    SlabIndex(std::vector<qcVector<2>> const& outline, Box const& box, ParityReach const& reach);

    /// After how many points it pays to sort the edges of slabs; never where these hold few.
    std::optional<std::size_t> pointsBeforeSorting() const { return pointsBeforeSorting_; }

    /// Sorts the edges of every slab: O(n log n). No answer changes.
    void sortFromLeft(std::vector<qcVector<2>> const& outline);

    /// Whether a point is inside, nothing where it is not certain.
    std::optional<bool> inside(std::vector<qcVector<2>> const& outline,
                               qcVector<2> const& point) const;

    /// Whether the containment ray from a point in the box is sure to meet the outline, since it winds
    /// around the point.
    bool surelyWound(std::vector<qcVector<2>> const& outline, qcVector<2> const& point) const;

private:
    /// The edges, by their numbers, slab after slab.
    template <class Number>
    struct Lists {
        std::vector<Number> begin;  // per slab, and one past the last
        std::vector<Number> edges;
    };

    /// Calls visit(lists, edges): the lists that are in use and the outline's edges as they see them.
    template <class Self, class Visit>
    static auto withLists(Self& self, std::vector<qcVector<2>> const& outline, Visit const& visit);
    template <class Number, class View>
    void fill(Lists<Number>& lists, View const& outline);
    template <class Number, class View>
    void sort(Lists<Number>& lists, View const& outline);
    ParityCount countSlab(std::vector<qcVector<2>> const& outline, qcVector<2> const& point,
                          double toVertex, double toEdge) const;
    template <class Number, class View>
    void addEdges(Lists<Number> const& lists, View const& outline, std::size_t slab,
                  ParityCount& count) const;
    template <class Number, class View>
    void addSorted(Lists<Number> const& lists, View const& outline, qcVector<2> const& point,
                   double toVertex, std::size_t slab, ParityCount& count) const;
    std::pair<std::size_t, std::size_t> slabsOf(Pair heights) const;

    ParityReach reach_;
    bool vertical_ = false;  // x and y have changed places in all below
    double bottom_;
    double slabsPerUnit_;
    std::size_t slabCount_;
    std::variant<Lists<std::uint16_t>, Lists<std::uint32_t>> lists_;  // the first where it can
    std::optional<std::size_t> pointsBeforeSorting_;
    std::vector<double> widest_;  // by slab, the widest edge in x; empty where edges are not sorted
};

/// The same by a loop over all edges.
std::optional<bool> insideByAllEdges(std::vector<qcVector<2>> const& outline,
                                     qcVector<2> const& point, ParityReach const& reach);

}  // namespace qnInternal
