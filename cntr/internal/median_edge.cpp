// A few of the lengths tell between which two the median probably is; then only those between are sorted out.
#include "cntr/internal/median_edge.h"

#include "cntr/internal/edge_walk.h"

#include <algorithm>
#include <array>
#include <memory>

namespace qnInternal {

namespace {

/// Of fewer edges the lengths are sorted out as soon as sampled (bench/cleaning_bench.cpp).
constexpr std::size_t kManyEdges = 256;

constexpr std::size_t kSample = 64;

/// So far from the middle of a sample, the median of all is missed once in a hundred times.
constexpr std::size_t kAside = 10;

/// From the longest on.
constexpr auto comesBefore = [](double a, double b) { return a > b || (a == a && b != b); };

/// What stands at a place among numbers once they are in order.
double atPlace(double* begin, double* end, std::size_t place)
{
    std::nth_element(begin, begin + place, end, comesBefore);
    return begin[place];
}

struct Range {
    double longest;
    double shortest;
};

/// The range about the median of some lengths, evenly taken.
Range likelyRange(std::vector<qcVector<2>> const& points, bool closed)
{
    std::size_t const count = edgeCount(points.size(), closed);
    std::array<double, kSample> sample{};
    for (std::size_t i = 0; i < kSample; ++i) {
        std::size_t const k = i * count / kSample;
        sample[i] = edgeStart(points, closed, k).distance(edgeEnd(points, closed, k));
    }
    std::sort(sample.begin(), sample.end(), comesBefore);
    return {sample[kSample / 2 - kAside], sample[kSample / 2 + kAside]};
}

}  // namespace

double medianEdgeLength(std::vector<qcVector<2>> const& points, bool closed)
{
    std::size_t const count = edgeCount(points.size(), closed);
    // Not initialised: mostly few of the places are used.
    std::unique_ptr<double[]> const kept(new double[count]);
    double* end = kept.get();
    if (count >= kManyEdges) {
        Range const range = likelyRange(points, closed);
        std::size_t longer = 0;
        // Without branches, since lengths come as they like.
        forEachEdgeLength(points, closed, [&](double length) {
            longer += length > range.longest ? 1 : 0;
            *end = length;
            bool const notLonger = length <= range.longest;
            bool const notShorter = length >= range.shortest;
            end += static_cast<std::ptrdiff_t>(notLonger) & static_cast<std::ptrdiff_t>(notShorter);
        });
        auto const between = static_cast<std::size_t>(end - kept.get());
        if (longer <= count / 2 && count / 2 - longer < between)
            return atPlace(kept.get(), end, count / 2 - longer);
        end = kept.get();
    }
    forEachEdgeLength(points, closed, [&](double length) { *end++ = length; });
    return atPlace(kept.get(), end, count / 2);
}

}  // namespace qnInternal
