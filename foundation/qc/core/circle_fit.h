/// \file
/// Least-squares fit of a circle to points.
#pragma once

#include <qc/core/export.h>
#include <qc/core/fit_error.h>
#include <qc/core/shapes.h>
#include <qc/core/vector.h>

#include <vector>

/// Names of the circle fit.
class qcCircleFitDefs {
public:
    /// What is made small.
    enum fit_mode {
        eLeastSquares = 0  ///< least sum of the squared distances from the circle
    };
};

/// How a circle is fitted.
class qcCircleFitParams {
public:
    /// \param mode       eLeastSquares
    /// \param used       share of the points, above 0 and up to 1, that a robust fit keeps: the
    ///                   rest, rounded down, are the points furthest from a first fit of all points
    /// \param ignored    number of further points left out as the furthest ones
    /// \param residual   largest residual accepted, in the units of the points, at least 0
    qcCircleFitParams(qcCircleFitDefs::fit_mode mode, double used, unsigned long ignored,
                      double residual) noexcept
        : mode_(mode), used_(used), ignored_(ignored), residual_(residual)
    {
    }

    /// How the circle is fitted.
    qcCircleFitDefs::fit_mode mode() const noexcept { return mode_; }
    /// The share of the points used.
    double usedShare() const noexcept { return used_; }
    /// The number of further points left out.
    unsigned long ignoredPoints() const noexcept { return ignored_; }
    /// The largest residual accepted.
    double largestResidual() const noexcept { return residual_; }

private:
    qcCircleFitDefs::fit_mode mode_;
    double used_;
    unsigned long ignored_;
    double residual_;
};

/// What a circle fit found.
struct qcCircleFitResults {
    /// The circle found.
    qcCircle circle;
    /// Root mean square distance of the points used from the circle, in their units.
    double residual = 0.0;
};

/// Fits a circle to points. `results` is written only by a fit that succeeds.
///
/// The result follows the points through any translation and scale, within the rounding of their
/// coordinates. Points that are left out are chosen once, after a fit of all; of equally distant
/// ones the later in the list goes. Linear in the points; leaving some out sorts them.
///
/// Throws qcFitError::BadParams for parameters out of range, NotFinite for a coordinate or a
/// result that is not finite, TooFewPoints for fewer than 3 distinct points used, Degenerate for
/// points on a line, ResidualTooLarge.
QC_EXPORT void qfCircleFit(qcCircleFitParams const& params, std::vector<qcVector<2>> const& points,
                           qcCircleFitResults& results);
