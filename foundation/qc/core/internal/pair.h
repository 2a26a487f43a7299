/// Two doubles in one register: twice the work an instruction, and the same bits on every machine.
#pragma once

#include <qc/core/vector.h>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace qnInternal {

/// Two doubles that are computed with together: x and y of a point, or one bound of two boxes.
using Pair = double __attribute__((vector_size(16)));
using PairMask = decltype(Pair{} < Pair{});  // all bits of a half, or none

/// Bit 0 for the first half of a mask, bit 1 for the second.
inline unsigned bitsOf(PairMask mask)
{
#ifdef __SSE2__
    return static_cast<unsigned>(_mm_movemask_pd(reinterpret_cast<__m128d>(mask)));
#else
    return static_cast<unsigned>(mask[0] & 1) | static_cast<unsigned>(mask[1] & 2);
#endif
}

/// Where both masks have all bits. What & makes of two comparisons takes GCC the halves one by one, unless
/// it may use SSE4.
inline PairMask bothHold(PairMask a, PairMask b)
{
#ifdef __SSE2__
    return reinterpret_cast<PairMask>(
        _mm_and_pd(reinterpret_cast<__m128d>(a), reinterpret_cast<__m128d>(b)));
#else
    return a & b;
#endif
}

/// Where one of the masks has all bits.
inline PairMask eitherHolds(PairMask a, PairMask b)
{
#ifdef __SSE2__
    return reinterpret_cast<PairMask>(
        _mm_or_pd(reinterpret_cast<__m128d>(a), reinterpret_cast<__m128d>(b)));
#else
    return a | b;
#endif
}

inline Pair both(double value)
{
    return Pair{value, value};
}

inline Pair pairOf(qcVector<2> const& point)
{
    return Pair{point.x(), point.y()};
}

/// The smaller of each two numbers, that of `b` where one is NaN or both are 0.
inline Pair smaller(Pair a, Pair b)
{
#ifdef __SSE2__
    // One instruction, where the compiler makes up to three of the comparison.
    return reinterpret_cast<Pair>(
        _mm_min_pd(reinterpret_cast<__m128d>(a), reinterpret_cast<__m128d>(b)));
#else
    return a < b ? a : b;
#endif
}

/// The larger of each two numbers, that of `b` where one is NaN or both are 0.
inline Pair larger(Pair a, Pair b)
{
#ifdef __SSE2__
    return reinterpret_cast<Pair>(
        _mm_max_pd(reinterpret_cast<__m128d>(a), reinterpret_cast<__m128d>(b)));
#else
    return a > b ? a : b;
#endif
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
