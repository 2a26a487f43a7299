// A region mapped through a transform, and what a plain region draws of itself.
#include <cntr/region.h>

#include "cntr/internal/mapped_points.h"

void qcRegion::map(qcXform<2> const& xform, qcRegion& result) const
{
    unsigned long const ownLabel = label();  // `result` may be this region
    result = qcRegion(qnInternal::mappedPoints(points(), xform), qcContourDefs::eIgnore);
    result.label(ownLabel);
}

void qcRegion::draw(qcUITablet&, qcColor const&, qcUITablet::Layers const&) const {}
