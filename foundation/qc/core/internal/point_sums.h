/// \file
/// Sums over points, two points at a time: each sum has two halves, over every other point.
#pragma once

#include <qc/core/internal/pair.h>
#include <qc/core/vector.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

namespace qnInternal {

/// The sums of kCount terms: terms(x, y) gives those of two points as an array of pairs. Summed in
/// blocks, so that the roundings of a million additions do not add up.
template <std::size_t kCount, class Terms>
std::array<double, kCount> sumsOver(std::vector<qcVector<2>> const& points, Terms const& terms)
{
    constexpr std::size_t kBlock = 128;
    std::array<double, kCount> sums{};
    std::size_t const even = points.size() / 2 * 2;
    for (std::size_t i = 0; i < even;) {
        std::array<Pair, kCount> halves{};
        for (std::size_t const end = std::min(i + kBlock, even); i < end; i += 2) {
            Pair const a = pairOf(points[i]);
            Pair const b = pairOf(points[i + 1]);
            std::array<Pair, kCount> const more = terms(Pair{a[0], b[0]}, Pair{a[1], b[1]});
            for (std::size_t k = 0; k < kCount; ++k)
                halves[k] += more[k];
        }
        for (std::size_t k = 0; k < kCount; ++k)
            sums[k] += halves[k][0] + halves[k][1];
    }
    if (even < points.size()) {
        auto const last = terms(both(points[even].x()), both(points[even].y()));
        for (std::size_t k = 0; k < kCount; ++k)
            sums[k] += last[k][0];
    }
    return sums;
}

}  // namespace qnInternal
