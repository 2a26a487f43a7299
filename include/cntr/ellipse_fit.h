/// @file
/// Ellipses that describe a shape: fitted to points, or of equal moments.
#pragma once

#include <cntr/config.h>
#include <cntr/moments.h>

#include <qc/core/shapes.h>
#include <qc/core/vector.h>
#include <qc/features/edgelet.h>

#include <vector>

/// Fits an ellipse to points; where that fails a circle; where that fails too, gives a default
/// ellipse and the residual -1.
///
/// `residual` is the root mean square distance of the points to the curve, to first order for an
/// ellipse. Throws no qcException; allocation failures pass. Linear.
CNTR_EXPORT void qf_FitEllipse(std::vector<qcVector<2>> const& points, qcEllipse& ellipse,
                               double& residual);

/// The same for the positions of edge points.
CNTR_EXPORT void qf_FitEllipse(std::vector<qcEdgelet> const& edgelets, qcEllipse& ellipse,
                               double& residual);

/// The solid ellipse with the centre and the second moments of `data`; its area is not used.
///
/// The first radius belongs to the larger principal moment and lies along the rotation. A solid
/// ellipse of semi-axes a and b has the moments pi a^3 b / 4 and pi a b^3 / 4. Throws
/// qcMathError::Singular where a principal moment is not above 1e-12.
CNTR_EXPORT qcEllipse qf_EllipseFromInertiaData(qc_InertiaData const& data);
