// Where segments and other outlines meet an outline, and whether it crosses itself.
#include "support/ours.h"

namespace {

using namespace qnBench;

bool const registered[] = {
    firstTime<qcContour>(
        "long_segment_first",
        [](qcContour const& contour, Work const& given) {
            return contour.intersections(segment(given.longSegments[0]), true).size();
        }),
    everyTime<qcContour>(
        "long_segment_repeated",
        [](auto const& contour, Work const& given, auto i) {
            return contour.intersections(segment(given.longSegments[i]), true).size();
        }),
    everyTime<qcContour>(
        "short_segment_repeated",
        [](auto const& contour, Work const& given, auto i) {
            return contour.intersections(segment(given.shortSegments[i]), true).size();
        }),
    firstTime<qcContour>("outline_x_outline",
                         [](qcContour const& contour, Work const& given) {
                             return contour.intersections(qcContour(given.other)).size();
                         }),
    firstTime<qcContour>("self_crossing", [](qcContour const& contour,
                                             Work const&) { return contour.isSelfIntersecting(); }),
};

}  // namespace
