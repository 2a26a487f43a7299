/// Questions about regions and sets of them answered step by step on plain point lists, without
/// caches, shortcuts or the region classes: what the library's answers are compared with, bit for bit.
#pragma once

#include "tests/support/plain_contour.h"

#include <vector>

namespace qnPlain {

/// An outline with holes, which may have holes themselves.
struct Figure {
    Points outline;
    std::vector<Figure> holes;
};

/// A vertex of a figure: `which` is -1 for the outline or the position of its hole.
struct NamedVertex {
    long which;
    long index;
};

/// Crossings of a ray from the point with the outline, or of two opposite rays the fewer.
long insideCount(Points const& outline, qcVector<2> const& point, bool twoRays);
bool inside(Figure const& figure, qcVector<2> const& point, bool considerHoles);

NamedVertex closestVertex(Figure const& figure, qcVector<2> const& point, bool considerHoles);
qcVector<2> closestPoint(Figure const& figure, qcVector<2> const& point, bool verticesOnly,
                         bool considerHoles);

double area(Figure const& figure, bool considerHoles);
qcVector<2> centerOfMass(Figure const& figure, bool considerHoles);

/// The first edge that faces the outside and that nothing crosses, by its first vertex; -1 for none.
long startEdge(Points const& outline);

/// The walk from that edge. Throws qcContourDefs::BadParams where there is none and where the walk
/// is about to repeat itself without meeting its start.
Points boundaryWalk(Points const& outline);

/// What is left of the walk when its loops are cut apart, the inner ones dropped, the others joined.
Points outerHull(Points const& outline);

/// Around one outline from its first crossing with the other, then around the other. Throws
/// qcContourDefs::BadParams where they do not cross.
Points splice(Points const& first, Points const& second);

/// Several figures taken together.
using Set = std::vector<Figure>;

double area(Set const& set, bool considerHoles);
qcVector<2> centerOfMass(Set const& set, bool considerHoles);
qcMatrix<2> inertiaMatrix(Set const& set);  ///< of the outlines
bool inside(Set const& set, qcVector<2> const& point, bool considerHoles);
double distToPoint(Set const& set, qcVector<2> const& point, bool verticesOnly, bool considerHoles,
                   bool insideIsZero);
bool isSelfIntersecting(Set const& set);
qcRect encloseRect(Set const& set, qcXform<2> const& xform);

/// The outlines after the one merging pass, each then walked, or with `hull` cut to its hull.
std::vector<Points> cleaned(Set const& set, bool hull);

}  // namespace qnPlain
