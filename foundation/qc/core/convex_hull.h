/// \file
/// Convex hull of points.
#pragma once

#include <qc/core/export.h>
#include <qc/core/vector.h>

#include <vector>

/// Replaces `hull` by the convex hull of `points`, counter-clockwise with y up, from the vertex of
/// smallest x (then smallest y). `hull` may be the same list as `points`.
///
/// The hull is strictly convex: no vertex repeats and none lies on the line through its neighbours.
/// Of equal points (0 equals -0) the first one is taken.
/// No points give no vertices, one distinct point gives that point, points on one line give the two
/// ends. Which side a point lies on is decided exactly, except where a product of coordinate
/// differences over- or underflows, or where coordinates beyond 1e150 stand beside others 1e150 times
/// smaller. Points with a coordinate that is not finite take no part.
/// O(n log n), and O(n) where most points lie well inside, or come in few runs to the left or right.
QC_EXPORT void qfConvexHull(std::vector<qcVector<2>> const& points, std::vector<qcVector<2>>& hull);
