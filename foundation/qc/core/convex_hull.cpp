// Convex hull: lower and upper chain over the sorted points, each turn decided exactly.
#include <qc/core/convex_hull.h>
#include <qc/core/internal/orientation.h>

#include <algorithm>
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

/// The finite points, each once, from left to right.
Points sortedPoints(Points const& points)
{
    Points sorted;
    sorted.reserve(points.size());
    std::copy_if(points.begin(), points.end(), std::back_inserter(sorted), isFinite);
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
