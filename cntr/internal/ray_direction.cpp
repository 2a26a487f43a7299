// The gap between vertex directions through which a containment ray leaves.
#include "cntr/internal/ray_direction.h"

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
    /// To points in `bounds`; `scale` bounds their coordinates.
    Wedge(qcVector<2> const& apex, double from, double to, Box const& bounds, double scale)
        : apex_(apex), from_(from), to_(to), right_(1.0, qcRadian(from)), left_(1.0, qcRadian(to)),
          slack_(kCrossRounding * (scale + std::fabs(apex.x()) + std::fabs(apex.y()))),
          box_(boxAround(bounds))
    {
    }

    /// Leaves out boxes only where no point inside is seen in the wedge.
    unsigned operator()(BoxGroup const& boxes) const
    {
        unsigned const near = boxes.overlapping(box_);
        if (near == 0)
            return near;
        return near & ~eightBits([&](std::size_t i) {
                   Pair const lowX = pairAt(boxes.minX, i) - apex_.x();
                   Pair const lowY = pairAt(boxes.minY, i) - apex_.y();
                   Pair const highX = pairAt(boxes.maxX, i) - apex_.x();
                   Pair const highY = pairAt(boxes.maxY, i) - apex_.y();
                   // The largest cross product of a direction with a point between the corners.
                   auto const largestCross = [&](qcVector<2> const& u) {
                       return u.x() * (u.x() > 0 ? highY : lowY) -
                              u.y() * (u.y() > 0 ? lowX : highX);
                   };
                   return eitherHolds(largestCross(right_) < -slack_,
                                      -largestCross(-left_) > slack_);
               });
    }

    /// Appends the angle of `vertex` where it is at least the first and below the second one.
    void appendAngle(qcVector<2> const& vertex, std::vector<double>& angles) const
    {
        qcVector<2> const d = vertex - apex_;
        if (right_.cross(d) < -slack_ || left_.cross(d) > slack_)
            return;
        double const angle = angleOf(d);
        if (angle >= from_ && angle < to_)
            angles.push_back(angle);
    }

private:
    static constexpr double kCrossRounding = 4e-12;  // of a cross product with a direction, amply

    /// The box of the part of the wedge that lies within bounds, and some more.
    TwiceBox boxAround(Box const& bounds) const
    {
        // As far ahead the wedge has left the bounds, even half way between its sides.
        Box around = bounds;
        enclose(around, apex_);
        qcVector<2> const size = around.max - around.min;
        double const ahead = 1.5 * (size.x() + size.y());
        Box box = boxOf(apex_);
        enclose(box, apex_ + right_ * ahead);
        enclose(box, apex_ + left_ * ahead);
        qcVector<2> const margin(slack_, slack_);
        return TwiceBox({box.min - margin, box.max + margin});
    }

    qcVector<2> apex_;
    double from_;
    double to_;
    qcVector<2> right_;
    qcVector<2> left_;
    double slack_;
    TwiceBox box_;
};

/// More vertices in a wedge than this are many.
constexpr std::size_t kMany = 64;

/// Room for the angles of a wedge, so that it is asked for once.
std::vector<double> roomForMany()
{
    std::vector<double> angles;
    angles.reserve(kMany + EdgeIndex::kFan);
    return angles;
}

double wideEnough(std::size_t vertexCount)
{
    return qnAngle::kPi / static_cast<double>(vertexCount);
}

/// Replaces `angles` by those of the vertices seen in the wedge; false where they are more than `most`,
/// and not all of them found.
bool findAngles(std::vector<qcVector<2>> const& outline, EdgeIndex const& index, Wedge const& wedge,
                std::size_t most, std::vector<double>& angles)
{
    angles.clear();
    index.forEachLeaf(
        [&](BoxGroup const& boxes) { return angles.size() > most ? 0 : wedge(boxes); },
        [&](std::size_t leaf, Box const&) {
            for (std::size_t i = index.leafBegin(leaf); i < index.verticesEnd(leaf); ++i)
                wedge.appendAngle(outline[i], angles);
        });
    return angles.size() <= most;
}

/// The angles from `from` up to some angle, ascending; gives that angle, which is `to` where they are
/// not many. Where they are, it is one of the first that were found, no nearer than `narrow`.
double findFirstAngles(std::vector<qcVector<2>> const& outline, EdgeIndex const& index,
                       qcVector<2> const& point, double from, double to, double narrow,
                       std::vector<double>& angles)
{
    constexpr std::ptrdiff_t kKeptAngles = 8;
    std::size_t most = kMany;
    while (!findAngles(outline, index, Wedge(point, from, to, index.rootBox(), index.scale()), most,
                       angles)) {
        std::nth_element(angles.begin(), angles.begin() + kKeptAngles, angles.end());
        double const nearer = angles[kKeptAngles];
        if (to <= from + narrow)
            most = outline.size();
        to = std::max(from + narrow, std::min(nearer, from + (to - from) / 4));
    }
    std::sort(angles.begin(), angles.end());
    return to;
}

/// Whether a vertex is within kOnSegment of the point.
bool isOnVertex(std::vector<qcVector<2>> const& outline, EdgeIndex const& index,
                qcVector<2> const& point)
{
    // Twice as wide as need be: no rounding leaves a vertex out.
    qcVector<2> const margin(2 * kOnSegment, 2 * kOnSegment);
    TwiceBox const around({point - margin, point + margin});
    return index.anyEdgeNear(
        around, [&](std::size_t k) { return !(point.distance(outline[k]) > kOnSegment); });
}

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
    double const wide = wideEnough(outline.size());
    for (std::size_t j = 0; j < angles.size(); ++j)
        if (auto const ray = through(angles[j], angles[j + 1 < angles.size() ? j + 1 : 0], wide))
            return ray;
    return qcVector<2>(1, 0);
}

std::optional<qcVector<2>> rayDirection(std::vector<qcVector<2>> const& outline,
                                        EdgeIndex const& index, qcVector<2> const& point,
                                        RaySight& sight)
{
    if (isOnVertex(outline, index, point))
        return std::nullopt;
    constexpr double kTurn = 2 * qnAngle::kPi;
    double const wide = wideEnough(outline.size());
    double const narrow = 16 * wide;  // eight average gaps, one of which is mostly wide enough
    double width = narrow;
    std::optional<double> first;
    double previous = 0;
    std::vector<double> angles = roomForMany();
    sight.crowded = false;
    for (double from = 0; from < kTurn;) {
        bool const hardlyAny = !first && from < sight.first;
        double const most = std::min(hardlyAny ? sight.first - from + narrow : width, kTurn / 4);
        double const to = findFirstAngles(outline, index, point, from, from + most, narrow, angles);
        sight.crowded = sight.crowded || angles.size() > kMany;
        for (double const angle : angles) {
            if (!first)
                first = sight.first = angle;
            else if (auto const ray = through(previous, angle, wide))
                return ray;
            previous = angle;
        }
        if (!hardlyAny)
            width = 2 * (to - from);
        from = to;
    }
    auto const last = first ? through(previous, *first, wide) : std::nullopt;
    return last ? last : qcVector<2>(1, 0);
}

bool rayDirectionIsBelow(std::vector<qcVector<2>> const& outline, EdgeIndex const& index,
                         qcVector<2> const& point, double angle, double& width)
{
    constexpr int kMostWedges = 12;
    double const wide = wideEnough(outline.size());
    auto const isWide = [wide](double a, double b) { return through(a, b, wide).has_value(); };
    std::vector<double> angles = roomForMany();
    std::optional<double> above;  // the lowest angle seen so far
    double to = angle;
    width = std::max(width, wide);
    for (int wedges = 0; wedges < kMostWedges && to > wide; ++wedges) {
        double const from = to - std::min(width, to / 2);
        if (!findAngles(outline, index, Wedge(point, from, to, index.rootBox(), index.scale()),
                        kMany, angles)) {
            width = (to - from) / 4;
            continue;
        }
        std::sort(angles.begin(), angles.end());
        if (above)
            angles.push_back(*above);
        if (std::adjacent_find(angles.begin(), angles.end(), isWide) != angles.end())
            return true;
        if (!angles.empty())
            above = angles.front();
        to = from;
        width *= 4;
    }
    return false;
}

}  // namespace qnInternal
