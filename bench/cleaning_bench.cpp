// Regularising outlines that cross themselves.
#include "support/ours.h"

namespace {

using namespace qnBench;

bool const registered[] = {
    firstTime<qcRegion>("regularise",
                        [](qcRegion const& region, Work const&) {
                            qcRegion result;
                            region.regularize(result);
                            return result.points().size();
                        }),
    firstTime<qcRegion>("outer_hull",
                        [](qcRegion const& region, Work const&) {
                            qcRegion result;
                            region.outerHull(result);
                            return result.points().size();
                        }),
};

}  // namespace
