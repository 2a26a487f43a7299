// Places along a Hilbert curve, and sorting by them byte by byte.
#include "cntr/internal/curve_order.h"

#include <array>
#include <cstddef>

namespace qnInternal {

namespace {

/// How far along a Hilbert curve through a square of 256 x 256 a place lies: bit by bit from the top, a
/// quarter of the square says how the curve in it is turned (D. Hilbert, 1891).
std::uint32_t alongCurve(std::uint32_t x, std::uint32_t y)
{
    std::uint32_t along = 0;
    for (std::uint32_t shift = 8; shift-- > 0;) {
        std::uint32_t const right = x >> shift & 1;
        std::uint32_t const top = y >> shift & 1;
        along = along << 2 | right << 1 | (right ^ top);
        // In the lower quarters the axes change places, on the right both run backwards as well.
        std::uint32_t const lower = top - 1;  // all bits or none
        std::uint32_t const flip = lower & (0 - right);
        std::uint32_t const exchange = (x ^ y) & lower;
        x ^= exchange ^ flip;
        y ^= exchange ^ flip;
    }
    return along;
}

void sortByByte(std::vector<PlaceOnCurve>& places, unsigned shift)
{
    std::array<std::size_t, 257> begin{};
    auto const byteOf = [&](PlaceOnCurve const& place) { return place.along >> shift & 0xff; };
    for (auto const& place : places)
        ++begin[byteOf(place) + 1];
    for (std::size_t i = 1; i < begin.size(); ++i)
        begin[i] += begin[i - 1];
    std::vector<PlaceOnCurve> sorted(places.size());
    for (auto const& place : places)
        sorted[begin[byteOf(place)]++] = place;
    places.swap(sorted);
}

}  // namespace

CurveOverBox::CurveOverBox(Box const& root) : min_(root.min)
{
    qcVector<2> const extent = root.max - root.min;
    double const side = std::max(extent.x(), extent.y());
    constexpr double kSmallestSide = 1e-150;  // below, one cell holds all
    cellsPerUnit_ = side > kSmallestSide ? 255 / side : 0;
}

std::uint32_t CurveOverBox::along(Box const& box) const
{
    qcVector<2> const place = ((box.min - min_) + (box.max - min_)) * (0.5 * cellsPerUnit_);
    return alongCurve(static_cast<std::uint32_t>(place.x()), static_cast<std::uint32_t>(place.y()));
}

void sortAlongCurve(std::vector<PlaceOnCurve>& places)
{
    sortByByte(places, 0);
    sortByByte(places, 8);
}

}  // namespace qnInternal
