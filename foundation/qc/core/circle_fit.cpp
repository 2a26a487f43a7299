// Circle fit: an algebraic circle first, then steps to the least sum of squared distances.
#include <qc/core/circle_fit.h>
#include <qc/core/internal/fit_points.h>
#include <qc/core/matrix.h>

#include <cmath>
#include <cstddef>

namespace {

using Points = std::vector<qcVector<2>>;

/// A circle in normalised units, and how well it serves.
struct Candidate {
    qcVector<2> center;
    double radius = 0.0;
    double squares = 0.0;  // sum of the squared distances from the circle
};

/// The best radius for a centre, and the sum that comes with it.
Candidate around(Points const& points, qcVector<2> const& center)
{
    Candidate result;
    result.center = center;
    for (auto const& p : points)
        result.radius += p.distance(center);
    result.radius /= static_cast<double>(points.size());
    for (auto const& p : points) {
        double const off = p.distance(center) - result.radius;
        result.squares += off * off;
    }
    return result;
}

/// A symmetric system of two equations.
struct System {
    double xx = 0.0, xy = 0.0, yy = 0.0;
    qcVector<2> right;

    qcVector<2> solution(double damping) const
    {
        qcMatrix<2> const matrix(xx + damping, xy, xy, yy + damping);
        return matrix.inverse() * right;
    }
};

/// Centre of the circle for which the sum of (distance^2 - radius^2)^2 is least. Solved along the
/// axes of the scatter, where the equations fall apart and thin scatters lose no digits.
qcVector<2> algebraicCenter(Points const& points, qnInternal::FitUnits const& units)
{
    qcVector<2> sums;
    for (auto const& p : points) {
        double const square = p * p;
        sums += qcVector<2>(units.axis * p, units.axis.cross(p)) * square;
    }
    double const twice = 2.0 * static_cast<double>(points.size());
    double const along = sums.x() / (twice * units.alongSpread * units.alongSpread);
    double const across = sums.y() / (twice * units.acrossSpread * units.acrossSpread);
    return units.axis * along + qcVector<2>(-units.axis.y(), units.axis.x()) * across;
}

/// The linearised problem at a candidate, the radius eliminated.
System linearised(Points const& points, Candidate const& at)
{
    double const count = static_cast<double>(points.size());
    qcVector<2> mean;
    for (auto const& p : points)
        mean += (p - at.center).unit() / count;
    System system;
    for (auto const& p : points) {
        qcVector<2> const slope = (p - at.center).unit() - mean;
        double const off = p.distance(at.center) - at.radius;
        system.xx += slope.x() * slope.x();
        system.xy += slope.x() * slope.y();
        system.yy += slope.y() * slope.y();
        system.right += slope * off;
    }
    return system;
}

/// Damped least-squares steps until they no longer help.
Candidate refined(Points const& points, Candidate best)
{
    constexpr int kMostSteps = 100;     // about 10 are usual; a bound, not an aim
    constexpr double kSettled = 1e-15;  // a step this small, to the circle's size, is rounding
    double damping = 1e-12;
    for (int step = 0; step < kMostSteps; ++step) {
        System const system = linearised(points, best);
        double const weight = system.xx + system.yy;
        if (!(weight > 0.0))
            break;
        qcVector<2> move;
        try {
            move = system.solution(damping * weight);
        } catch (qcMathError::Singular const&) {
            damping = damping * 1e3;
            continue;
        }
        if (move.len() <= kSettled * (best.radius + best.center.len()))
            break;
        Candidate const next = around(points, best.center + move);
        if (next.squares < best.squares) {
            best = next;
            damping = damping > 1e-12 ? damping * 0.1 : damping;
        } else if (damping > 1e6) {
            break;
        } else {
            damping *= 1e2;
        }
    }
    return best;
}

struct Fit {
    qnInternal::FitUnits units;
    Points points;  // normalised
    Candidate best;

    qcCircle circle() const
    {
        return qcCircle(units.center + best.center * units.scale, best.radius * units.scale);
    }

    double residual() const
    {
        return std::sqrt(best.squares / static_cast<double>(points.size())) * units.scale;
    }

    /// In normalised units.
    std::vector<double> distances() const
    {
        std::vector<double> result;
        result.reserve(points.size());
        for (auto const& p : points)
            result.push_back(std::fabs(p.distance(best.center) - best.radius));
        return result;
    }
};

Fit fitted(Points const& points)
{
    constexpr std::size_t kFreedoms = 3;
    Fit fit;
    fit.units = qnInternal::fitUnits(points, kFreedoms);
    fit.points.reserve(points.size());
    for (auto const& p : points) {
        auto const at = fit.units.normalised(qnInternal::both(p.x()), qnInternal::both(p.y()));
        fit.points.emplace_back(at.x[0], at.y[0]);
    }
    fit.best = refined(fit.points, around(fit.points, algebraicCenter(fit.points, fit.units)));
    qcCircle const circle = fit.circle();
    if (!std::isfinite(circle.center().x()) || !std::isfinite(circle.center().y()) ||
        !std::isfinite(circle.radius()))
        throw qcFitError::NotFinite();
    return fit;
}

void check(qcCircleFitParams const& params)
{
    if (params.mode() != qcCircleFitDefs::eLeastSquares || !(params.usedShare() > 0.0) ||
        !(params.usedShare() <= 1.0) || !(params.largestResidual() >= 0.0))
        throw qcFitError::BadParams();
}

/// The number of points that `params` leave out; no more than there are.
std::size_t droppedPoints(qcCircleFitParams const& params, std::size_t count)
{
    auto const unused = static_cast<std::size_t>(
        std::floor((1.0 - params.usedShare()) * static_cast<double>(count)));
    return params.ignoredPoints() >= count - unused ? count : unused + params.ignoredPoints();
}

}  // namespace

void qfCircleFit(qcCircleFitParams const& params, Points const& points, qcCircleFitResults& results)
{
    check(params);
    Fit fit = fitted(points);
    if (auto const dropped = droppedPoints(params, points.size()))
        fit = fitted(qnInternal::withoutFurthest(points, fit.distances(), dropped));
    results.residual = qnInternal::acceptedResidual(fit.residual(), params.largestResidual());
    results.circle = fit.circle();
}
