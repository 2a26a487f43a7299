// The gap between vertex directions through which a containment ray leaves.
#include "cntr/internal/ray_direction.h"

#include "cntr/internal/nearest.h"
#include "cntr/internal/tolerances.h"

#include <algorithm>
#include <cmath>

namespace qnInternal {

namespace {

/// The middle of the gap from one direction to the next, where it is wide enough.
std::optional<qcVector<2>> through(double angle, double next, double wideEnough)
{
    double const gap = qcRadian(next - angle).norm().toDouble();
    if (gap > wideEnough)
        return qcVector<2>(1.0, qcRadian(angle + gap / 2));
    return std::nullopt;
}

double angleOf(qcVector<2> const& direction)
{
    return direction.angle().norm().toDouble();
}

/// The directions from a point between two angles, no more than a quarter turn apart.
class Wedge {
public:
    Wedge(qcVector<2> const& apex, double from, double to)
        : apex_(apex), from_(from), to_(to), right_(1.0, qcRadian(from)), left_(1.0, qcRadian(to))
    {
    }

    /// Leaves out boxes only where no point inside is seen in the wedge.
    unsigned operator()(BoxGroup const& boxes) const
    {
        unsigned bits = 0;
        for (std::size_t i = 0; i < BoxGroup::kSize; ++i)
            bits |= mayBeSeen(boxes.box(i)) ? 1U << i : 0U;
        return bits;
    }

    /// Appends the angle of `vertex` where it is at least the first and below the second one.
    void appendAngle(qcVector<2> const& vertex, std::vector<double>& angles) const
    {
        qcVector<2> const d = vertex - apex_;
        double const slack = kRounding * absoluteSum(d);
        if (right_.cross(d) < -slack || left_.cross(d) > slack)
            return;
        double const angle = angleOf(d);
        if (angle >= from_ && angle < to_)
            angles.push_back(angle);
    }

private:
    static constexpr double kRounding = 1e-12;

    bool mayBeSeen(Box const& box) const
    {
        qcVector<2> const low = box.min - apex_;
        qcVector<2> const high = box.max - apex_;
        double const slack = kRounding * (absoluteSum(low) + absoluteSum(high));
        return !(largestCross(right_, low, high) < -slack) &&
               !(-largestCross(-left_, low, high) > slack);
    }

    static double absoluteSum(qcVector<2> const& v) { return std::fabs(v.x()) + std::fabs(v.y()); }

    /// The largest cross product of `u` with a point between two corners.
    static double largestCross(qcVector<2> const& u, qcVector<2> const& low,
                               qcVector<2> const& high)
    {
        return u.x() * (u.x() > 0 ? high.y() : low.y()) - u.y() * (u.y() > 0 ? low.x() : high.x());
    }

    qcVector<2> apex_;
    double from_;
    double to_;
    qcVector<2> right_;
    qcVector<2> left_;
};

}  // namespace

std::optional<qcVector<2>> rayDirection(std::vector<qcVector<2>> const& outline,
                                        qcVector<2> const& point)
{
    std::vector<double> angles;
    angles.reserve(outline.size());
    for (auto const& vertex : outline) {
        qcVector<2> const d = vertex - point;
        if (!(d.len() > kOnSegment))
            return std::nullopt;
        angles.push_back(angleOf(d));
    }
    std::sort(angles.begin(), angles.end());
    double const wideEnough = qnAngle::kPi / static_cast<double>(outline.size());
    for (std::size_t j = 0; j < angles.size(); ++j)
        if (auto const ray =
                through(angles[j], angles[j + 1 < angles.size() ? j + 1 : 0], wideEnough))
            return ray;
    return qcVector<2>(1, 0);
}

std::optional<qcVector<2>> rayDirection(std::vector<qcVector<2>> const& outline,
                                        EdgeIndex const& index, qcVector<2> const& point)
{
    if (!(nearestVertex(index, outline, point).distance > kOnSegment))
        return std::nullopt;
    constexpr double kTurn = 2 * qnAngle::kPi;
    double const wideEnough = qnAngle::kPi / static_cast<double>(outline.size());
    double width = 16 * wideEnough;  // eight average gaps, one of which is mostly wide enough
    std::optional<double> first;
    double previous = 0;
    std::vector<double> angles;
    for (double from = 0; from < kTurn; width *= 2) {
        double const to = from + std::min(width, kTurn / 4);
        Wedge const wedge(point, from, to);
        angles.clear();
        index.forEachLeaf(wedge, [&](std::size_t leaf, Box const&) {
            for (std::size_t i = index.leafBegin(leaf); i < index.verticesEnd(leaf); ++i)
                wedge.appendAngle(outline[i], angles);
        });
        std::sort(angles.begin(), angles.end());
        for (double const angle : angles) {
            if (!first)
                first = angle;
            else if (auto const ray = through(previous, angle, wideEnough))
                return ray;
            previous = angle;
        }
        from = to;
    }
    auto const last = first ? through(previous, *first, wideEnough) : std::nullopt;
    return last ? last : qcVector<2>(1, 0);
}

}  // namespace qnInternal
