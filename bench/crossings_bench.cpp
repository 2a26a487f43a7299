// Where segments and other outlines meet an outline, and whether it crosses itself.
#include "support/ours.h"

namespace {

using namespace qnBench;

struct TwoOutlines {
    qcContour a;
    qcContour b;
};

TwoOutlines twoOutlines(Work const& given)
{
    return {qcContour(given.outline), qcContour(given.other)};
}

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
    once("outline_x_outline", "cntr", twoOutlines,
         [](TwoOutlines& outlines, Work const&) {
             forget(outlines.a);
             forget(outlines.b);
             return outlines.a.intersections(outlines.b).size();
         }),
    firstTime<qcContour>("self_crossing", [](qcContour const& contour,
                                             Work const&) { return contour.isSelfIntersecting(); }),
};

}  // namespace
