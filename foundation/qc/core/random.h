/// \file
/// The seeded source of random numbers.
#pragma once

#include <qc/core/export.h>

#include <random>

/// Uniform pseudo-random numbers, the same for a seed on every machine. An object belongs to one
/// thread at a time.
class qcRandomUniform {
public:
    /// The sequence of `seed` from its beginning.
    QC_EXPORT explicit qcRandomUniform(long seed);

    /// The next value, uniform from lo up to but never hi, in steps of (hi - lo) / 2^53. An
    /// interval without inside (lo not below hi, or a bound that is NaN) gives lo. The bounds are finite.
    QC_EXPORT double next(double lo, double hi);

private:
    std::mt19937_64 engine_;
};
