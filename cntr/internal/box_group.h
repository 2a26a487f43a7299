/// Eight boxes side by side, so that a question is put to all of them at once.
#pragma once

#include "cntr/internal/box.h"

#include <qc/core/internal/pair.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <limits>

namespace qnInternal {

/// Whether the box of an edge overlaps `box`.
inline bool edgeOverlaps(qcVector<2> const& from, qcVector<2> const& to, Box const& box)
{
    return overlap(boxOfBoth(from, to), box);
}

/// One number for each of eight boxes, aligned for a Pair of them to be read by the instruction that
/// computes with it.
struct alignas(16) Eight : std::array<double, 8> {};

inline Pair pairAt(Eight const& numbers, std::size_t i)
{
    Pair pair;
    std::memcpy(&pair, __builtin_assume_aligned(&numbers[2 * i], alignof(Eight)), sizeof pair);
    return pair;
}

/// Bit k is that of number k where test(i) gives the masks of the numbers 2 i and 2 i + 1.
template <class Test>
unsigned eightBits(Test const& test)
{
    unsigned bits = 0;
    for (std::size_t i = 0; i < 4; ++i)
        bits |= bitsOf(test(i)) << (2 * i);
    return bits;
}

/// Calls visit(k) for every bit k, ascending.
template <class Visit>
void forEachBit(unsigned bits, Visit const& visit)
{
    for (; bits != 0; bits &= bits - 1)
        visit(static_cast<std::size_t>(__builtin_ctz(bits)));
}

/// Whether test(k) holds for some bit k; asked in ascending order, up to the first.
template <class Test>
bool anyBit(unsigned bits, Test const& test)
{
    for (; bits != 0; bits &= bits - 1)
        if (test(static_cast<std::size_t>(__builtin_ctz(bits))))
            return true;
    return false;
}

/// The bounds of a box, each twice: to be compared with those of two others at once.
struct TwiceBox {
    Pair minX;
    Pair minY;
    Pair maxX;
    Pair maxY;

    explicit TwiceBox(Box const& box)
        : minX(both(box.min.x())), minY(both(box.min.y())), maxX(both(box.max.x())),
          maxY(both(box.max.y()))
    {
    }
};

/// Up to eight boxes. Places beyond the last one hold a box that overlaps none.
struct BoxGroup {
    static constexpr std::size_t kSize = 8;

    Eight minX;
    Eight minY;
    Eight maxX;
    Eight maxY;

    BoxGroup()
    {
        constexpr double kFar = std::numeric_limits<double>::infinity();
        minX.fill(kFar);
        minY.fill(kFar);
        maxX.fill(-kFar);
        maxY.fill(-kFar);
    }

    Box box(std::size_t i) const { return {{minX[i], minY[i]}, {maxX[i], maxY[i]}}; }

    void set(std::size_t i, Box const& box)
    {
        minX[i] = box.min.x();
        minY[i] = box.min.y();
        maxX[i] = box.max.x();
        maxY[i] = box.max.y();
    }

    /// The box of all.
    Box all() const
    {
        return {{*std::min_element(minX.begin(), minX.end()),
                 *std::min_element(minY.begin(), minY.end())},
                {*std::max_element(maxX.begin(), maxX.end()),
                 *std::max_element(maxY.begin(), maxY.end())}};
    }

    /// Makes box i that of all boxes of another group.
    void enclose(std::size_t i, BoxGroup const& below) { set(i, below.all()); }

    /// Which boxes share a point with `other`.
    unsigned overlapping(TwiceBox const& other) const
    {
        return eightBits([&](std::size_t i) {
            return bothHold(bothHold(pairAt(maxX, i) >= other.minX, pairAt(minX, i) <= other.maxX),
                            bothHold(pairAt(maxY, i) >= other.minY, pairAt(minY, i) <= other.maxY));
        });
    }
    unsigned overlapping(Box const& other) const { return overlapping(TwiceBox(other)); }
};

}  // namespace qnInternal
