/// @file
/// qcContour: an open polyline or closed polygon outline that answers geometric questions.
#pragma once

#include <cntr/config.h>
#include <cntr/contour_defs.h>

#include <qc/core/angle.h>
#include <qc/core/handle.h>
#include <qc/core/line.h>
#include <qc/core/matrix.h>
#include <qc/core/persistent.h>
#include <qc/core/shapes.h>
#include <qc/core/vector.h>
#include <qc/display/tablet.h>

#include <array>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

class qcRegion;
class qc_EdgeData;
class qc_EncloseRectCache;
class qc_ExtremalVertexCache;
class qc_VertexIndexCache;

namespace qnInternal {
class EdgeIndex;
class HitQuery;
class ParityReach;
class SlabIndex;
struct Box;
struct EdgeHit;
struct RadiusBounds;
}  // namespace qnInternal

/// An ordered list of points, joined by straight edges, open or closed, with a label of the caller.
///
/// Edge order: a closed contour of n points has n edges, edge 0 from p[n-1] to p[0] and edge k from
/// p[k-1] to p[k]; an open one has n-1, edge k from p[k] to p[k+1]. An edge whose two ends agree
/// within 1e-15 in x and in y keeps its place but never takes part in an intersection.
///
/// Any points are accepted: none, repeated ones, and coordinates that are not finite. Queries never
/// have undefined behaviour; on coordinates that are not finite their numbers follow the floating
/// point rules, comparisons with NaN being false. Lengths are in the units of the points.
///
/// Derived values are computed on first use and kept until the points change, so even const queries
/// write: one object belongs to one thread at a time.
///
/// What each query costs, the first time and again, stands in docs/cost.md.
class CNTR_EXPORT qcContour : public virtual qcPersistent, public virtual qcRepBase {
public:
    /// Empty, closed, label 0.
    qcContour() : qcContour(std::vector<qcVector<2>>()) {}

    /// A contour of the points as they are.
    explicit qcContour(std::vector<qcVector<2>> const& points, bool closed = true,
                       unsigned long label = 0);

    /// A contour of the polygon's vertices, closed exactly where the first and last of them agree
    /// within 1e-15; a repeated last vertex stays a point. A polygon without vertices gives an empty
    /// closed contour.
    qcContour(qcPolygon const& polygon, unsigned long label);

    /// Copies points, flags and filled caches; a cached hull region is shared. Tracking flag and
    /// reference count are the new object's own.
    qcContour(qcContour const& other);

    /// Like the copy constructor; a throw leaves this contour as it was. No change is notified.
    qcContour& operator=(qcContour const& other);

    ~qcContour() override;

    /// Equal open or closed state, equal points (exactly, in order) and equal cachedVectorSize().
    /// Labels are not compared.
    bool operator==(qcContour const& other) const;
    bool operator!=(qcContour const& other) const { return !(*this == other); }

    /// The points in order.
    std::vector<qcVector<2>> const& points() const { return points_; }

    /// Replaces the points; everything derived from them is dropped.
    virtual void points(std::vector<qcVector<2>> const& points);

    /// Whether the last point is joined back to the first.
    virtual bool isClosed() const;

    /// Opens or closes the contour; everything derived from its edges is dropped.
    virtual void isClosed(bool closed);

    /// Draws every edge in edge order, edges of no length included. `mode` makes no difference.
    virtual void draw(qcUITablet& tablet, qcContourDefs::DrawMode mode, qcColor const& color,
                      qcUITablet::Layers const& layer) const;

    /// The caller's tag.
    unsigned long label() const { return label_; }

    /// Sets the caller's tag; nothing derived is dropped.
    void label(unsigned long label);

    /// The caches of encloseRect() and extremalVertexIndex() hold at most this many results plus one.
    long cachedVectorSize() const { return cachedVectorSize_; }

    /// Sets the bound of those caches; a fuller cache is not trimmed. Throws
    /// qcContourDefs::BadParams on a negative number.
    void cachedVectorSize(long size);

    /// Total length of the edges, added in edge order; 0 for a contour without points.
    double length() const;

    /// Centroid of the contour taken as a wire of even weight. Where all points coincide it is not
    /// finite. Throws qcContourDefs::EmptyContour on fewer than 2 points.
    qcVector<2> meanPosition() const;

    /// Index of the vertex nearest to `point`, the lowest on a tie; 0 where no distance is finite.
    /// Throws qcContourDefs::EmptyContour on fewer than 2 points.
    long closestVertexIndex(qcVector<2> const& point) const;

    /// The point of the contour nearest to `point`, or with `verticesOnly` the nearest vertex.
    ///
    /// On a tie the first edge in edge order (the lowest vertex) wins; where no distance is finite
    /// the result is (0, 0) (vertex 0). Throws qcContourDefs::EmptyContour on fewer than 2 points.
    qcVector<2> closestPoint(qcVector<2> const& point, bool verticesOnly) const;

    /// Distance from `point` to closestPoint() of the same arguments.
    double distToPoint(qcVector<2> const& point, bool verticesOnly) const;

    /// Indices of all vertices closer to `point` than `tolerance` (strictly).
    ///
    /// The order is that of a grid with cells as wide as the tolerance: cell by cell, x before y,
    /// and ascending inside a cell. Cell numbers are kept within 32 bits, so positions beyond
    /// 2^31 tolerances share the outermost cells, where vertices that near to each other are still
    /// found. A tolerance that is not above 0 gives an empty list. The grid of every tolerance is
    /// kept until the points change. Throws qcContourDefs::EmptyContour on fewer than 2 points.
    std::vector<int> vertexIndex(qcVector<2> const& point, double tolerance) const;

    /// Index of the vertex farthest in the direction of `angle`, the lowest on a tie.
    ///
    /// Directions within 1e-15 of an axis compare that coordinate alone. -1 where no vertex has a
    /// comparable position (NaN, or infinitely far the other way). The last few answers are kept.
    /// Throws qcContourDefs::EmptyContour on fewer than 2 points.
    long extremalVertexIndex(qcRadian const& angle) const;

    /// The vertex at extremalVertexIndex(); (NaN, NaN) where that is -1.
    qcVector<2> extremalVertexPosition(qcRadian const& angle) const;

    /// Where `segment` meets the contour, ordered along the segment.
    ///
    /// Edges parallel to the segment give nothing. Passing through a vertex gives one point for each
    /// of the two edges. An edge is met where the lines' crossing lies within 1e-6 of both. With
    /// `touchingEnds` false, edges within 1e-6 of an end of the segment are left out. A segment of no
    /// length meets nothing. Throws qcContourDefs::EmptyContour on fewer than 2 points.
    std::vector<qcVector<2>> intersections(qcLineSeg const& segment, bool touchingEnds) const;

    /// Where the edges of `other` meet this contour: the answers for each edge of `other` as a
    /// segment (touchingEnds true), in its edge order; points found twice are listed twice.
    /// Throws qcContourDefs::EmptyContour where this contour has fewer than 2 points.
    std::vector<qcVector<2>> intersections(qcContour const& other) const;

    /// Whether an edge meets another that is not within 1e-6 of one of its ends. A vertex resting on
    /// a far edge counts, edges lying on each other do not. False without points.
    bool isSelfIntersecting() const;

    /// Bounding rectangle of the points mapped by `xform`. The results of the last few transforms
    /// are kept (one with NaN elements is not). Coordinates that are NaN are passed over, save those
    /// of the first point. Throws qcContourDefs::EmptyContour on fewer than 2 points.
    qcRect encloseRect(qcXform<2> const& xform) const;

    /// A circle around the points, by the rule of `mode`.
    ///
    /// eFarthestPair: centre at the middle of the farthest pair (the first in index order on a tie),
    /// which need not contain every point; centre (0, 0) and radius 0 where no two points differ.
    /// eFromFirstPoint: centre at the first point; the zero circle where there is none. Throws
    /// qcContourDefs::BadParams "diameterMode is not one of the valid enums" for other modes.
    qcCircle encloseCircle(qcContourDefs::DiameterMode mode) const;

    /// Twice the radius of encloseCircle() of the same mode.
    double diameter(qcContourDefs::DiameterMode mode) const;

    /// Assigns the convex hull of the points to `hull`: closed, counter-clockwise (y up), label 0, no
    /// holes. The hull is computed once and shared with copies. Throws qcContourDefs::EmptyContour
    /// on fewer than 2 points.
    void convexHull(qcRegion& hull) const;

    /// The ellipse that qf_FitEllipse() gives for the points, and its residual (-1 where no fit was
    /// possible). Throws qcContourDefs::EmptyContour on fewer than 2 points.
    void fitEllipse(qcEllipse& ellipse, double& residual) const;

    /// Assigns to `result` this contour mapped by `xform`: mapped points, the same state and label,
    /// cachedVectorSize() 3. `result` may be this contour; of a derived object only the contour part
    /// is set, and what a region computed of its former outline stays: map regions with qcRegion::map().
    void map(qcXform<2> const& xform, qcContour& result) const;

    /// The contour as a polygon; a closed one repeats its first point at the end. Without points the
    /// polygon is empty. Changes nothing.
    qcPolygon polygon();

protected:
    void dispatchSerialize(qcArchive& archive) override;

    /// Streams the fields of `version`; throws qcArchive::UnknownVersion for one it does not know.
    /// After a throw while loading the object can be assigned to, queried and destroyed.
    virtual void serialize_(qcArchive& archive, unsigned char version);

    /// Brings what a derived class keeps per vertex in step with new points. Here: drops the caches.
    virtual void makeDataConsistentWithPoints();

    /// Brings the points in step with what a derived class keeps per vertex. Here: drops the caches.
    virtual void makePointsConsistentWithData();

    /// Notifies the change and drops everything derived from the points. Every change of geometry
    /// comes through here; a class with caches of its own extends it.
    virtual void cleanCacheInfo();

    /// Replaces the points without makeDataConsistentWithPoints(), for classes that see to it.
    void setPoints(std::vector<qcVector<2>> const& points);

    /// Throws qcContourDefs::EmptyContour on fewer than 2 points.
    void checkEmptyContour() const;

    /// One segment per edge, in edge order; a default one for an edge of no length.
    std::vector<qcLineSeg> const& lineSegs() const;

    /// Per edge, whether its two ends differ by more than 1e-15 in x or in y.
    std::vector<bool> const& validLine() const;

    /// Builds the per-edge data unless they are there.
    void computeLineSegs() const;

    /// The public query of the same name, with the index of the edge met at each point.
    std::vector<qcVector<2>> intersections(qcLineSeg const& segment, std::vector<int>& segIndices,
                                           bool touchingEnds) const;

    /// Equal points, in order, exactly; a NaN equals every number.
    bool samePoints(qcContour const& other) const;

    /// Median of the edge lengths; of an even number of edges the smaller of the middle two.
    /// Throws qcContourDefs::EmptyContour on fewer than 2 points.
    double medianFeatureSize() const;

private:
    friend class qcRegion;

    struct Bounds {
        qcVector<2> min;
        qcVector<2> max;
        bool finite = false;  // all coordinates are
    };

    struct Circle {
        qcVector<2> center;
        double radius = 0;
    };

    struct Hull {
        bool valid = false;
        qcPtrHandle_const<qcRegion> region;  // kept beyond `valid`, until the next one replaces it
    };

    struct Fit {
        qcEllipse ellipse;
        double residual = 0;
    };

    static constexpr long kCachedVectorSize = 3;

    static qcPersistent* make();
    static qc_Instantiator sExemplar;

    void dropCaches() noexcept;
    CNTR_HIDDEN void dropIndexes() noexcept;
    void serializeLegacy(qcArchive& archive);
    CNTR_HIDDEN Bounds const& bounds() const;
    CNTR_HIDDEN Circle const& circle(qcContourDefs::DiameterMode mode) const;
    Circle farthestPairCircle() const;
    Circle firstPointCircle() const;
    CNTR_HIDDEN bool anyEdgeMeetsAnother() const;

    // Null where the plain loops over all edges are faster, or alone are right.
    CNTR_HIDDEN qnInternal::EdgeIndex const* edgeIndex() const { return edgeIndex(isClosed()); }
    CNTR_HIDDEN qnInternal::EdgeIndex const* edgeIndex(bool closed) const;

    // The same for one question that need not find leaves in one place: spares their sorting.
    CNTR_HIDDEN std::shared_ptr<qnInternal::EdgeIndex const> edgeIndexInAnyOrder() const;

    CNTR_HIDDEN std::vector<qnInternal::EdgeHit> hits(qnInternal::HitQuery const& query) const;

    // The same into a list that is there already.
    CNTR_HIDDEN void findHits(qnInternal::HitQuery const& query,
                              std::vector<qnInternal::EdgeHit>& found) const;
    // An edge that meets the query, if there is one.
    CNTR_HIDDEN std::optional<std::size_t> edgeMetBy(qnInternal::HitQuery const& query) const;

    // Whether the outline, taken as closed, contains a point; nothing where only the ray can tell.
    CNTR_HIDDEN std::optional<bool> certainlyInside(qcVector<2> const& point) const;

    // Whether containment rays from a point are sure to meet the outline, taken as closed.
    CNTR_HIDDEN bool surelyWound(qcVector<2> const& point) const;

    // What must hold around points that are certain, nothing where none is. For one point alone it may
    // say less than could be said.
    CNTR_HIDDEN std::optional<qnInternal::ParityReach> parityReach() const;
    CNTR_HIDDEN std::optional<qnInternal::ParityReach>
    parityReachAt(qcVector<2> const& point) const;
    CNTR_HIDDEN std::optional<qnInternal::ParityReach>
    parityReach(qnInternal::RadiusBounds const& radius) const;

    // Null where no point has an answer by them.
    CNTR_HIDDEN qnInternal::SlabIndex const* slabs() const;
    qcPolygon toPolygon() const;

    unsigned long label_;
    bool closed_;
    std::vector<qcVector<2>> points_;
    long cachedVectorSize_ = kCachedVectorSize;

    mutable std::optional<qcVector<2>> meanPosition_;
    mutable std::optional<double> length_;
    mutable std::optional<double> medianFeatureSize_;
    mutable std::optional<bool> selfIntersecting_;
    mutable std::optional<Bounds> bounds_;
    mutable std::array<std::optional<Circle>, 2> encloseCircles_;  // by DiameterMode
    mutable std::optional<Fit> fitEllipse_;
    mutable Hull convexHull_;
    // Never changed once built, so copies share them.
    mutable std::shared_ptr<qc_EdgeData const> edgeData_;
    mutable std::shared_ptr<qnInternal::EdgeIndex const> edgeIndex_;
    mutable std::shared_ptr<qnInternal::SlabIndex const> slabIndex_;
    mutable std::size_t containmentQueries_ = 0;  // since the points changed
    mutable std::unique_ptr<qc_EncloseRectCache> encloseRectCache_;
    mutable std::unique_ptr<qc_ExtremalVertexCache> extremalVertexCache_;
    mutable std::unique_ptr<qc_VertexIndexCache> vertexIndexCache_;
};
