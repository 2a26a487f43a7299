/// What the command asks of a contour beyond its public queries.
#pragma once

#include <cntr/cntr.h>

#include <cstddef>
#include <vector>

namespace qnTool {

/// A point where the edges of two contours meet.
struct EdgeMeeting {
    int edge = 0;       ///< of this contour
    int otherEdge = 0;  ///< of the other one
    qcVector<2> point;
};

/// A copy of a contour that opens queries meant for derived classes.
class EdgeQueries : public qcContour {
public:
    explicit EdgeQueries(qcContour const& contour) : qcContour(contour) {}
    ~EdgeQueries() override = default;

    using qcContour::medianFeatureSize;

    /// Where the edges of `other` meet this contour, in the order of the library's query.
    std::vector<EdgeMeeting> meetings(EdgeQueries const& other) const;

    /// The pairs of edges that meet away from the ends of one of them, by the rule of
    /// isSelfIntersecting(); the point is the first one found.
    std::vector<EdgeMeeting> selfMeetings() const;
};

/// Area, centre and moments of a region without its holes.
qc_InertiaData figureWithHoles(qcRegion const& region);

}  // namespace qnTool
