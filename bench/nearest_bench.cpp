// Nearest points, nearest vertices and the distance to them.
#include "support/ours.h"

namespace {

using namespace qnBench;

/// The outline with two small squares as holes, near its middle.
qcRegion withHoles(Work const& given)
{
    qcRegion region(given.outline);
    std::vector<qcPtrHandle_const<qcRegion>> holes;
    for (double const x : {1980.0, 2010.0})
        holes.emplace_back(
            new qcRegion(Points{{x, 1990}, {x + 20, 1990}, {x + 20, 2010}, {x, 2010}}));
    region.holes(holes);
    return region;
}

bool const registered[] = {
    firstTime<qcContour>("distance_first",
                         [](qcContour const& contour, Work const& given) {
                             return contour.distToPoint(given.queries[0], false);
                         }),
    everyTime<qcContour>("distance_repeated",
                         [](auto const& contour, Work const& given, auto i) {
                             return contour.distToPoint(given.queries[i], false);
                         }),
    firstTime<qcContour>("nearest_vertex_first",
                         [](qcContour const& contour, Work const& given) {
                             return contour.distToPoint(given.queries[0], true);
                         }),
    everyTime<qcContour>(
        "nearest_vertex_repeated",
        [](auto const& contour, Work const& given, auto i) {
            auto const& at = contour.points();
            auto const apart =
                at[static_cast<std::size_t>(contour.closestVertexIndex(given.queries[i]))] -
                given.queries[i];
            return apart * apart;
        }),
    everyTime<qcContour>("vertices_within",
                         [](auto const& contour, Work const& given, auto i) {
                             return contour.vertexIndex(given.queries[i], 20).size();
                         }),
    repeated("distance_with_holes", "cntr", withHoles,
             [](auto const& region, Work const& given, auto i) {
                 return region.distToPoint(given.queries[i], false, true, false);
             }),
};

}  // namespace
