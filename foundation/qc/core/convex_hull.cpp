// Convex hull: lower and upper chain over the sorted points, each turn decided exactly.
#include <qc/core/convex_hull.h>
#include <qc/core/internal/orientation.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <iterator>

namespace {

using Points = std::vector<qcVector<2>>;

bool isFinite(qcVector<2> const& p)
{
    return std::isfinite(p.x()) && std::isfinite(p.y());
}

bool before(qcVector<2> const& a, qcVector<2> const& b)
{
    return a.x() < b.x() || (a.x() == b.x() && a.y() < b.y());
}

/// Up to so many points sorting them all is as fast as looking for those that need not be sorted.
constexpr std::size_t kMaxPlainPoints = 32;

/// The outermost points in eight directions, counter-clockwise from the lowest x.
Points outermost(Points const& points)
{
    std::array<qcVector<2>, 8> const directions{
        qcVector<2>{-1, 0}, {-1, -1}, {0, -1}, {1, -1}, {1, 0}, {1, 1}, {0, 1}, {-1, 1}};
    std::array<double, 8> reach{};
    std::array<qcVector<2>, 8> found{};
    found.fill(points.front());
    for (std::size_t i = 0; i < directions.size(); ++i)
        reach[i] = directions[i] * points.front();
    for (auto const& p : points)
        for (std::size_t i = 0; i < directions.size(); ++i) {
            double const along = directions[i] * p;
            found[i] = along > reach[i] ? p : found[i];
            reach[i] = along > reach[i] ? along : reach[i];
        }
    Points corners(found.begin(), found.end());
    corners.erase(std::unique(corners.begin(), corners.end()), corners.end());
    if (corners.size() > 1 && corners.back() == corners.front())
        corners.pop_back();
    return corners;
}

/// Drops points that lie strictly inside the polygon of the outermost ones: none of them is a vertex
/// of the hull. Points within rounding of its border stay.
void dropInner(Points& points)
{
    Points const corners = outermost(points);
    double extent = 0;
    for (auto const& corner : corners)
        extent = std::max(extent, std::max(std::fabs(corner.x() - corners.front().x()),
                                           std::fabs(corner.y() - corners.front().y())));
    double const rounding = 1e-14 * extent * extent;
    auto const inner = [&](qcVector<2> const& p) {
        for (std::size_t i = 0; i < corners.size(); ++i) {
            qcVector<2> const& next = corners[i + 1 < corners.size() ? i + 1 : 0];
            if (!((next - corners[i]).cross(p - corners[i]) > rounding))
                return false;
        }
        return true;
    };
    points.erase(std::remove_if(points.begin(), points.end(), inner), points.end());
}

/// The finite points, each once, from left to right; without some that are not on the hull.
Points sortedPoints(Points const& points)
{
    Points sorted;
    sorted.reserve(points.size());
    std::copy_if(points.begin(), points.end(), std::back_inserter(sorted), isFinite);
    if (sorted.size() > kMaxPlainPoints)
        dropInner(sorted);
    std::sort(sorted.begin(), sorted.end(), before);
    sorted.erase(std::unique(sorted.begin(), sorted.end()), sorted.end());
    return sorted;
}

/// The power of two that keeps products of coordinates, and their rounding errors, in range.
double safeScale(Points const& points)
{
    double largest = 0.0;
    for (auto const& p : points)
        largest = std::max(largest, std::max(std::fabs(p.x()), std::fabs(p.y())));
    if (largest == 0.0 || (largest > 0x1p-300 && largest < 0x1p+500))
        return 1.0;
    return std::ldexp(1.0, std::clamp(-std::ilogb(largest), -1022, 1022));
}

/// Appends `point` to the chain that begins at `start`, dropping what does not turn left to it.
void extend(Points& chain, std::size_t start, qcVector<2> const& point, double scale)
{
    while (chain.size() >= start + 2 &&
           qnInternal::orientation(chain[chain.size() - 2] * scale, chain.back() * scale,
                                   point * scale) <= 0)
        chain.pop_back();
    chain.push_back(point);
}

}  // namespace

void qfConvexHull(Points const& points, Points& hull)
{
    Points const sorted = sortedPoints(points);
    double const scale = safeScale(sorted);
    Points chain;
    for (auto const& p : sorted)
        extend(chain, 0, p, scale);
    if (sorted.size() > 1) {
        std::size_t const rightmost = chain.size() - 1;
        for (auto p = sorted.rbegin() + 1; p != sorted.rend(); ++p)
            extend(chain, rightmost, *p, scale);
        chain.pop_back();  // the first point again
    }
    hull.swap(chain);
}
