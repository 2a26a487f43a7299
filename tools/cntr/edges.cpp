// Crossings by pairs of edges; moments of figures with holes.
#include "edges.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

namespace qnTool {

std::vector<EdgeMeeting> EdgeQueries::meetings(EdgeQueries const& other) const
{
    std::vector<EdgeMeeting> found;
    checkEmptyContour();
    auto const& segments = other.lineSegs();
    auto const& valid = other.validLine();
    std::vector<int> edges;
    for (std::size_t k = 0; k < segments.size(); ++k) {
        if (!valid[k])
            continue;
        auto const points = intersections(segments[k], edges, true);
        for (std::size_t i = 0; i < points.size(); ++i)
            found.push_back({edges[i], static_cast<int>(k), points[i]});
    }
    return found;
}

std::vector<EdgeMeeting> EdgeQueries::selfMeetings() const
{
    std::vector<EdgeMeeting> found;
    std::set<std::pair<int, int>> seen;
    auto const& segments = lineSegs();
    auto const& valid = validLine();
    std::vector<int> edges;
    for (std::size_t k = 0; k < segments.size(); ++k) {
        if (!valid[k])
            continue;
        int const own = static_cast<int>(k);
        auto const points = intersections(segments[k], edges, false);
        for (std::size_t i = 0; i < points.size(); ++i)
            if (seen.insert(std::minmax(own, edges[i])).second)
                found.push_back({own, edges[i], points[i]});
    }
    return found;
}

namespace {

/// The record with the area as given, whichever way the outline runs.
qc_InertiaData recordOf(qcRegion const& region, double sign)
{
    auto const record = qf_InertiaDataPolygon(region.points());
    return qc_InertiaData(sign * std::abs(record.area()), record.centerOfMass(),
                          record.inertiaMatrix());
}

}  // namespace

qc_InertiaData figureWithHoles(qcRegion const& region)
{
    auto figure = recordOf(region, 1.0);
    for (auto const& hole : region.holes())
        figure = figure + recordOf(*hole, -1.0);
    return figure;
}

}  // namespace qnTool
