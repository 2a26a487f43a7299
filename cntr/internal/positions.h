/// Edge points as plain points.
#pragma once

#include <qc/core/vector.h>
#include <qc/features/edgelet.h>

#include <vector>

namespace qnInternal {

inline std::vector<qcVector<2>> positions(std::vector<qcEdgelet> const& edgelets)
{
    std::vector<qcVector<2>> points;
    points.reserve(edgelets.size());
    for (auto const& edgelet : edgelets)
        points.push_back(edgelet.position());
    return points;
}

}  // namespace qnInternal
