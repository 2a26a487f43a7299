// Two outlines that cross, joined into one that runs around both.
#include <cntr/region.h>

#include "cntr/internal/edge_walk.h"
#include "cntr/internal/tolerances.h"

#include <qc/core/compare.h>

void qcRegion::splice(qcRegion const& other, qcRegion& result) const
{
    auto const& outline = points();
    for (std::size_t i = 0; i < outline.size(); ++i) {
        qcVector<2> const& from = qnInternal::edgeStart(outline, true, i);
        if (qfRealEq(from, outline[i], qnInternal::kSamePoint))
            continue;
        std::vector<int> edges;
        auto const found = other.qcContour::intersections(qcLineSeg(from, outline[i]), edges, true);
        if (found.empty())
            continue;
        std::vector<qcVector<2>> spliced;
        auto const appendAround = [&](std::vector<qcVector<2>> const& around, std::size_t edge) {
            spliced.push_back(found.front());
            for (std::size_t k = 0; k < around.size(); ++k)
                spliced.push_back(around[(edge + k) % around.size()]);
        };
        appendAround(outline, i);
        appendAround(other.points(), static_cast<std::size_t>(edges.front()));
        result = qcRegion(spliced, qcContourDefs::eIgnore);
        return;
    }
    throw qcContourDefs::BadParams(L"spliced regions do not intersect");
}
