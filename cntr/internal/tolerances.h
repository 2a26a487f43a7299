/// Every tolerance of the library, with unit and reason. All are absolute.
#pragma once

namespace qnInternal {

/// Units of the points. Two points this close in x and in y are one point, and the edge between
/// them has no direction. Neighbouring doubles from 8 upward are further apart than this, so there
/// it means exact equality.
inline constexpr double kSamePoint = 1e-15;

/// Units of the points. A point nearer than this to a segment lies on it, a vertex nearer than this
/// is the same vertex: a millionth of a pixel, far above the rounding of a crossing at image
/// coordinates (about 1e-12), far below anything a camera resolves.
inline constexpr double kOnSegment = 1e-6;

/// Part of the median edge length: half the length of the probe laid across an edge where a
/// boundary walk might start. Short, so that it meets no other edge of an even outline.
inline constexpr double kProbe = 0.01;

/// Units of the points. How much further from a side than from its line the apex of a triangle must
/// be before its foot counts as outside the side; below it the difference is rounding.
inline constexpr double kFootInside = 1e-10;

/// Square units. A fan triangle of no more than this doubled area has no centroid worth adding.
inline constexpr double kFlatTriangle = 1e-15;

/// Square units. A polygon of no more than this doubled area has no centre of mass.
inline constexpr double kFlatPolygon = 1e-6;

/// Square units. Triangles of a fan below this area are added last, when the total is settled.
inline constexpr double kSmallFanTriangle = 1e-6;

/// Square units. The moments of a polygon of at least this doubled area are plain sums over its
/// edges: far above the areas below, which the fan of triangles treats as nothing.
inline constexpr double kSmallestSummed = 1e-3;

/// Part of the areas without signs that must remain for the moments to be plain sums. What cancels
/// further, as a figure eight does, has a centre only by the rules for records.
inline constexpr double kSummedShare = 1e-3;

/// Square units. Records whose areas cancel to this have no common centre of mass.
inline constexpr double kCancelledRecords = 1e-16;

/// Square units. Regions of a set whose areas sum to this have no common centre of mass.
inline constexpr double kCancelledRegions = 1e-15;

/// Units of length to the fourth. A principal moment not above this belongs to no solid ellipse.
inline constexpr double kFlatMoment = 1e-12;

/// Coordinates up to here have squares and products far from the end of the double range.
inline constexpr double kLargestRegular = 1e150;

/// Coordinates from here up differ, where they differ, by so much that the square keeps its digits.
inline constexpr double kSmallestRegular = 1e-120;

/// Squared lengths below this lose digits to underflow.
inline constexpr double kShortestSquare = 1e-280;

}  // namespace qnInternal
