/// \file
/// Sums over points, two points at a time: each sum has two halves, over every other point.
#pragma once

#include <qc/core/internal/pair.h>
#include <qc/core/vector.h>

#include <array>
#include <cstddef>
#include <vector>

namespace qnInternal {

/// The sums of kCount terms: terms(x, y) gives those of two points as an array of pairs.
template <std::size_t kCount, class Terms>
std::array<double, kCount> sumsOver(std::vector<qcVector<2>> const& points, Terms const& terms)
{
    std::array<Pair, kCount> halves{};
    std::size_t i = 0;
    for (; i + 1 < points.size(); i += 2) {
        Pair const a = pairOf(points[i]);
        Pair const b = pairOf(points[i + 1]);
        std::array<Pair, kCount> const more = terms(Pair{a[0], b[0]}, Pair{a[1], b[1]});
        for (std::size_t k = 0; k < kCount; ++k)
            halves[k] += more[k];
    }
    std::array<Pair, kCount> last{};
    if (i < points.size())
        last = terms(both(points[i].x()), both(points[i].y()));
    std::array<double, kCount> sums{};
    for (std::size_t k = 0; k < kCount; ++k)
        sums[k] = halves[k][0] + halves[k][1] + last[k][0];
    return sums;
}

}  // namespace qnInternal
