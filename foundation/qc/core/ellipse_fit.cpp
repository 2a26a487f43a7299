// Ellipse fit: least squares of the quadratic form under the condition that makes it an ellipse.
//
// The problem does not change when the plane is mapped by any affine transform, so it is solved
// where the points have mean (0, 0) and spread 1 in every direction. There the linear and constant
// terms follow from the quadratic ones at once, and a 3x3 problem is left.
#include <qc/core/ellipse_fit.h>
#include <qc/core/internal/fit_points.h>
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
    qcVector<2> gradient(qcVector<2> const& p) const
    {
        return {2.0 * a * p.x() + b * p.y() + d, b * p.x() + 2.0 * c * p.y() + e};
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
    white.points.reserve(cloud.points.size());
    double const along = 1.0 / cloud.alongSpread;
    double const across = 1.0 / cloud.acrossSpread;
    for (auto const& p : cloud.points)
        white.points.emplace_back((cloud.axis * p) * along, cloud.axis.cross(p) * across);
    qcVector<2> const& axis = cloud.axis;
    white.back = qcMatrix<2>(axis.x() * cloud.alongSpread, -axis.y() * cloud.acrossSpread,
                             axis.y() * cloud.alongSpread, axis.x() * cloud.acrossSpread);
    white.rounding = cloud.rounding / cloud.acrossSpread;
    return white;
}

/// The quadratic terms of a point as x^2 + y^2, x^2 - y^2, 2xy: in them the condition for an
/// ellipse reads s0^2 > s1^2 + s2^2 for the coefficients s.
Vector3 quadratic(qcVector<2> const& p)
{
    return {p.x() * p.x() + p.y() * p.y(), p.x() * p.x() - p.y() * p.y(), 2.0 * p.x() * p.y()};
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
    for (auto const& p : points) {
        Vector3 const terms = quadratic(p);
        for (std::size_t k = 0; k < 3; ++k) {
            result.linear[k][0] += terms[k] * p.x();
            result.linear[k][1] += terms[k] * p.y();
            result.linear[k][2] += terms[k];
        }
    }
    for (auto& function : result.linear)
        for (double& term : function)
            term *= share;
    for (auto const& p : points) {
        Vector3 rest = quadratic(p);
        for (std::size_t k = 0; k < 3; ++k)
            rest[k] -=
                result.linear[k][0] * p.x() + result.linear[k][1] * p.y() + result.linear[k][2];
        for (std::size_t i = 0; i < 3; ++i)
            for (std::size_t k = 0; k <= i; ++k)
                result.scatter[i][k] += rest[i] * rest[k];
    }
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t k = 0; k <= i; ++k) {
            result.scatter[i][k] *= share;
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

std::vector<double> distances(Points const& points, Form const& form, qcMatrix<2> const& back,
                              qcEllipse::qcEllipseGeom const& geom, double scale)
{
    qcMatrix<2> const inverse = back.inverse();
    qcMatrix<2> const there(inverse.element(0, 0), inverse.element(1, 0), inverse.element(0, 1),
                            inverse.element(1, 1));  // transposed: gradients are covectors
    std::vector<double> result;
    result.reserve(points.size());
    for (auto const& p : points) {
        qcVector<2> const gradient = there * form.gradient(p);
        double const value = form.at(p);
        double const distance = value == 0.0 ? 0.0 : std::fabs(value) / gradient.len() * scale;
        bool const atCenter = value < 0.0 && distance > kAtCenter * geom.radii.x();
        result.push_back(atCenter ? geom.radii.y() : distance);
    }
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
    return {qcEllipse(geom), distances(white.points, form, white.back, geom, cloud.scale)};
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
