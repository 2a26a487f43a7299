// Ellipse fit: least squares of the quadratic form under the condition that makes it an ellipse.
//
// The problem does not change when the plane is mapped by any affine transform, so it is solved
// where the points have about mean (0, 0) and spread 1 in every direction: there sums lose no digits.
// The linear and constant terms follow from the quadratic ones, and a 3x3 problem is left.
//
// Points are brought there anew in every pass over them: that takes less time than keeping copies.
#include <qc/core/ellipse_fit.h>
#include <qc/core/internal/fit_points.h>
#include <qc/core/internal/point_sums.h>
#include <qc/core/internal/symmetric3.h>
#include <qc/core/matrix.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>

namespace {

using Points = std::vector<qcVector<2>>;
using qnInternal::Matrix3;
using qnInternal::Pair;
using qnInternal::PairPoint;
using qnInternal::Vector3;

/// Two eigenvalues of the scatter below this share of the largest: more than one curve fits.
constexpr double kSeveralCurves = 1e-13;

/// A form closer than this to the border between ellipses and hyperbolas is a parabola: data on an
/// exact one come out at about 1e-8, the root of a rounding.
constexpr double kParabola = 1e-7;

/// a x^2 + b xy + c y^2 + d x + e y + f.
struct Form {
    double a, b, c, d, e, f;

    double at(qcVector<2> const& p) const
    {
        return (a * p.x() + b * p.y() + d) * p.x() + (c * p.y() + e) * p.y() + f;
    }
};

/// Coordinates from the mean of the points, along and across their axis, each in a unit of its own.
class AxisFrame {
public:
    AxisFrame(qnInternal::FitUnits const& units, double alongUnit, double acrossUnit)
        : units_(units), along_(units.axis / alongUnit),
          across_(qcVector<2>(-units.axis.y(), units.axis.x()) / acrossUnit)
    {
    }

    PairPoint at(Pair px, Pair py) const
    {
        auto const [x, y] = units_.normalised(px, py);
        return {along_.x() * x + along_.y() * y, across_.x() * x + across_.y() * y};
    }

private:
    qnInternal::FitUnits units_;
    qcVector<2> along_;
    qcVector<2> across_;
};

/// The frame in which points of these units have mean (0, 0) and spread 1 in every direction.
AxisFrame whiteFrame(qnInternal::FitUnits const& units)
{
    return {units, units.alongSpread, units.acrossSpread};
}

/// The quadratic terms of two points as x^2 + y^2, x^2 - y^2, 2xy: in them the condition for an
/// ellipse reads s0^2 > s1^2 + s2^2 for the coefficients s.
std::array<Pair, 3> quadratic(Pair x, Pair y)
{
    return {x * x + y * y, x * x - y * y, 2.0 * x * y};
}

/// Best linear functions for the quadratic terms, and the scatter of what they leave.
struct Reduced {
    std::array<Vector3, 3> linear;  // of each term: x, y and constant share
    Matrix3 scatter{};
    double squares;  // of the three terms, the mean
};

/// The means of x^i y^k over the points, i + k from 1 to 4: first by degree, then by k.
using Moments = std::array<double, 14>;

Moments momentsOf(Points const& points, AxisFrame const& frame)
{
    auto means = qnInternal::sumsOver<14>(points, [&](Pair px, Pair py) {
        auto const [x, y] = frame.at(px, py);
        Pair const xx = x * x;
        Pair const xy = x * y;
        Pair const yy = y * y;
        return std::array{x,      y,      xx,      xy,      yy,      xx * x,  xx * y,
                          x * yy, yy * y, xx * xx, xx * xy, xx * yy, xy * yy, yy * yy};
    });
    for (double& mean : means)
        mean /= static_cast<double>(points.size());
    return means;
}

/// Whether points with these moments have about mean (0, 0) and spread 1; not where one is NaN.
bool aboutWhite(Moments const& moments)
{
    constexpr double kFurthest = 0.5;  // so that the sums lose no more than a digit
    double off = 0.0;
    for (std::size_t i = 0; i < 5; ++i)
        off += std::fabs(moments[i] - (i == 2 || i == 4 ? 1.0 : 0.0));
    return off < kFurthest;
}

/// The scatter as a difference: it is right to a rounding of `squares`.
Reduced reduced(Moments const& moments)
{
    auto const [x, y, xx, xy, yy, xxx, xxy, xyy, yyy, xxxx, xxxy, xxyy, xyyy, yyyy] = moments;
    Vector3 const terms{xx + yy, xx - yy, 2.0 * xy};
    qcVector<2> const mean(x, y);
    std::array const shares{qcVector<2>(xxx + xyy, xxy + yyy) - mean * terms[0],
                            qcVector<2>(xxx - xyy, xxy - yyy) - mean * terms[1],
                            qcVector<2>(2.0 * xxy, 2.0 * xyy) - mean * terms[2]};
    auto const inverse = qcMatrix<2>(xx - x * x, xy - x * y, xy - x * y, yy - y * y).inverse();
    Reduced result{};
    Matrix3& rest = result.scatter;
    rest[0] = {xxxx + 2.0 * xxyy + yyyy, xxxx - yyyy, 2.0 * (xxxy + xyyy)};
    rest[1] = {rest[0][1], xxxx - 2.0 * xxyy + yyyy, 2.0 * (xxxy - xyyy)};
    rest[2] = {rest[0][2], rest[1][2], 4.0 * xxyy};
    result.squares = rest[0][0] + rest[1][1] + rest[2][2];
    for (std::size_t i = 0; i < 3; ++i) {
        qcVector<2> const slope = inverse * shares[i];
        result.linear[i] = {slope.x(), slope.y(), terms[i] - slope * mean};
        for (std::size_t k = 0; k < 3; ++k)
            rest[i][k] -= terms[i] * terms[k] + slope * shares[k];
    }
    return result;
}

/// The scatter summed from what the linear functions leave, right to a rounding of its own.
Matrix3 scatterOfRest(Points const& points, AxisFrame const& white,
                      std::array<Vector3, 3> const& linear)
{
    auto sums = qnInternal::sumsOver<6>(points, [&](Pair px, Pair py) {
        auto const [x, y] = white.at(px, py);
        auto rest = quadratic(x, y);
        for (std::size_t k = 0; k < 3; ++k)
            rest[k] -= linear[k][0] * x + linear[k][1] * y + linear[k][2];
        return std::array{rest[0] * rest[0], rest[0] * rest[1], rest[0] * rest[2],
                          rest[1] * rest[1], rest[1] * rest[2], rest[2] * rest[2]};
    });
    for (double& sum : sums)
        sum /= static_cast<double>(points.size());
    auto const [aa, ab, ac, bb, bc, cc] = sums;
    return {{{aa, ab, ac}, {ab, bb, bc}, {ac, bc, cc}}};
}

/// Where the middle eigenvalue of the scatter is a smaller share of the squares of the quadratic
/// terms, the scatter is summed anew: the form depends on its small ones. Points all around an
/// ellipse have a quarter, half of one an eighth, two lines a sixth.
constexpr double kMostCancelled = 0.2;

/// The s with s0^2 - s1^2 - s2^2 > 0 for which s'Ss / (s0^2 - s1^2 - s2^2) is least.
///
/// With S = E'E, E = sqrt(values) * eigenvectors of S and w = E s, that is the eigenvector of the only
/// positive eigenvalue of E^-T J E^-1, J = diag(1, -1, -1).
Vector3 leastForm(qnInternal::Eigen3 const& eigen, double rounding)
{
    double const largest = eigen.values[2];
    // Small moves of the points enter by their square.
    double const unsure = kSeveralCurves + 100.0 * rounding * rounding;
    if (!(eigen.values[1] > unsure * largest))
        throw qcFitError::Degenerate();
    // Exact data leave an eigenvalue of 0 or a rounding below it; this one keeps the inverse.
    double const least = std::numeric_limits<double>::epsilon() * largest;
    Matrix3 inverse{};  // rows: eigenvectors over the roots of their values
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t k = 0; k < 3; ++k)
            inverse[i][k] = eigen.vectors[i][k] / std::sqrt(std::max(eigen.values[i], least));
    Matrix3 condition{};
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t k = 0; k < 3; ++k)
            condition[i][k] = inverse[i][0] * inverse[k][0] - inverse[i][1] * inverse[k][1] -
                              inverse[i][2] * inverse[k][2];
    auto const best = qnInternal::eigenOfSymmetric(condition).vectors[2];
    Vector3 form{};
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t k = 0; k < 3; ++k)
            form[k] += best[i] * inverse[i][k];
    return form;
}

/// Units in which the points are about white, and their moments there.
struct Framed {
    qnInternal::FitUnits units;
    Moments moments;
};

Framed framed(Points const& points)
{
    constexpr std::size_t kFreedoms = 5;
    constexpr std::size_t kSample = 128;        // serves points in no order, too, mostly
    constexpr std::size_t kMany = 4 * kSample;  // of fewer, the sample saves little time
    if (points.size() >= kMany) {
        // The units of a sample that serve all points save two passes over these.
        Points sample;
        sample.reserve(kSample);
        for (std::size_t i = 0; i < kSample; ++i)
            sample.push_back(points[points.size() * i / kSample]);
        try {
            auto const units = qnInternal::fitUnits(sample, kFreedoms);
            auto const moments = momentsOf(points, whiteFrame(units));
            if (aboutWhite(moments))
                return {units, moments};
        } catch (qcFitError::Errors const&) {
            // What the sample lacks, the points may have.
        }
    }
    auto const units = qnInternal::fitUnits(points, kFreedoms);
    return {units, momentsOf(points, whiteFrame(units))};
}

/// The best form in the white frame, normalised so that it is negative inside.
Form fittedForm(Points const& points, Framed const& framed)
{
    auto const& units = framed.units;
    Reduced const rest = reduced(framed.moments);
    auto eigen = qnInternal::eigenOfSymmetric(rest.scatter);
    if (!(eigen.values[1] > kMostCancelled * rest.squares))
        eigen = qnInternal::eigenOfSymmetric(scatterOfRest(points, whiteFrame(units), rest.linear));
    Vector3 s = leastForm(eigen, units.rounding / units.acrossSpread);
    double const length = std::copysign(std::hypot(s[0], std::hypot(s[1], s[2])), s[0]);
    for (double& term : s)
        term /= length;
    if (!(s[0] * s[0] - s[1] * s[1] - s[2] * s[2] > kParabola))
        throw qcFitError::NotAnEllipse();
    Form form{s[0] + s[1], 2.0 * s[2], s[0] - s[1], 0.0, 0.0, 0.0};
    for (std::size_t k = 0; k < 3; ++k) {
        form.d -= s[k] * rest.linear[k][0];
        form.e -= s[k] * rest.linear[k][1];
        form.f -= s[k] * rest.linear[k][2];
    }
    return form;
}

/// An ellipse as the image of the unit circle: center + axes * u.
struct Image {
    qcVector<2> center;
    qcMatrix<2> axes;
};

Image imageOf(Form const& form)
{
    // The determinant is well away from 0: that was the test for an ellipse.
    double const determinant = 4.0 * form.a * form.c - form.b * form.b;
    qcVector<2> const center((form.b * form.e - 2.0 * form.c * form.d) / determinant,
                             (form.b * form.d - 2.0 * form.a * form.e) / determinant);
    double const depth = -form.at(center);
    if (!(depth > 0.0))
        throw qcFitError::NotAnEllipse();
    double const a = form.a / depth;
    double const b = form.b / depth;
    double const c = form.c / depth;
    // Lower triangular L with L'QL = 1 for Q = [a b/2; b/2 c].
    double const across = std::sqrt(c - b * b / (4.0 * a));
    double const along = std::sqrt(a);
    return {center, qcMatrix<2>(1.0 / along, -b / (2.0 * a * across), 0.0, 1.0 / across)};
}

/// Radii and direction of the longer axis of an image of the unit circle: one rotation makes the
/// columns orthogonal, which keeps the digits of a short axis.
qcEllipse::qcEllipseGeom principal(Image const& image, qcRadian reference)
{
    qcVector<2> first(image.axes.element(0, 0), image.axes.element(1, 0));
    qcVector<2> second(image.axes.element(0, 1), image.axes.element(1, 1));
    double const turn = 0.5 * std::atan2(2.0 * (first * second), first * first - second * second);
    qcVector<2> const longer = first * std::cos(turn) + second * std::sin(turn);
    qcVector<2> const shorter = second * std::cos(turn) - first * std::sin(turn);
    bool const back = longer * qcVector<2>(1.0, reference) < 0.0;
    return {image.center, {longer.len(), shorter.len()}, (back ? -longer : longer).angle()};
}

/// A point inside with a first-order distance of this many radii lies at the centre: its gradient
/// is rounding.
constexpr double kAtCenter = 1e6;

/// Where a circle was meant, the direction of its axes is rounding: it takes the reference.
constexpr double kRound = 1e-14;

/// (F / |grad F|)^2 of two points at a time, in normalised units.
class FirstOrderDistance {
public:
    FirstOrderDistance(Form const& white, qnInternal::FitUnits const& units,
                       qcVector<2> const& radii)
        : frame_(units, 1.0, 1.0), atCenter_(kAtCenter * kAtCenter * radii.x() * radii.x()),
          shorter_(radii.y() * radii.y())
    {
        double const along = 1.0 / units.alongSpread;
        double const across = 1.0 / units.acrossSpread;
        form_ = {white.a * along * along, white.b * along * across, white.c * across * across,
                 white.d * along,         white.e * across,         white.f};
    }

    Pair square(Pair px, Pair py) const
    {
        auto const [x, y] = frame_.at(px, py);
        Pair const alongX = 2.0 * form_.a * x + form_.b * y + form_.d;
        Pair const alongY = form_.b * x + 2.0 * form_.c * y + form_.e;
        Pair const twice = (alongX + form_.d) * x + (alongY + form_.e) * y + 2.0 * form_.f;
        Pair const result = 0.25 * twice * twice / (alongX * alongX + alongY * alongY);
        auto const atCenter = (twice < 0.0) & (result > atCenter_);
        return atCenter ? qnInternal::both(shorter_) : result;
    }

private:
    AxisFrame frame_;
    Form form_;
    double atCenter_;
    double shorter_;
};

struct Fit {
    qcEllipse ellipse;
    FirstOrderDistance distance;
    double scale;  // of the distance

    double residual(Points const& points) const
    {
        auto const [sum] = qnInternal::sumsOver<1>(
            points, [&](Pair x, Pair y) { return std::array{distance.square(x, y)}; });
        return std::sqrt(sum / static_cast<double>(points.size())) * scale;
    }

    std::vector<double> squares(Points const& points) const
    {
        std::vector<double> result;
        result.reserve(points.size());
        for (auto const& p : points)
            result.push_back(distance.square(qnInternal::both(p.x()), qnInternal::both(p.y()))[0]);
        return result;
    }
};

Fit fitted(Points const& points, qcRadian reference)
{
    Framed const start = framed(points);
    auto const& units = start.units;
    Form const form = fittedForm(points, start);
    qcMatrix<2> const back(units.axis.x() * units.alongSpread, -units.axis.y() * units.acrossSpread,
                           units.axis.y() * units.alongSpread, units.axis.x() * units.acrossSpread);
    Image const image = imageOf(form);
    auto geom = principal({back * image.center, back * image.axes}, reference);
    FirstOrderDistance const distance(form, units, geom.radii);
    if (geom.radii.x() - geom.radii.y() <= kRound * geom.radii.x())
        geom.rotation = reference;
    geom.center = units.center + geom.center * units.scale;
    geom.radii = geom.radii * units.scale;
    if (!std::isfinite(geom.center.x()) || !std::isfinite(geom.center.y()) ||
        !std::isfinite(geom.radii.x()))
        throw qcFitError::NotFinite();
    if (!(geom.radii.y() > 0.0))
        throw qcFitError::NotAnEllipse();
    return {qcEllipse(geom), distance, units.scale};
}

}  // namespace

void qfEllipseFit(qcEllipseFitParams const& params, Points const& points,
                  qcEllipseFitResults& results)
{
    if (params.mode() != qcEllipseFitDefs::eDirect ||
        !std::isfinite(params.reference().toDouble()) || !(params.largestResidual() >= 0.0))
        throw qcFitError::BadParams();
    Fit fit = fitted(points, params.reference());
    double residual = 0.0;
    if (params.ignoredPoints() > 0) {
        Points const kept =
            qnInternal::withoutFurthest(points, fit.squares(points), params.ignoredPoints());
        fit = fitted(kept, params.reference());
        residual = fit.residual(kept);
    } else {
        residual = fit.residual(points);
    }
    results.residual = qnInternal::acceptedResidual(residual, params.largestResidual());
    results.ellipse = fit.ellipse;
}
