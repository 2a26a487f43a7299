/// @file
/// qcRegion: a closed contour with holes.
#pragma once

#include <cntr/config.h>
#include <cntr/contour.h>

#include <optional>
#include <vector>

namespace qnInternal {
struct RaySight;
}

/// A closed contour, its outline, together with a list of holes, each a region of its own.
///
/// Holes are shared through counted handles and never changed by their holders. A hole may have
/// holes itself, which only inside() looks at; and it may lie anywhere as long as its outline does
/// not meet the region's. A chain of holes that leads back to its own region is the caller's fault:
/// inside() would not end on it. (Loading refuses one.)
///
/// Queries fill caches of the region and of its holes: a region and all that it shares belong to
/// one thread at a time. An outline of fewer than 3 points is empty: its areas, centres and moments
/// throw qcContourDefs::EmptyContour. What each query costs stands in docs/cost.md.
class CNTR_EXPORT qcRegion : public virtual qcContour {
public:
    /// A region without points and holes, label 0.
    qcRegion() : qcRegion(std::vector<qcVector<2>>()) {}

    /// A region of the points, label 0, without holes. `mode` says what becomes of an outline that
    /// crosses itself; what outerHull() and regularize() throw passes.
    explicit qcRegion(std::vector<qcVector<2>> const& points,
                      qcContourDefs::IntersectionMode mode = qcContourDefs::eIgnore);

    /// A region of the polygon's vertices, all of them.
    qcRegion(qcPolygon const& polygon, qcContourDefs::IntersectionMode mode);

    /// A region of the contour's points and label; an open contour becomes a closed region.
    qcRegion(qcContour const& contour, qcContourDefs::IntersectionMode mode);

    /// Copies outline and caches; holes and cached result regions are shared.
    qcRegion(qcRegion const& other);

    /// Like the copy constructor; a throw leaves this region as it was.
    qcRegion& operator=(qcRegion const& other);

    ~qcRegion() override;

    /// Compares the outlines as contours; holes are not compared.
    bool operator==(qcRegion const& other) const;
    bool operator!=(qcRegion const& other) const { return !(*this == other); }

    /// The holes in order.
    std::vector<qcPtrHandle_const<qcRegion>> const& holes() const { return holes_; }

    /// Replaces the holes. Throws qcBadPointer on a null handle and qcContourDefs::BadParams "holes
    /// cannot intersect region" where a hole's outline meets this one's; the holes are then
    /// unchanged, the caches already dropped. Holes are not tested against each other.
    ///
    /// A list in braces fits both overloads: give a vector with its type.
    void holes(std::vector<qcPtrHandle_const<qcRegion>> const& holes);
    /// The same from handles to regions that may change.
    void holes(std::vector<qcPtrHandle<qcRegion>> const& holes);

    /// Always true.
    bool isClosed() const override;

    /// Does nothing for true; throws qcContourDefs::RegionCannotBeSetOpen for false.
    void isClosed(bool closed) override;

    /// Draws nothing: a plain region has no data to show. The other draw() draws the outline.
    virtual void draw(qcUITablet& tablet, qcColor const& color,
                      qcUITablet::Layers const& layer) const;
    using qcContour::draw;

    /// Whether `point` is inside the outline and, with `considerHoles`, in none of the holes (a point
    /// on an island inside a hole is inside).
    ///
    /// Counts the crossings of one ray, whose direction avoids the vertices and whose length is
    /// twice the largest distance from the first vertex. A point outside the bounding rectangle is
    /// outside; one within 1e-6 of an outline vertex is inside. The ray may end before it has left
    /// the outline: see the conventions guide for a point outside that counts as inside. Throws
    /// qcBadPointer on a null hole.
    bool inside(qcVector<2> const& point, bool considerHoles) const;

    /// Index of the closest vertex; `which` receives the position of the hole it belongs to, or -1 for
    /// the outline, which wins a tie. Throws qcBadPointer on a null hole, qcContourDefs::EmptyContour
    /// where a contour asked has fewer than 2 points.
    long closestVertexIndex(qcVector<2> const& point, bool considerHoles, long& which) const;

    /// Index of the outline's closest vertex.
    long closestVertexIndex(qcVector<2> const& point) const;

    /// The closest vertex or point of the boundary. With `verticesOnly` the holes count where
    /// `considerHoles` says so; else they always count. Errors as closestVertexIndex(). Changes
    /// nothing.
    qcVector<2> closestPoint(qcVector<2> const& point, bool verticesOnly, bool considerHoles);
    using qcContour::closestPoint;

    /// 0 for a point inside where `insideIsZero`, else its distance to the closestPoint() of the same
    /// arguments.
    double distToPoint(qcVector<2> const& point, bool verticesOnly, bool considerHoles,
                       bool insideIsZero) const;
    using qcContour::distToPoint;

    /// Area of the outline, with `considerHoles` less the areas of the holes' outlines.
    ///
    /// Throws qcContourDefs::EmptyContour where the outline or such a hole has fewer than 3 points
    /// and qcBadPointer on a null hole.
    double area(bool considerHoles) const;

    /// Centre of mass of the outline, with `considerHoles` of the outline without its holes. Where the
    /// remaining area is 0 it is not finite. Errors as area(). Changes nothing but caches.
    qcVector<2> centerOfMass(bool considerHoles);

    /// Central second moments of the outline's area, not divided by it. Throws
    /// qcContourDefs::EmptyContour on fewer than 3 points and, with `considerHoles`,
    /// qcContourDefs::BadParams "inertiaMatrix(considerHoles) is not implemented" where there are
    /// holes. Changes nothing but caches.
    qcMatrix<2> inertiaMatrix(bool considerHoles);

    /// Where a segment meets the outline, then with `considerHoles` each hole's outline in turn (see
    /// the contour's query); points found twice are listed twice. The region is not changed.
    ///
    /// The contour's own queries of this name are hidden: of a const region, or without `considerHoles`,
    /// ask static_cast<qcContour const&>(region).
    std::vector<qcVector<2>> intersections(qcLineSeg const& segment, bool touchingEnds,
                                           bool considerHoles);

    /// The same for the edges of another contour.
    std::vector<qcVector<2>> intersections(qcContour const& other, bool considerHoles);

    /// Assigns the regularised region to `result`: of an outline that crosses itself, the closed walk
    /// along its outer boundary that turns around at every crossing; any other region unchanged,
    /// holes included.
    ///
    /// The walk starts at the first edge that faces the outside and is not crossed; it returns one
    /// closed curve, which need not be all of the figure (see the guide on regularising). Former
    /// crossings become vertices passed twice. The result has label 0 and no holes and is computed
    /// once; `result` may be this region. Throws qcContourDefs::BadParams "invalid contour" where no
    /// edge can start the walk or the walk cannot end, qcContourDefs::EmptyContour on fewer than 3
    /// points; `result` is then unchanged.
    void regularize(qcRegion& result) const;

    /// Like regularize(), then cuts the walk into simple loops at vertices passed twice, drops loops
    /// that lie inside another and joins those that share a vertex; the first one is the result.
    /// Also throws qcContourDefs::EmptyContour where a cut leaves a loop of one vertex (a repeated
    /// vertex in a crossing outline).
    void outerHull(qcRegion& result) const;

    /// Assigns to `result` the mapped outline with this region's label; holes are not mapped and the
    /// result has none. `result` may be this region.
    void map(qcXform<2> const& xform, qcRegion& result) const;
    using qcContour::map;

protected:
    void dispatchSerialize(qcArchive& archive) override;
    void serialize_(qcArchive& archive, unsigned char version) override;
    void cleanCacheInfo() override;

    /// Throws qcContourDefs::EmptyContour on fewer than 3 points.
    void checkEmptyContour() const;

private:
    friend class qcRegionSet;
    class CNTR_HIDDEN SplicedOutline;  // outlines that cross, joined into one
    class Surroundings;                // what lies around points one beside the other

    /// A result region, held for all copies; the handle stays beyond `valid` until it is replaced.
    struct Result {
        bool valid = false;
        qcPtrHandle_const<qcRegion> region;
    };

    static qcPersistent* make();
    static qc_Instantiator sExemplar;

    void initialize(qcContourDefs::IntersectionMode mode);
    void dropRegionCaches() noexcept;
    void checkHoles(std::vector<qcPtrHandle_const<qcRegion>> const& holes);
    void serializeLegacy(qcArchive& archive);

    CNTR_HIDDEN bool insideByRay(qcVector<2> const& point) const;

    // From a point to the end of the ray; nothing for a point on a vertex.
    std::optional<qcVector<2>> containmentRay(qcVector<2> const& point,
                                              qnInternal::RaySight& sight) const;
    CNTR_HIDDEN bool insideOutline(qcVector<2> const& point) const;

    // What the queries declared without const do; const callers use these.
    qcVector<2> boundaryPoint(qcVector<2> const& point, bool verticesOnly,
                              bool considerHoles) const;
    qcVector<2> massCenter(bool considerHoles) const;
    qcMatrix<2> secondMoments(bool considerHoles) const;
    std::vector<qcVector<2>> crossings(qcLineSeg const& segment, bool touchingEnds,
                                       bool considerHoles) const;
    std::vector<qcVector<2>> crossings(qcContour const& other, bool considerHoles) const;

    CNTR_HIDDEN bool outlineMeets(qcRegion const& other) const;

    // The box that holds the outline, or nothing where it has too few points or not all are finite.
    CNTR_HIDDEN bool hasOutlineBox() const;
    CNTR_HIDDEN std::optional<qnInternal::Box> outlineBox() const;

    void cleaned(Result& cache, bool outerHullStage, qcRegion& result) const;
    void outerHullRegularize(qcRegion& result, bool outerHullStage) const;
    long startEdge() const;
    bool facesOutside(long edge, double probe, Surroundings& around) const;
    std::vector<qcVector<2>> walkBoundary(long start) const;

    std::vector<qcPtrHandle_const<qcRegion>> holes_;

    mutable std::optional<qcVector<2>> centerWithHoles_;
    mutable std::optional<qcVector<2>> centerOfOutline_;
    mutable std::optional<double> areaWithHoles_;
    mutable std::optional<double> areaOfOutline_;
    mutable std::optional<qcMatrix<2>> inertiaOfOutline_;
    mutable Result regularized_;
    mutable Result outerHull_;
};
