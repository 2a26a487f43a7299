// Finds bright parts on a dark ground, and the edge points along their borders.
//
// What it does not do: it keeps parts apart only where ground lies between them; it looks for no
// holes; it follows the convex hull of a part, so notches deeper than the search reaches are cut
// off; it takes the strongest edge near the hull, be it the part's or that of a shadow; and it
// knows nothing of the lens.
#pragma once

#include "image.h"

#include <vector>

/// What the finder is told. Lengths are in pixels.
struct PartSettings {
    double smoothing = 1.0;  ///< sigma of the Gaussian that quiets the noise
    int widest = 71;         ///< no part is wider or higher than this
    /// Of the level that Otsu's method separates parts from ground at. Below 1 the dark places of a
    /// relief stay with the part; the border is found anew afterwards.
    double seedLevel = 0.8;
    double leastArea = 300;      ///< smaller specks are no parts
    double reach = 3.0;          ///< how far in and out of the seed's hull an edge is looked for
    double leastContrast = 4.0;  ///< grey levels per pixel that an edge point has at least
};

struct Part {
    std::vector<qcEdgelet> edge;  ///< in order around the part; magnitude in 1/16 level per pixel,
                                  ///< angle towards the bright side
    bool touchesBorder = false;   ///< part of it lies, or may lie, outside the picture
};

/// The parts, ordered by their topmost row. Linear in pixels times `widest`.
std::vector<Part> findParts(Image const& photograph, PartSettings const& settings);
