// Ellipses fitted to points, and ellipses of equal moments.
#include <cntr/ellipse_fit.h>

#include "cntr/internal/positions.h"
#include "cntr/internal/tolerances.h"

#include <qc/core/circle_fit.h>
#include <qc/core/ellipse_fit.h>
#include <qc/core/exception.h>

#include <cmath>

namespace {

void fitEllipseToPoints(std::vector<qcVector<2>> const& points, qcEllipse& ellipse,
                        double& residual)
{
    qcEllipseFitParams const params(static_cast<qcEllipseFitDefs::fit_mode>(0), qcRadian(0.0), 0,
                                    HUGE_VAL);
    qcEllipseFitResults results;
    qfEllipseFit(params, points, results);
    ellipse = results.ellipse;
    residual = results.residual;
}

void fitCircleToPoints(std::vector<qcVector<2>> const& points, qcEllipse& ellipse, double& residual)
{
    qcCircleFitParams const params(static_cast<qcCircleFitDefs::fit_mode>(0), 1.0, 0, HUGE_VAL);
    qcCircleFitResults results;
    qfCircleFit(params, points, results);
    ellipse = qcEllipse(results.circle);
    residual = results.residual;
}

qcMatrix<2> rotation(double theta)
{
    return qcMatrix<2>(qcRadian(theta), qcRadian(theta), 1.0, 1.0);
}

/// The semi-axis along the direction of the moment `along`, `across` being the other one.
double semiAxis(double along, double across)
{
    constexpr double kPiSquared = 9.869604401089358;
    double const power = 16 * (along * along * along) / (kPiSquared * across);
    return std::sqrt(std::sqrt(std::sqrt(power)));
}

}  // namespace

void qf_FitEllipse(std::vector<qcVector<2>> const& points, qcEllipse& ellipse, double& residual)
{
    try {
        fitEllipseToPoints(points, ellipse, residual);
        return;
    } catch (qcException const&) {
        // Too few points, or on no ellipse: a circle needs less.
    }
    try {
        fitCircleToPoints(points, ellipse, residual);
    } catch (qcException const&) {
        ellipse = qcEllipse();
        residual = -1.0;
    }
}

void qf_FitEllipse(std::vector<qcEdgelet> const& edgelets, qcEllipse& ellipse, double& residual)
{
    qf_FitEllipse(qnInternal::positions(edgelets), ellipse, residual);
}

qcEllipse qf_EllipseFromInertiaData(qc_InertiaData const& data)
{
    qcMatrix<2> const& moments = data.inertiaMatrix();
    double const theta =
        0.5 * std::atan2(2 * moments.element(0, 1), moments.element(0, 0) - moments.element(1, 1));
    qcMatrix<2> const principal = rotation(-theta) * moments * rotation(theta);
    double const along = std::fabs(principal.element(0, 0));
    double const across = std::fabs(principal.element(1, 1));
    if (!(along > qnInternal::kFlatMoment) || !(across > qnInternal::kFlatMoment))
        throw qcMathError::Singular();
    qcEllipse::qcEllipseGeom geom;
    geom.center = data.centerOfMass();
    geom.radii = qcVector<2>(semiAxis(along, across), semiAxis(across, along));
    geom.rotation = qcRadian(theta);
    return qcEllipse(geom);
}
