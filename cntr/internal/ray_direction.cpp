// The gap between vertex directions through which a containment ray leaves.
#include "cntr/internal/ray_direction.h"

#include "cntr/internal/tolerances.h"

#include <algorithm>

namespace qnInternal {

std::optional<qcVector<2>> rayDirection(std::vector<qcVector<2>> const& outline,
                                        qcVector<2> const& point)
{
    std::vector<double> angles;
    angles.reserve(outline.size());
    for (auto const& vertex : outline) {
        qcVector<2> const d = vertex - point;
        if (!(d.len() > kOnSegment))
            return std::nullopt;
        angles.push_back(d.angle().norm().toDouble());
    }
    std::sort(angles.begin(), angles.end());
    double const wideEnough = qnAngle::kPi / static_cast<double>(outline.size());
    for (std::size_t j = 0; j < angles.size(); ++j) {
        double const next = angles[j + 1 < angles.size() ? j + 1 : 0];
        double const gap = qcRadian(next - angles[j]).norm().toDouble();
        if (gap > wideEnough)
            return qcVector<2>(1.0, qcRadian(angles[j] + gap / 2));
    }
    return qcVector<2>(1, 0);
}

}  // namespace qnInternal
