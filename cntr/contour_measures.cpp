// Measures of the whole polyline: length, mean position, median edge.
#include <cntr/contour.h>

#include "cntr/internal/edge_walk.h"
#include "cntr/internal/median_edge.h"

double qcContour::length() const
{
    if (points_.empty())
        return 0.0;
    if (!length_) {
        double length = 0.0;
        qnInternal::forEachEdgeLength(points_, isClosed(), [&](double edge) { length += edge; });
        length_ = length;
    }
    return *length_;
}

qcVector<2> qcContour::meanPosition() const
{
    checkEmptyContour();
    if (!meanPosition_) {
        double length = 0.0;
        double momentX = 0.0;
        double momentY = 0.0;
        qnInternal::forEachEdge(points_, isClosed(),
                                [&](std::size_t, qcVector<2> const& from, qcVector<2> const& to) {
                                    double const d = to.distance(from);
                                    length += d;
                                    momentX += (from.x() + to.x()) * 0.5 * d;
                                    momentY += (from.y() + to.y()) * 0.5 * d;
                                });
        meanPosition_ = qcVector<2>(momentX * (1 / length), momentY * (1 / length));
    }
    return *meanPosition_;
}

double qcContour::medianFeatureSize() const
{
    checkEmptyContour();
    if (!medianFeatureSize_)
        medianFeatureSize_ = qnInternal::medianEdgeLength(points_, isClosed());
    return *medianFeatureSize_;
}
