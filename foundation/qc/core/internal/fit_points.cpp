// Normalising, counting and choosing the points of a fit.
#include <qc/core/fit_error.h>
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

/// Middle, half extent and rounding of the box around the points.
void fitBox(Points const& points, qnInternal::NormalisedPoints& result)
{
    qnInternal::Pair lowest = qnInternal::pairOf(points.front());
    qnInternal::Pair highest = lowest;
    for (auto const& p : points) {
        lowest = qnInternal::smaller(qnInternal::pairOf(p), lowest);
        highest = qnInternal::larger(qnInternal::pairOf(p), highest);
    }
    qcVector<2> const low(lowest[0], lowest[1]);
    qcVector<2> const high(highest[0], highest[1]);
    // Halves first: the sum or difference of two large corners may overflow.
    result.center = low * 0.5 + high * 0.5;
    qcVector<2> const half = high * 0.5 - low * 0.5;
    double const extent = std::max(half.x(), half.y());
    if (!(extent > 0.0))
        throw qcFitError::Degenerate();
    // A power of two: bringing the points to it rounds nothing.
    result.scale = std::ldexp(1.0, std::min(std::ilogb(extent), 1022));
    double const largest = std::max(std::max(std::fabs(low.x()), std::fabs(high.x())),
                                    std::max(std::fabs(low.y()), std::fabs(high.y())));
    result.rounding = std::numeric_limits<double>::epsilon() * (largest / result.scale);
}

void findSpread(qnInternal::NormalisedPoints& result)
{
    using qnInternal::Pair;
    auto const [xx, xy, yy] = qnInternal::sumsOver<3>(result.points, [](Pair x, Pair y) {
        return std::array{x * x, x * y, y * y};
    });
    result.axis = qcVector<2>(1.0, qcRadian(0.5 * std::atan2(2.0 * xy, xx - yy)));
    // Summed anew along the axes: from xx, xy and yy the smaller spread would be all rounding.
    auto const [along, across] =
        qnInternal::sumsOver<2>(result.points, [axis = result.axis](Pair x, Pair y) {
            Pair const u = axis.x() * x + axis.y() * y;
            Pair const v = axis.x() * y - axis.y() * x;
            return std::array{u * u, v * v};
        });
    double const count = static_cast<double>(result.points.size());
    result.alongSpread = std::sqrt(along / count);
    result.acrossSpread = std::sqrt(across / count);
}

}  // namespace

void qnInternal::requireFinite(Points const& points)
{
    for (auto const& p : points) {
        if (!std::isfinite(p.x()) || !std::isfinite(p.y()))
            throw qcFitError::NotFinite();
    }
}

void qnInternal::requireDistinct(Points const& points, std::size_t needed)
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

qnInternal::NormalisedPoints qnInternal::normalise(Points const& points)
{
    NormalisedPoints result;
    fitBox(points, result);
    // Powers of two, so that nothing is rounded; the second one alone may be beyond the largest double.
    double const unit = 0.5 / result.scale;
    double const units = std::isfinite(unit) ? unit : 0x1p+1000;
    double const more = std::isfinite(unit) ? 4.0 : (2.0 / 0x1p+1000) / result.scale;
    result.points.resize(points.size());
    qcVector<2> const halfCenter = result.center * 0.5;
    for (std::size_t i = 0; i < points.size(); ++i)
        result.points[i] = (points[i] * 0.5 - halfCenter) * units * more;
    auto const [x, y] = sumsOver<2>(result.points, [](Pair px, Pair py) {
        return std::array{px, py};
    });
    qcVector<2> const mean = qcVector<2>(x, y) / static_cast<double>(points.size());
    for (auto& p : result.points)
        p -= mean;
    result.center += mean * result.scale;
    findSpread(result);
    if (!(result.acrossSpread > kFlat * result.alongSpread + kFlatRoundings * result.rounding))
        throw qcFitError::Degenerate();
    return result;
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

double qnInternal::acceptedResidual(std::vector<double> const& distances, double largest)
{
    double const unit = *std::max_element(distances.begin(), distances.end());
    double residual = 0.0;
    if (unit > 0.0) {
        double squares = 0.0;
        for (double const distance : distances)
            squares += (distance / unit) * (distance / unit);
        residual = unit * std::sqrt(squares / static_cast<double>(distances.size()));
    }
    if (!std::isfinite(residual))
        throw qcFitError::NotFinite();
    if (residual > largest)
        throw qcFitError::ResidualTooLarge();
    return residual;
}
