/// \file
/// Least-squares fit of an ellipse to points.
#pragma once

#include <qc/core/angle.h>
#include <qc/core/export.h>
#include <qc/core/fit_error.h>
#include <qc/core/shapes.h>
#include <qc/core/vector.h>

#include <vector>

/// Names of the ellipse fit.
class qcEllipseFitDefs {
public:
    /// What is made small.
    enum fit_mode {
        eDirect = 0  ///< least sum of squares of the quadratic form under 4ac - b^2 = 1
    };
};

/// How an ellipse is fitted.
class qcEllipseFitParams {
public:
    /// \param mode       eDirect
    /// \param reference  direction near which the rotation is reported: of the two directions of
    ///                   the longer axis the one within a quarter turn of it
    /// \param ignored    number of points, furthest from a first fit of all, left out of the result
    /// \param residual   largest residual accepted, in the units of the points, at least 0
    qcEllipseFitParams(qcEllipseFitDefs::fit_mode mode, qcRadian const& reference,
                       unsigned long ignored, double residual) noexcept
        : mode_(mode), reference_(reference), ignored_(ignored), residual_(residual)
    {
    }

    /// How the ellipse is fitted.
    qcEllipseFitDefs::fit_mode mode() const noexcept { return mode_; }
    /// The direction near which the rotation is reported.
    qcRadian reference() const noexcept { return reference_; }
    /// The number of points left out.
    unsigned long ignoredPoints() const noexcept { return ignored_; }
    /// The largest residual accepted.
    double largestResidual() const noexcept { return residual_; }

private:
    qcEllipseFitDefs::fit_mode mode_;
    qcRadian reference_;
    unsigned long ignored_;
    double residual_;
};

/// What an ellipse fit found.
struct qcEllipseFitResults {
    /// The ellipse found.
    qcEllipse ellipse;
    /// Root mean square of |F| / |grad F|, the distance from the ellipse to first order, over the
    /// points used, in their units. A point at the centre (within about a millionth of the radii),
    /// where the gradient vanishes, counts with its distance, the shorter radius.
    double residual = 0.0;
};

/// Fits an ellipse to points. `results` is written only by a fit that succeeds.
///
/// The result follows the points through any translation and scale, within the rounding of their
/// coordinates. Points that are left out are chosen once, after a fit of all; of equally distant
/// ones the later in the list goes. The first radius is the longer one, and both flags of the
/// ellipse's geometry are false. Linear in the points; leaving some out sorts them.
///
/// The fit always looks for an ellipse, so points of another shape give the ellipse that serves
/// them best, with a residual that shows it.
///
/// Throws qcFitError::BadParams for parameters out of range, NotFinite for a coordinate or a
/// result that is not finite, TooFewPoints for fewer than 5 distinct points used, Degenerate where
/// several curves of second degree fit equally well (points on a line, or all but one),
/// NotAnEllipse where the best ellipse is a parabola within rounding, ResidualTooLarge.
QC_EXPORT void qfEllipseFit(qcEllipseFitParams const& params,
                            std::vector<qcVector<2>> const& points, qcEllipseFitResults& results);
