/// Two doubles in one register: twice the work an instruction, and the same bits on every machine.
#pragma once

#include <qc/core/vector.h>

namespace qnInternal {

/// Two doubles that are computed with together: x and y of a point, or one bound of two boxes.
using Pair = double __attribute__((vector_size(16)));
using PairMask = decltype(Pair{} < Pair{});  // all bits of a half, or none

inline Pair both(double value)
{
    return Pair{value, value};
}

inline Pair pairOf(qcVector<2> const& point)
{
    return Pair{point.x(), point.y()};
}

/// The smaller of each two numbers, that of `b` where one is NaN.
inline Pair smaller(Pair a, Pair b)
{
    return a < b ? a : b;
}

/// The larger of each two numbers, that of `b` where one is NaN.
inline Pair larger(Pair a, Pair b)
{
    return a > b ? a : b;
}

/// The squares of the distances of two points from a place, each as x * x + y * y.
inline Pair squaredDistances(qcVector<2> const& a, qcVector<2> const& b, qcVector<2> const& place)
{
    Pair const toA = pairOf(a) - pairOf(place);
    Pair const toB = pairOf(b) - pairOf(place);
    Pair const aa = toA * toA;
    Pair const bb = toB * toB;
    return Pair{aa[0], bb[0]} + Pair{aa[1], bb[1]};
}

}  // namespace qnInternal
