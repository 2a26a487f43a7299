/// Regions for tests: made from plain figures, and seeded outlines that cross themselves.
#pragma once

#include "tests/support/plain_region.h"

#include <cntr/region.h>

#include <random>
#include <string>
#include <utility>
#include <vector>

namespace qnTest {

using qnPlain::Figure;
using qnPlain::Points;
using Hole = qcPtrHandle_const<qcRegion>;

struct NamedOutline {
    std::string name;
    Points points;
};

inline Points square(double x, double y, double side)
{
    return {{x, y}, {x + side, y}, {x + side, y + side}, {x, y + side}};
}

inline qcRegion regionOf(Points const& outline)
{
    return qcRegion(outline, qcContourDefs::eIgnore);
}

inline Hole holeOf(Points const& outline)
{
    return Hole(new qcRegion(outline, qcContourDefs::eIgnore));
}

/// What is made, or the text of the contour exception that prevented it.
template <class Make>
auto attempt(Make const& make) -> std::pair<decltype(make()), std::string>
{
    try {
        return {make(), ""};
    } catch (qcContourDefs::Errors const& error) {
        return {{}, error.what()};
    }
}

/// The figure as a region; its holes, to any depth, are held by it alone.
qcRegion regionOf(Figure const& figure);

/// Outlines that cross themselves from once to a few hundred times: trochoids and random sums of
/// waves. The same for the same seed.
std::vector<NamedOutline> crossingCurves(unsigned seed);

}  // namespace qnTest
