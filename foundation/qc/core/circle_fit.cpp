// Circle fit: an algebraic circle first, then steps to the least sum of squared distances.
#include <qc/core/circle_fit.h>
#include <qc/core/internal/fit_points.h>
#include <qc/core/internal/point_sums.h>
#include <qc/core/matrix.h>

#include <array>
#include <cmath>
#include <cstddef>

namespace {

using Points = std::vector<qcVector<2>>;
using qnInternal::Pair;

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

/// A circle in normalised units, how well it serves, and the linearised problem there.
struct Candidate {
    qcVector<2> center;
    double radius = 0.0;
    double squares = 0.0;  // sum of the squared distances from the circle
    System system;         // for the move of the centre, the radius eliminated
};

/// Distance and direction from a place to two points; no direction to a point there.
struct Arms {
    Pair length;
    Pair x;
    Pair y;

    Arms(qcVector<2> const& from, Pair px, Pair py)
    {
        Pair const toX = px - from.x();
        Pair const toY = py - from.y();
        Pair const square = toX * toX + toY * toY;
        length = Pair{std::sqrt(square[0]), std::sqrt(square[1])};
        Pair const share = length > 0.0 ? 1.0 / length : Pair{};
        x = toX * share;
        y = toY * share;
    }
};

/// The circle of the best radius for a centre.
Candidate around(Points const& points, qcVector<2> const& center)
{
    Candidate result;
    result.center = center;
    double const share = 1.0 / static_cast<double>(points.size());
    auto const [lengths, x, y] = qnInternal::sumsOver<3>(points, [&](Pair px, Pair py) {
        Arms const to(center, px, py);
        return std::array{to.length, to.x, to.y};
    });
    double const radius = lengths * share;
    qcVector<2> const mean(x * share, y * share);
    auto const [squares, xx, xy, yy, rightX, rightY] =
        qnInternal::sumsOver<6>(points, [&](Pair px, Pair py) {
            Arms const to(center, px, py);
            Pair const off = to.length - radius;
            Pair const slopeX = to.x - mean.x();
            Pair const slopeY = to.y - mean.y();
            return std::array{off * off,       slopeX * slopeX, slopeX * slopeY,
                              slopeY * slopeY, slopeX * off,    slopeY * off};
        });
    result.radius = radius;
    result.squares = squares;
    result.system = {xx, xy, yy, {rightX, rightY}};
    return result;
}

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

/// Damped least-squares steps until they no longer help.
Candidate refined(Points const& points, Candidate best)
{
    constexpr int kMostSteps = 100;     // about 10 are usual; a bound, not an aim
    constexpr double kSettled = 1e-15;  // a step this small, to the circle's size, is rounding
    constexpr double kUnseen = 1e-14;   // and so is this share of the sum of squares
    double damping = 1e-12;
    double lastLength = HUGE_VAL;
    for (int step = 0; step < kMostSteps; ++step) {
        double const weight = best.system.xx + best.system.yy;
        if (!(weight > 0.0))
            break;
        qcVector<2> move;
        try {
            move = best.system.solution(damping * weight);
        } catch (qcMathError::Singular const&) {
            damping = damping * 1e3;
            continue;
        }
        double const length = move.len();
        if (length <= kSettled * (best.radius + best.center.len()))
            break;
        Candidate const next = around(points, best.center + move);
        // Where the sums cannot tell any more whether a step helps, its length does.
        bool const unseen = move * best.system.right <= kUnseen * best.squares;
        bool const better = unseen ? length < 0.5 * lastLength : next.squares < best.squares;
        lastLength = length;
        if (better) {
            best = next;
            damping = damping > 1e-12 ? damping * 0.1 : damping;
        } else if (unseen || damping > 1e6) {
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
