// Hulls, farthest pairs and extreme vertices.
#include "support/ours.h"

namespace {

using namespace qnBench;

bool const registered[] = {
    firstTime<qcContour>("convex_hull",
                         [](qcContour const& contour, Work const&) {
                             qcRegion hull;
                             contour.convexHull(hull);
                             return std::abs(qf_Area(hull.points()));
                         }),
    firstTime<qcContour>("farthest_pair",
                         [](qcContour const& contour, Work const&) {
                             return contour.diameter(qcContourDefs::eFarthestPair);
                         }),
    everyTime<qcContour>(
        "extremal_vertex",
        [](auto const& contour, Work const& given, auto i) {
            return contour.extremalVertexPosition(qcRadian(given.queries[i].x())).x();
        }),
};

}  // namespace
