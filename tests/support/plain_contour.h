/// Questions about contours answered step by step on a plain point list, without caches and
/// shortcuts: what the library is compared with, bit for bit (moments up to rounding).
#pragma once

#include <cntr/moments.h>

#include <qc/core/line.h>
#include <qc/core/matrix.h>
#include <qc/core/shapes.h>
#include <qc/core/vector.h>

#include <vector>

namespace qnPlain {

using Points = std::vector<qcVector<2>>;

/// Where a segment meets the edges of a contour, ordered along it, and which edges.
struct Crossings {
    Points points;
    std::vector<int> edges;
};

std::vector<qcLineSeg> edges(Points const& points, bool closed);

double length(Points const& points, bool closed);
qcVector<2> meanPosition(Points const& points, bool closed);
double medianFeatureSize(Points const& points, bool closed);

long closestVertexIndex(Points const& points, qcVector<2> const& place);
qcVector<2> closestPoint(Points const& points, bool closed, qcVector<2> const& place);
std::vector<int> vertexIndex(Points const& points, qcVector<2> const& place, double tolerance);
long extremalVertexIndex(Points const& points, double angle);

Crossings crossings(Points const& points, bool closed, qcLineSeg const& segment, bool touchingEnds);
bool isSelfIntersecting(Points const& points, bool closed);

qcRect encloseRect(Points const& points, qcXform<2> const& xform);
qcCircle farthestPairCircle(Points const& points);
qcCircle firstPointCircle(Points const& points);

qc_InertiaData inertiaDataPolygon(Points const& points);

}  // namespace qnPlain
