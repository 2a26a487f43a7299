// Per-edge data of a contour, for classes derived from it.
#include <cntr/contour.h>

#include "cntr/internal/contour_caches.h"
#include "cntr/internal/edge_walk.h"
#include "cntr/internal/tolerances.h"

#include <qc/core/compare.h>

void qcContour::computeLineSegs() const
{
    if (edgeData_)
        return;
    auto data = std::make_shared<qc_EdgeData>();
    bool const closed = isClosed();
    auto const count = qnInternal::edgeCount(points_.size(), closed);
    data->segments.reserve(count);
    data->valid.reserve(count);
    qnInternal::forEachEdge(points_, closed,
                            [&](std::size_t, qcVector<2> const& from, qcVector<2> const& to) {
                                bool const valid = !qfRealEq(from, to, qnInternal::kSamePoint);
                                data->segments.push_back(valid ? qcLineSeg(from, to) : qcLineSeg());
                                data->valid.push_back(valid);
                            });
    edgeData_ = data;
}

std::vector<qcLineSeg> const& qcContour::lineSegs() const
{
    computeLineSegs();
    return edgeData_->segments;
}

std::vector<bool> const& qcContour::validLine() const
{
    computeLineSegs();
    return edgeData_->valid;
}
