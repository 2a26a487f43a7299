/// @file
/// Areas, centres of mass and second moments of polygons given by their vertices.
///
/// A polygon is the closed sequence of its vertices; the first is not repeated at the end.
/// Everything here is a pure function and may be called from any thread.
#pragma once

#include <cntr/config.h>

#include <qc/core/matrix.h>
#include <qc/core/vector.h>
#include <qc/features/edgelet.h>

#include <vector>

/// Area, centre of mass and second moments of a figure.
///
/// `area` is signed: positive for vertices that run counter-clockwise with the y axis up. The matrix
/// holds the central second moments, not divided by the area: (0,0) the integral of (x - cx)^2,
/// (1,1) that of (y - cy)^2, (0,1) and (1,0) that of (x - cx)(y - cy). It is the same for either
/// orientation. The record of all zeros stands for an empty figure.
class CNTR_EXPORT qc_InertiaData {
public:
    /// The record of an empty figure.
    qc_InertiaData() : qc_InertiaData(0.0) {}

    /// The record of these values; centre (0, 0) and a matrix of zeros unless they are given.
    explicit qc_InertiaData(double area, qcVector<2> const& centerOfMass = qcVector<2>(),
                            qcMatrix<2> const& inertiaMatrix = qcMatrix<2>(0.0, 0.0, 0.0, 0.0))
        : area_(area), centerOfMass_(centerOfMass), inertiaMatrix_(inertiaMatrix)
    {
    }

    /// The signed area.
    double area() const { return area_; }
    /// The centre of mass.
    qcVector<2> const& centerOfMass() const { return centerOfMass_; }
    /// The central second moments, not divided by the area.
    qcMatrix<2> const& inertiaMatrix() const { return inertiaMatrix_; }

    /// The record of both figures together, by the parallel-axis rule.
    ///
    /// Of records with areas of opposite sign the one with the smaller area is a hole of the other:
    /// its matrix is subtracted. A record of area 0 gives the other one unchanged. Where the areas
    /// cancel to within 1e-16 the centre is (0, 0).
    qc_InertiaData operator+(qc_InertiaData const& other) const;

private:
    double area_;
    qcVector<2> centerOfMass_;
    qcMatrix<2> inertiaMatrix_;
};

/// The record of a polygon; the zero record for fewer than 3 points.
///
/// The matrix does not depend on the orientation: a clockwise list gives the record of the reversed
/// list with the area negated. Linear.
CNTR_EXPORT qc_InertiaData qf_InertiaDataPolygon(std::vector<qcVector<2>> const& points);

/// Area of the polygon, never negative, in square units; 0 for fewer than 3 points. Linear.
CNTR_EXPORT double qf_Area(std::vector<qcVector<2>> const& points);

/// Area of the polygon of the edge points' positions.
CNTR_EXPORT double qf_Area(std::vector<qcEdgelet> const& edgelets);

namespace qnContour {

/// Centroid of the polygon's area; (0, 0) for fewer than 3 points and where twice the area is not
/// above 1e-6. Linear.
CNTR_EXPORT qcVector<2> centerOfMass(std::vector<qcVector<2>> const& points);

}  // namespace qnContour

/// The same as qnContour::centerOfMass().
CNTR_EXPORT qcVector<2> qf_CenterOfMass(std::vector<qcVector<2>> const& points);

/// Centroid of the polygon of the edge points' positions; (0, 0) for an empty list.
CNTR_EXPORT qcVector<2> qf_CenterOfMass(std::vector<qcEdgelet> const& edgelets);

/// Standard deviation of the values taken as the whole population (divided by n); 0 for no values.
CNTR_EXPORT double qf_StdDev(std::vector<double> const& values);
