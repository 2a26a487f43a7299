/// Questions about contours answered step by step on a plain point list, without caches and
/// shortcuts: what the library is compared with, bit for bit (moments up to rounding).
#pragma once

#include <cntr/contour_defs.h>
#include <cntr/moments.h>

#include <qc/core/line.h>
#include <qc/core/matrix.h>
#include <qc/core/shapes.h>
#include <qc/core/vector.h>

#include <vector>

namespace qnPlain {

using Points = std::vector<qcVector<2>>;

std::vector<qcLineSeg> edges(Points const& points, bool closed);

/// The queries of a contour by their names there. It refers to the points that it is made of.
class Contour {
public:
    explicit Contour(Points const& points, bool closed = true) : points_(points), closed_(closed) {}

    Points const& points() const { return points_; }
    double length() const;
    qcVector<2> meanPosition() const;
    double medianFeatureSize() const;

    long closestVertexIndex(qcVector<2> const& place) const;
    qcVector<2> closestPoint(qcVector<2> const& place, bool verticesOnly) const;
    double distToPoint(qcVector<2> const& place, bool verticesOnly) const;
    std::vector<int> vertexIndex(qcVector<2> const& place, double tolerance) const;
    long extremalVertexIndex(qcRadian angle) const;

    /// Ordered along the segment; `met` becomes the edges that it meets.
    Points intersections(qcLineSeg const& segment, std::vector<int>& met, bool touchingEnds) const;
    Points intersections(qcLineSeg const& segment, bool touchingEnds) const;
    bool isSelfIntersecting() const;

    qcRect encloseRect(qcXform<2> const& xform) const;
    qcCircle encloseCircle(qcContourDefs::DiameterMode mode) const;

private:
    Points const& points_;
    bool closed_;
};

qc_InertiaData inertiaDataPolygon(Points const& points);

}  // namespace qnPlain
