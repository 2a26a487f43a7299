// Places beyond the circle around the first vertex, and what is seen from there.
#include "cntr/internal/first_circle.h"

#include <algorithm>
#include <cmath>

namespace qnInternal {

FirstCircle::FirstCircle(qcVector<2> const& firstVertex, double radius, ParityReach const& reach)
    : center_(firstVertex), radius_(radius)
{
    double const away = radius + reach.toVertex();  // and so farther from all edges than kOnSegment
    squaredReach_ = away * away;
}

bool FirstCircle::isBeyond(qcVector<2> const& place) const
{
    qcVector<2> const offset = place - center_;
    return offset * offset > squaredReach_;
}

bool FirstCircle::isPassedFrom(qcVector<2> const& point) const
{
    return point.x() < center_.x() && point.y() > center_.y();
}

double FirstCircle::lowestAngle(qcVector<2> const& point) const
{
    qcVector<2> const toCenter = center_ - point;
    double const halfSeen = std::asin(std::min(radius_ / toCenter.len(), 1.0));
    return std::max(toCenter.angle().norm().toDouble() - halfSeen, 0.0);
}

}  // namespace qnInternal
