// What is measured of the parts, and the ways it is shown and kept.
#pragma once

#include "find_parts.h"

#include <iosfwd>
#include <string>
#include <vector>

using TypedRegion = qcRegionT<qcEdgelet>;
using TypedSet = qcRegionSetT<qcEdgelet>;

/// Lengths in pixels, areas in square pixels.
struct Measures {
    unsigned long label = 0;
    std::size_t edgePoints = 0;
    bool touchesBorder = false;
    double area = 0;
    qcVector<2> centroid;
    qcEllipse equalMoments;      ///< the solid ellipse of the same second moments
    double farthestPair = 0;     ///< diameter between the two vertices farthest apart
    double fromFirstPoint = 0;   ///< twice the distance from the first vertex to the farthest
    double solidity = 0;         ///< area over the area of the convex hull
    double fitResidual = 0;      ///< root mean square distance of the edge points to their ellipse
    unsigned long nearest = 0;   ///< label of the nearest other part, 0 where there is none
    double nearestDistance = 0;  ///< between the two outlines
};

/// The parts as regions labelled 1, 2, 3 ...
std::vector<qcPtrHandle<TypedRegion>> makeRegions(std::vector<Part> const& parts);

/// One record a region, in their order; `parts` are those the regions were made of.
std::vector<Measures> measure(std::vector<qcPtrHandle<TypedRegion>> const& regions,
                              std::vector<Part> const& parts);

void printTable(std::ostream& out, std::vector<Measures> const& all);
void writeCsv(std::ostream& out, std::vector<Measures> const& all);

/// Draws the set's ticks, and centres and labels, over the photograph that `href` names.
void writePicture(std::ostream& out, std::string const& href, Image const& photograph,
                  TypedSet const& set, std::vector<Measures> const& all);

/// Saves the set and the edge points of its regions. The record of a typed set keeps the plain
/// regions (outlines, labels, holes) and that is all; so a data-carrying contour follows for each.
void save(std::string const& path, TypedSet const& set);

/// Loads what save() wrote: the regions come back with their edge points.
TypedSet load(std::string const& path);

/// Whether two sets hold the same outlines, labels and edge points, in order.
bool same(TypedSet const& a, TypedSet const& b);
