/// Every query of a contour at once, as a list of named numbers, from the library or from the plain
/// transcription, so that whole contours compare in one line.
#pragma once

#include "tests/support/outlines.h"
#include "tests/support/plain_contour.h"

#include <cntr/contour.h>

#include <string>
#include <utility>
#include <vector>

/// A contour whose protected members a test may use.
struct OpenContour : qcContour {
    using qcContour::checkEmptyContour;
    using qcContour::intersections;
    using qcContour::lineSegs;
    using qcContour::medianFeatureSize;
    using qcContour::qcContour;
    using qcContour::setPoints;
    using qcContour::validLine;
};

namespace qnOutlines {

using Answers = std::vector<std::pair<std::string, double>>;

/// What is asked: places, segments between them, tolerances, directions and transforms.
struct Questions {
    std::vector<qcVector<2>> places;
    std::vector<qcLineSeg> segments;
    std::vector<double> tolerances;
    std::vector<double> angles;
    std::vector<qcXform<2>> xforms;
};

/// Questions around an outline: its own vertices and edges, ties, near misses, and far off.
Questions questionsAbout(Outline const& outline, std::mt19937& random);

Answers ask(OpenContour const& contour, Questions const& questions);
Answers askPlain(Outline const& outline, Questions const& questions);

/// The first difference of two lists, NaN being equal to NaN; empty for none.
std::string difference(Answers const& a, Answers const& b);

}  // namespace qnOutlines
