// Ellipse fit: least squares of the quadratic form under the condition that makes it an ellipse.
//
// The problem does not change when the plane is mapped by any affine transform, so it is solved
// where the points have mean (0, 0) and spread 1 in every direction. There the linear and constant
// terms follow from the quadratic ones at once, and a 3x3 problem is left.
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

/// Points with mean (0, 0) and spread 1 in every direction, and the way back to the given ones.
struct WhitePoints {
    Points points;
    qcMatrix<2> back;  // to normalised units
    double rounding;   // of the coordinates, in these units
};

WhitePoints whitened(qnInternal::NormalisedPoints const& cloud)
{
    WhitePoints white;
    white.points.resize(cloud.points.size());
    qcVector<2> const axis = cloud.axis;
    double const along = 1.0 / cloud.alongSpread;
    double const across = 1.0 / cloud.acrossSpread;
    for (std::size_t i = 0; i < white.points.size(); ++i)
        white.points[i] = {(axis * cloud.points[i]) * along, axis.cross(cloud.points[i]) * across};
    white.back = qcMatrix<2>(axis.x() * cloud.alongSpread, -axis.y() * cloud.acrossSpread,
                             axis.y() * cloud.alongSpread, axis.x() * cloud.acrossSpread);
    white.rounding = cloud.rounding / cloud.acrossSpread;
    return white;
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
};

Reduced reduced(Points const& points)
{
    double const share = 1.0 / static_cast<double>(points.size());
    Reduced result{};
    auto& linear = result.linear;
    auto const shares = qnInternal::sumsOver<9>(points, [](Pair x, Pair y) {
        auto const [a, b, c] = quadratic(x, y);
        return std::array{a * x, a * y, a, b * x, b * y, b, c * x, c * y, c};
    });
    for (std::size_t k = 0; k < 9; ++k)
        linear[k / 3][k % 3] = shares[k] * share;
    auto const scatter = qnInternal::sumsOver<6>(points, [&](Pair x, Pair y) {
        auto rest = quadratic(x, y);
        for (std::size_t k = 0; k < 3; ++k)
            rest[k] -= linear[k][0] * x + linear[k][1] * y + linear[k][2];
        return std::array{rest[0] * rest[0], rest[1] * rest[0], rest[1] * rest[1],
                          rest[2] * rest[0], rest[2] * rest[1], rest[2] * rest[2]};
    });
    std::size_t next = 0;
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t k = 0; k <= i; ++k) {
            result.scatter[i][k] = scatter[next++] * share;
            result.scatter[k][i] = result.scatter[i][k];
        }
    return result;
}

/// The s with s0^2 - s1^2 - s2^2 > 0 for which s'Ss / (s0^2 - s1^2 - s2^2) is least.
///
/// With S = E'E, E = sqrt(values) * eigenvectors and w = E s, that is the eigenvector of the only
/// positive eigenvalue of E^-T J E^-1, J = diag(1, -1, -1).
Vector3 leastForm(Matrix3 const& scatter, double rounding)
{
    auto const eigen = qnInternal::eigenOfSymmetric(scatter);
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

/// The best form, normalised so that it is negative inside.
Form fittedForm(WhitePoints const& white)
{
    Reduced const rest = reduced(white.points);
    Vector3 s = leastForm(rest.scatter, white.rounding);
    double const length = std::hypot(s[0], std::hypot(s[1], s[2]));
    for (double& term : s)
        term /= s[0] < 0.0 ? -length : length;
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

struct Fit {
    qcEllipse ellipse;
    std::vector<double> distances;
};

/// |F| / |grad F| of two points at a time, in the units of the points.
class FirstOrderDistance {
public:
    FirstOrderDistance(Form const& form, qcMatrix<2> const& back,
                       qcEllipse::qcEllipseGeom const& geom, double scale)
        : form_(form), inverse_(back.inverse()), radii_(geom.radii), scale_(scale)
    {
    }

    Pair operator()(Pair x, Pair y) const
    {
        Pair const value =
            (form_.a * x + form_.b * y + form_.d) * x + (form_.c * y + form_.e) * y + form_.f;
        Pair const alongX = 2.0 * form_.a * x + form_.b * y + form_.d;
        Pair const alongY = form_.b * x + 2.0 * form_.c * y + form_.e;
        // Gradients are covectors: they are mapped by the transposed matrix.
        Pair const gradientX = inverse_.element(0, 0) * alongX + inverse_.element(1, 0) * alongY;
        Pair const gradientY = inverse_.element(0, 1) * alongX + inverse_.element(1, 1) * alongY;
        Pair const square = gradientX * gradientX + gradientY * gradientY;
        Pair const length{std::sqrt(square[0]), std::sqrt(square[1])};
        Pair const size = value < 0.0 ? -value : value;
        Pair const distance = value == 0.0 ? Pair{} : size / length * scale_;
        auto const atCenter = (value < 0.0) & (distance > kAtCenter * radii_.x());
        return atCenter ? qnInternal::both(radii_.y()) : distance;
    }

private:
    Form form_;
    qcMatrix<2> inverse_;
    qcVector<2> radii_;
    double scale_;
};

std::vector<double> distances(Points const& points, FirstOrderDistance const& distance)
{
    std::vector<double> result(points.size());
    std::size_t i = 0;
    for (; i + 1 < points.size(); i += 2) {
        Pair const two = distance(Pair{points[i].x(), points[i + 1].x()},
                                  Pair{points[i].y(), points[i + 1].y()});
        result[i] = two[0];
        result[i + 1] = two[1];
    }
    if (i < points.size())
        result[i] = distance(qnInternal::both(points[i].x()), qnInternal::both(points[i].y()))[0];
    return result;
}

Fit fitted(Points const& points, qcRadian reference)
{
    auto const cloud = qnInternal::normalise(points);
    auto const white = whitened(cloud);
    Form const form = fittedForm(white);
    Image image = imageOf(form);
    image = {white.back * image.center, white.back * image.axes};
    auto geom = principal(image, reference);
    if (geom.radii.x() - geom.radii.y() <= kRound * geom.radii.x())
        geom.rotation = reference;
    geom.center = cloud.center + geom.center * cloud.scale;
    geom.radii = geom.radii * cloud.scale;
    if (!std::isfinite(geom.center.x()) || !std::isfinite(geom.center.y()) ||
        !std::isfinite(geom.radii.x()))
        throw qcFitError::NotFinite();
    if (!(geom.radii.y() > 0.0))
        throw qcFitError::NotAnEllipse();
    return {qcEllipse(geom),
            distances(white.points, FirstOrderDistance(form, white.back, geom, cloud.scale))};
}

}  // namespace

void qfEllipseFit(qcEllipseFitParams const& params, Points const& points,
                  qcEllipseFitResults& results)
{
    constexpr std::size_t kFreedoms = 5;
    if (params.mode() != qcEllipseFitDefs::eDirect ||
        !std::isfinite(params.reference().toDouble()) || !(params.largestResidual() >= 0.0))
        throw qcFitError::BadParams();
    qnInternal::requireFinite(points);
    qnInternal::requireDistinct(points, kFreedoms);
    Fit fit = fitted(points, params.reference());
    if (params.ignoredPoints() > 0) {
        Points const kept =
            qnInternal::withoutFurthest(points, fit.distances, params.ignoredPoints());
        qnInternal::requireDistinct(kept, kFreedoms);
        fit = fitted(kept, params.reference());
    }
    results.residual = qnInternal::acceptedResidual(fit.distances, params.largestResidual());
    results.ellipse = fit.ellipse;
}
