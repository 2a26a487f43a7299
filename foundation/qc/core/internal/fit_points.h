/// \file
/// What the fits do with their points before and after fitting.
#pragma once

#include <qc/core/vector.h>

#include <cstddef>
#include <vector>

namespace qnInternal {

/// Points brought to numbers of about 1, so that no fit depends on their translation and scale:
/// point = center + scale * normalised point.
struct NormalisedPoints {
    std::vector<qcVector<2>> points;  ///< mean (0, 0), coordinates within [-2, 2]
    qcVector<2> center;
    double scale;
    qcVector<2> axis;     ///< unit vector of the largest spread
    double alongSpread;   ///< root mean square along the axis, above 0
    double acrossSpread;  ///< the same at right angles to it, above 0
    double rounding;      ///< size of one rounding of the given coordinates, in normalised units
};

/// Throws qcFitError::NotFinite unless every coordinate is finite.
void requireFinite(std::vector<qcVector<2>> const& points);

/// Throws qcFitError::TooFewPoints unless at least `needed` of the points differ.
void requireDistinct(std::vector<qcVector<2>> const& points, std::size_t needed);

/// Normalises finite points. Throws qcFitError::Degenerate when they lie on one line, within the
/// rounding of their coordinates.
NormalisedPoints normalise(std::vector<qcVector<2>> const& points);

/// The points without the `dropped` ones of largest distance; of equal ones the later goes.
/// Throws qcFitError::TooFewPoints when none is left.
std::vector<qcVector<2>> withoutFurthest(std::vector<qcVector<2>> const& points,
                                         std::vector<double> const& distances, std::size_t dropped);

/// Root mean square of distances of any size. Throws qcFitError::NotFinite when it is none, and
/// qcFitError::ResidualTooLarge above `largest`.
double acceptedResidual(std::vector<double> const& distances, double largest);

}  // namespace qnInternal
