/// A point list seen through a transform.
#pragma once

#include <qc/core/matrix.h>
#include <qc/core/vector.h>

#include <vector>

namespace qnInternal {

inline std::vector<qcVector<2>> mappedPoints(std::vector<qcVector<2>> const& points,
                                             qcXform<2> const& xform)
{
    auto mapped = points;  // then in place: takes half of the time of adding one by one
    for (auto& point : mapped)
        point = xform * point;
    return mapped;
}

}  // namespace qnInternal
