// Whether a region contains a point.
#include "support/ours.h"

namespace {

using namespace qnBench;

bool const registered[] = {
    firstTime<qcRegion>("inside_first",
                        [](qcRegion const& region, Work const& given) {
                            return region.inside(given.queries[0], false);
                        }),
    firstTime<qcRegion>("inside_eight",
                        [](qcRegion const& region, Work const& given) {
                            int count = 0;
                            for (std::size_t i = 0; i < 8; ++i)
                                count += region.inside(given.queries[i], false);
                            return count;
                        }),
    everyTime<qcRegion>("inside_repeated",
                        [](auto const& region, Work const& given, auto i) {
                            return region.inside(given.queries[i], false);
                        }),
};

}  // namespace
