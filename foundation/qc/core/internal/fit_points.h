/// \file
/// What the fits do with their points before and after fitting.
#pragma once

#include <qc/core/internal/pair.h>
#include <qc/core/vector.h>

#include <cstddef>
#include <vector>

namespace qnInternal {

/// x or y of two points.
struct PairPoint {
    Pair x;
    Pair y;
};

/// Units in which the points of a fit are numbers of about 1, so that no fit depends on their
/// translation and scale: point = center + scale * normalised point.
struct FitUnits {
    qcVector<2> center;   ///< mean of the points
    double scale;         ///< a power of two
    qcVector<2> axis;     ///< unit vector of the largest spread
    double alongSpread;   ///< root mean square along the axis, above 0
    double acrossSpread;  ///< the same at right angles to it, above 0
    double rounding;      ///< size of one rounding of the given coordinates, in normalised units

    double unit;         ///< 1 / scale: multiplying by it rounds nothing
    qcVector<2> middle;  ///< of the box around the points, times unit
    qcVector<2> mean;    ///< of the points, from the middle, in normalised units

    /// Coordinates of two points in normalised units from the middle of the box: within
    /// [-4, 4] for points in the box.
    PairPoint fromMiddle(Pair x, Pair y) const
    {
        return {x * unit - middle.x(), y * unit - middle.y()};
    }

    /// The same from the mean.
    PairPoint normalised(Pair x, Pair y) const
    {
        auto const [fromX, fromY] = fromMiddle(x, y);
        return {fromX - mean.x(), fromY - mean.y()};
    }
};

/// The units of points. Throws qcFitError::NotFinite unless every coordinate is finite,
/// qcFitError::TooFewPoints unless at least `needed` of the points differ, and
/// qcFitError::Degenerate when they lie on one line, within the rounding of their coordinates.
FitUnits fitUnits(std::vector<qcVector<2>> const& points, std::size_t needed);

/// The points without the `dropped` ones of largest distance, or of largest square of it; of equal
/// ones the later goes. Throws qcFitError::TooFewPoints when none is left.
std::vector<qcVector<2>> withoutFurthest(std::vector<qcVector<2>> const& points,
                                         std::vector<double> const& distances, std::size_t dropped);

/// The residual. Throws qcFitError::NotFinite when it is not, and qcFitError::ResidualTooLarge
/// above `largest`.
double acceptedResidual(double residual, double largest);

}  // namespace qnInternal
