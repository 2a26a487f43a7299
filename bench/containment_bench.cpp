// Whether a region contains a point.
#include "support/ours.h"

namespace {

using namespace qnBench;

bool const registered[] = {
    firstTime<qcRegion>("inside_first",
                        [](qcRegion const& region, Work const& given) {
                            return region.inside(given.queries[0], false);
                        }),
    everyTime<qcRegion>("inside_repeated",
                        [](auto const& region, Work const& given, auto i) {
                            return region.inside(given.queries[i], false);
                        }),
};

}  // namespace
