// Normalising, counting and choosing the points of a fit.
#include <qc/core/fit_error.h>
#include <qc/core/internal/extremes.h>
#include <qc/core/internal/fit_points.h>
#include <qc/core/internal/point_sums.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace {

using Points = std::vector<qcVector<2>>;

/// Points thinner than this share of their length lie on a line: no curve can be told from a line
/// with doubles any more.
constexpr double kFlat = 1e-10;

/// Points thinner than this many roundings of their coordinates lie on a line as well.
constexpr double kFlatRoundings = 8.0;

/// A smaller spread than this share of the larger is all rounding where it is found from sums over
/// x and y: it and the axis are summed anew.
constexpr double kSureShare = 1e-3;

using qnInternal::Pair;

/// Scale, middle and rounding, from the box around the points.
void setScale(qnInternal::Extremes const& extremes, qnInternal::FitUnits& units)
{
    // Halves first: the sum or difference of two large corners may overflow.
    Pair const middle = extremes.low * 0.5 + extremes.high * 0.5;
    Pair const half = extremes.high * 0.5 - extremes.low * 0.5;
    double const extent = std::max(half[0], half[1]);
    if (!(extent > 0.0))
        throw qcFitError::Degenerate();
    // A power of two: bringing the points to it rounds nothing. Its inverse is a double as well.
    constexpr int kLargest = 1022;
    units.scale = std::ldexp(1.0, std::clamp(std::ilogb(extent), -kLargest, kLargest));
    units.unit = 1.0 / units.scale;
    units.middle = qcVector<2>(middle[0], middle[1]) * units.unit;
    Pair const size = qnInternal::larger(-extremes.low, extremes.high);
    units.rounding =
        std::numeric_limits<double>::epsilon() * std::max(size[0], size[1]) * units.unit;
}

/// Second moments about the mean.
struct Scatter {
    double xx, xy, yy;
};

/// The axis of a scatter and the spread along it; the square of the other spread.
double setAxis(Scatter const& scatter, qnInternal::FitUnits& units)
{
    double const difference = scatter.xx - scatter.yy;
    double const sum = scatter.xx + scatter.yy;
    double const distance = std::hypot(difference, 2.0 * scatter.xy);
    units.axis = qcVector<2>(1.0, qcRadian(0.5 * std::atan2(2.0 * scatter.xy, difference)));
    units.alongSpread = std::sqrt(0.5 * (sum + distance));
    return 0.5 * (sum - distance);
}

/// Mean, axis and spreads.
void setSpread(Points const& points, qnInternal::FitUnits& units)
{
    double const share = 1.0 / static_cast<double>(points.size());
    auto const [x, y, xx, xy, yy] = qnInternal::sumsOver<5>(points, [&](Pair px, Pair py) {
        auto const at = units.fromMiddle(px, py);
        return std::array{at.x, at.y, at.x * at.x, at.x * at.y, at.y * at.y};
    });
    units.mean = qcVector<2>(x, y) * share;
    auto const& m = units.mean;
    double const across = setAxis(
        {xx * share - m.x() * m.x(), xy * share - m.x() * m.y(), yy * share - m.y() * m.y()},
        units);
    if (across > kSureShare * kSureShare * share * (xx + yy)) {
        units.acrossSpread = std::sqrt(across);
        return;
    }
    auto const [aa, ab, bb] = qnInternal::sumsOver<3>(points, [&](Pair px, Pair py) {
        auto const at = units.normalised(px, py);
        return std::array{at.x * at.x, at.x * at.y, at.y * at.y};
    });
    setAxis({aa * share, ab * share, bb * share}, units);
    auto const [uu, vv] = qnInternal::sumsOver<2>(points, [&](Pair px, Pair py) {
        auto const at = units.normalised(px, py);
        Pair const u = units.axis.x() * at.x + units.axis.y() * at.y;
        Pair const v = units.axis.x() * at.y - units.axis.y() * at.x;
        return std::array{u * u, v * v};
    });
    units.alongSpread = std::sqrt(uu * share);
    units.acrossSpread = std::sqrt(vv * share);
}

void requireDistinct(Points const& points, std::size_t needed)
{
    Points distinct;
    for (auto const& p : points) {
        if (std::find(distinct.begin(), distinct.end(), p) == distinct.end())
            distinct.push_back(p);
        if (distinct.size() >= needed)
            return;
    }
    throw qcFitError::TooFewPoints();
}

}  // namespace

qnInternal::FitUnits qnInternal::fitUnits(Points const& points, std::size_t needed)
{
    if (points.empty())
        throw qcFitError::TooFewPoints();
    Extremes const extremes = extremesOf(points);
    if (!extremes.areFinite())
        throw qcFitError::NotFinite();
    requireDistinct(points, needed);
    FitUnits units;
    setScale(extremes, units);
    setSpread(points, units);
    if (!(units.acrossSpread > kFlat * units.alongSpread + kFlatRoundings * units.rounding))
        throw qcFitError::Degenerate();
    units.center = (units.middle + units.mean) * units.scale;
    return units;
}

std::vector<qcVector<2>> qnInternal::withoutFurthest(Points const& points,
                                                     std::vector<double> const& distances,
                                                     std::size_t dropped)
{
    if (dropped >= points.size())
        throw qcFitError::TooFewPoints();
    std::vector<std::size_t> order(points.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return distances[a] < distances[b]; });
    order.resize(points.size() - dropped);
    std::sort(order.begin(), order.end());
    Points kept;
    kept.reserve(order.size());
    for (std::size_t const index : order)
        kept.push_back(points[index]);
    return kept;
}

double qnInternal::acceptedResidual(double residual, double largest)
{
    if (!std::isfinite(residual))
        throw qcFitError::NotFinite();
    if (residual > largest)
        throw qcFitError::ResidualTooLarge();
    return residual;
}
