// Measures of the whole polyline: length, mean position, median edge.
#include <cntr/contour.h>

#include "cntr/internal/edge_walk.h"

#include <algorithm>

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
    if (!medianFeatureSize_) {
        std::vector<double> lengths;
        lengths.reserve(points_.size());
        qnInternal::forEachEdgeLength(points_, isClosed(),
                                      [&](double edge) { lengths.push_back(edge); });
        // Largest first, NaN last: any other place for NaN would not be an order.
        auto const middle = lengths.begin() + static_cast<std::ptrdiff_t>(lengths.size() / 2);
        std::nth_element(lengths.begin(), middle, lengths.end(),
                         [](double a, double b) { return a > b || (a == a && b != b); });
        medianFeatureSize_ = *middle;
    }
    return *medianFeatureSize_;
}
