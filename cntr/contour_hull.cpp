// The convex hull of a contour, as a region shared by the contour and its copies.
#include <cntr/contour.h>
#include <cntr/region.h>

#include <qc/core/convex_hull.h>

void qcContour::convexHull(qcRegion& hull) const
{
    checkEmptyContour();
    if (!convexHull_.valid) {
        std::vector<qcVector<2>> vertices;
        qfConvexHull(points_, vertices);
        convexHull_.region =
            qcPtrHandle_const<qcRegion>(new qcRegion(vertices, qcContourDefs::eIgnore));
        convexHull_.valid = true;
    }
    // Held here as well: where `hull` is this very region, the assignment replaces the handle.
    auto const held = convexHull_.region;
    hull = *held;
}
