/// A point list seen through a transform.
#pragma once

#include <qc/core/matrix.h>
#include <qc/core/vector.h>

#include <vector>

namespace qnInternal {

inline std::vector<qcVector<2>> mappedPoints(std::vector<qcVector<2>> const& points,
                                             qcXform<2> const& xform)
{
    std::vector<qcVector<2>> mapped;
    mapped.reserve(points.size());
    for (auto const& point : points)
        mapped.push_back(xform * point);
    return mapped;
}

}  // namespace qnInternal
