// The seeded source of random numbers.
#include <qc/core/random.h>

#include <cmath>

qcRandomUniform::qcRandomUniform(long seed)
    : engine_(static_cast<std::mt19937_64::result_type>(seed))
{
}

double qcRandomUniform::next(double lo, double hi)
{
    // The distributions of the standard library differ between libraries and may give hi itself.
    double const part = static_cast<double>(engine_() >> 11) * 0x1p-53;  // in [0, 1)
    if (!(lo < hi))
        return lo;
    double const width = hi - lo;
    double const value = std::isfinite(width) ? lo + part * width : lo * (1.0 - part) + hi * part;
    return value < hi ? value : std::nextafter(hi, lo);
}
