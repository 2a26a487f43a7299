// Boost.Geometry: measures, distances, hulls, crossings; its R-tree for repeated questions.
#include "support/questions.h"

#include <boost/geometry.hpp>
#include <boost/geometry/geometries/linestring.hpp>
#include <boost/geometry/geometries/multi_point.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <boost/geometry/geometries/ring.hpp>
#include <boost/geometry/geometries/segment.hpp>
#include <boost/geometry/index/rtree.hpp>

#include <cmath>
#include <memory>

namespace {

using namespace qnBench;
namespace bg = boost::geometry;
using Point = bg::model::d2::point_xy<double>;
using Ring = bg::model::ring<Point, false, true>;
using Line = bg::model::linestring<Point>;
using Segment = bg::model::segment<Point>;
using Box = bg::model::box<Point>;

Point point(qcVector<2> const& at)
{
    return {at.x(), at.y()};
}

/// The points with the first one again at the end.
template <class Form>
Form form(Points const& outline)
{
    Form made;
    for (auto const& at : outline)
        bg::append(made, point(at));
    bg::append(made, point(outline.front()));
    return made;
}

template <class Form>
Form outlineAs(Work const& given)
{
    return form<Form>(given.outline);
}

using Vertices = bg::index::rtree<Point, bg::index::rstar<8>>;
using Edges = bg::index::rtree<Segment, bg::index::rstar<8>>;

Vertices vertexTree(Work const& given)
{
    auto const line = outlineAs<Line>(given);
    return Vertices(line.begin(), line.end());
}

Edges edgeTree(Work const& given)
{
    auto const line = outlineAs<Line>(given);
    std::vector<Segment> all;
    for (std::size_t i = 0; i + 1 < line.size(); ++i)
        all.emplace_back(line[i], line[i + 1]);
    return Edges(all.begin(), all.end());
}

/// The distance to the nearest value of a tree.
auto const nearest = [](auto const& tree, qcVector<2> const& from) {
    return bg::distance(*tree.qbegin(bg::index::nearest(point(from), 1)), point(from));
};

/// How many edges of a tree a segment meets.
auto const hits = [](Edges const& tree, Points const& ends) {
    Segment const segment(point(ends[0]), point(ends[1]));
    std::size_t count = 0;
    for (auto each = tree.qbegin(bg::index::intersects(segment)); each != tree.qend(); ++each)
        ++count;
    return count;
};

struct TwoLines {
    Line a, b;
};

bool const registered[] = {
    once("perimeter", "Boost", outlineAs<Ring>,
         [](Ring const& ring, Work const&) { return bg::perimeter(ring); }),
    once("area", "Boost", outlineAs<Ring>,
         [](Ring const& ring, Work const&) { return std::fabs(bg::area(ring)); }),
    once("centre", "Boost", outlineAs<Ring>,
         [](Ring const& ring, Work const&) {
             Point center(0, 0);
             bg::centroid(ring, center);
             return center.x() + 3 * center.y();
         }),
    once("box", "Boost", outlineAs<Ring>,
         [](Ring const& ring, Work const&) {
             Box box(Point(0, 0), Point(0, 0));
             bg::envelope(ring, box);
             return (box.max_corner().x() - box.min_corner().x()) *
                    (box.max_corner().y() - box.min_corner().y());
         }),
    once("convex_hull", "Boost", outlineAs<Ring>,
         [](Ring const& ring, Work const&) {
             Ring hull;
             bg::convex_hull(ring, hull);
             return std::fabs(bg::area(hull));
         }),
    once("distance_first", "Boost", outlineAs<Line>,
         [](Line const& line, Work const& given) {
             return bg::distance(point(given.queries[0]), line);
         }),
    repeated("distance_repeated", "Boost", edgeTree,
             [](auto const& tree, Work const& given, auto i) {
                 return nearest(tree, given.queries[i]);
             }),
    repeated("nearest_vertex_repeated", "Boost", vertexTree,
             [](auto const& tree, Work const& given, auto i) {
                 auto const distance = nearest(tree, given.queries[i]);
                 return distance * distance;
             }),
    once("inside_first", "Boost", outlineAs<Ring>,
         [](Ring const& ring, Work const& given) {
             return bg::covered_by(point(given.queries[0]), ring);
         }),
    once("inside_eight", "Boost", outlineAs<Ring>,
         [](Ring const& ring, Work const& given) {
             int count = 0;
             for (std::size_t i = 0; i < 8; ++i)
                 count += bg::covered_by(point(given.queries[i]), ring);
             return count;
         }),
    repeated("long_segment_repeated", "Boost", edgeTree,
             [](auto const& tree, Work const& given, auto i) {
                 return hits(tree, given.longSegments[i]);
             }),
    repeated("short_segment_repeated", "Boost", edgeTree,
             [](auto const& tree, Work const& given, auto i) {
                 return hits(tree, given.shortSegments[i]);
             }),
    once(
        "outline_x_outline", "Boost",
        [](Work const& given) {
            return TwoLines{outlineAs<Line>(given), form<Line>(given.other)};
        },
        [](TwoLines const& lines, Work const&) {
            bg::model::multi_point<Point> points;
            bg::intersection(lines.a, lines.b, points);
            return points.size();
        }),
    once("self_crossing", "Boost", outlineAs<Ring>,
         [](Ring const& ring, Work const&) { return bg::intersects(ring); }),
    once("copy", "Boost", outlineAs<Ring>,
         [](Ring const& ring, Work const&) {
             Ring const copy(ring);
             benchmark::DoNotOptimize(copy.data());
             return copy.size() - 1;
         }),
};

}  // namespace
