// Runs that the points come in are merged two by two; points in no order are dealt out by x.
#include <qc/core/internal/sort_points.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace qnInternal {

namespace {

using Points = std::vector<qcVector<2>>;
using Place = Points::iterator;

/// Up to so many points each is put in its place among those before it.
constexpr std::ptrdiff_t kMaxInserted = 24;

/// Where the points come in more runs, dealing them out is faster than merging.
constexpr std::size_t kMaxRuns = 16;

constexpr std::size_t kPointsPerBucket = 4;

void sortFew(Place begin, Place end)
{
    if (end - begin > kMaxInserted) {
        std::stable_sort(begin, end, isBefore);
        return;
    }
    for (Place next = begin; next != end; ++next) {
        qcVector<2> const point = *next;
        Place place = next;
        for (; place != begin && isBefore(point, place[-1]); --place)
            *place = place[-1];
        *place = point;
    }
}

/// Deals the points out to buckets of equal width, which are then sorted one by one.
void sortByBuckets(Points& points)
{
    auto const ends = std::minmax_element(points.begin(), points.end(), isBefore);
    double const low = ends.first->x();
    std::size_t const count = points.size() / kPointsPerBucket;
    double const bucketsPerUnit = static_cast<double>(count) / (ends.second->x() - low);
    if (!(bucketsPerUnit > 0) || !std::isfinite(bucketsPerUnit)) {
        std::stable_sort(points.begin(), points.end(), isBefore);
        return;
    }
    auto const bucketOf = [&](qcVector<2> const& p) {
        return std::min(static_cast<std::size_t>((p.x() - low) * bucketsPerUnit), count - 1);
    };
    std::vector<std::size_t> next(count + 1);  // of each bucket the place of its next point
    for (auto const& p : points)
        ++next[bucketOf(p) + 1];
    for (std::size_t bucket = 1; bucket <= count; ++bucket)
        next[bucket] += next[bucket - 1];
    Points sorted(points.size());
    for (auto const& p : points)
        sorted[next[bucketOf(p)]++] = p;
    Place begin = sorted.begin();
    for (std::size_t bucket = 0; bucket < count; ++bucket) {
        Place const end = sorted.begin() + static_cast<std::ptrdiff_t>(next[bucket]);
        sortFew(begin, end);
        begin = end;
    }
    points.swap(sorted);
}

/// The end of the run at `begin`; one to the left is turned round, and has no equal points.
Place endOfRun(Place begin, Place end)
{
    Place next = begin + 1;
    if (next == end || !isBefore(*next, *begin)) {
        while (next != end && !isBefore(*next, next[-1]))
            ++next;
        return next;
    }
    while (next != end && isBefore(*next, next[-1]))
        ++next;
    std::reverse(begin, next);
    return next;
}

}  // namespace

void sortFromLeft(Points& points)
{
    if (static_cast<std::ptrdiff_t>(points.size()) <= kMaxInserted)
        return sortFew(points.begin(), points.end());
    std::array<Place, kMaxRuns + 1> bounds;
    bounds[0] = points.begin();
    std::size_t runs = 0;
    for (; bounds[runs] != points.end(); ++runs) {
        if (runs == kMaxRuns)
            return sortByBuckets(points);
        bounds[runs + 1] = endOfRun(bounds[runs], points.end());
    }
    for (; runs > 1; runs = (runs + 1) / 2)
        for (std::size_t i = 0; i < runs; i += 2) {
            std::size_t const end = std::min(i + 2, runs);
            std::inplace_merge(bounds[i], bounds[i + 1], bounds[end], isBefore);
            bounds[i / 2 + 1] = bounds[end];
        }
}

}  // namespace qnInternal
