/// Questions about several figures taken together, answered step by step without caches: what the
/// answers of region sets are compared with, bit for bit.
#pragma once

#include "tests/support/plain_contour.h"
#include "tests/support/plain_region.h"

namespace qnPlain {

using Set = std::vector<Figure>;

double area(Set const& set, bool considerHoles);
qcVector<2> centerOfMass(Set const& set, bool considerHoles);
qcMatrix<2> inertiaMatrix(Set const& set);  ///< of the outlines
bool inside(Set const& set, qcVector<2> const& point, bool considerHoles);
double distToPoint(Set const& set, qcVector<2> const& point, bool verticesOnly, bool considerHoles,
                   bool insideIsZero);
bool isSelfIntersecting(Set const& set);
qcRect encloseRect(Set const& set, qcXform<2> const& xform);

/// The outlines after the one merging pass, each then walked, or with `hull` cut to its hull.
std::vector<Points> cleaned(Set const& set, bool hull);

}  // namespace qnPlain
