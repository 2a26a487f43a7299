// GEOS, through its C++ classes: no cost of an interface between.
#include "support/questions.h"

#include <geos/algorithm/LineIntersector.h>
#include <geos/algorithm/locate/IndexedPointInAreaLocator.h>
#include <geos/geom/CoordinateArraySequence.h>
#include <geos/geom/GeometryFactory.h>
#include <geos/geom/LineString.h>
#include <geos/geom/LinearRing.h>
#include <geos/geom/Point.h>
#include <geos/geom/Polygon.h>
#include <geos/geom/prep/PreparedGeometryFactory.h>
#include <geos/index/strtree/TemplateSTRtree.h>
#include <geos/noding/BasicSegmentString.h>
#include <geos/noding/MCIndexSegmentSetMutualIntersector.h>
#include <geos/noding/SegmentIntersector.h>
#include <geos/operation/distance/IndexedFacetDistance.h>
#include <geos/operation/valid/IsSimpleOp.h>

#include <memory>

namespace {

using namespace qnBench;
using namespace geos::geom;
using Ptr = std::unique_ptr<Geometry>;

GeometryFactory const& factory()
{
    return *GeometryFactory::getDefaultInstance();
}

std::unique_ptr<CoordinateArraySequence> sequence(Points const& points, bool closed)
{
    std::vector<Coordinate> all;
    for (auto const& at : points)
        all.emplace_back(at.x(), at.y());
    if (closed)
        all.push_back(all.front());
    return std::make_unique<CoordinateArraySequence>(std::move(all), 2);
}

std::shared_ptr<Geometry> line(Points const& points, bool closed = true)
{
    return factory().createLineString(sequence(points, closed));
}

Ptr polygonOf(Points const& points)
{
    return factory().createPolygon(factory().createLinearRing(sequence(points, true)));
}

std::shared_ptr<Geometry> outline(Work const& given)
{
    return line(given.outline);
}

std::shared_ptr<Geometry> polygon(Work const& given)
{
    return polygonOf(given.outline);
}

/// Members are kept in order of destruction: an index refers to the geometry before it.
template <class Index>
struct Indexed {
    std::shared_ptr<Geometry> geometry;
    std::shared_ptr<Index> index;
};

template <class Index>
Indexed<Index> indexed(std::shared_ptr<Geometry> geometry)
{
    auto index = std::make_shared<Index>(geometry.get());
    return {std::move(geometry), std::move(index)};
}

using Locator = geos::algorithm::locate::IndexedPointInAreaLocator;

struct LocatorOf : Locator {
    explicit LocatorOf(Geometry const* geometry) : Locator(*geometry) {}
};

/// A tree of the edges of an outline.
struct EdgeTree {
    std::shared_ptr<Geometry> geometry;
    std::shared_ptr<geos::index::strtree::TemplateSTRtree<std::size_t>> tree;
};

EdgeTree edgeTree(Work const& given)
{
    EdgeTree made{outline(given), nullptr};
    auto const& at = *static_cast<LineString const&>(*made.geometry).getCoordinatesRO();
    made.tree = std::make_shared<geos::index::strtree::TemplateSTRtree<std::size_t>>(8, at.size());
    for (std::size_t k = 0; k + 1 < at.size(); ++k)
        made.tree->insert(Envelope(at[k], at[k + 1]), k);
    return made;
}

std::size_t hits(EdgeTree const& edges, Points const& ends)
{
    auto const& at = *static_cast<LineString const&>(*edges.geometry).getCoordinatesRO();
    Coordinate const a(ends[0].x(), ends[0].y()), b(ends[1].x(), ends[1].y());
    geos::algorithm::LineIntersector crossing;
    std::size_t count = 0;
    edges.tree->query(Envelope(a, b), [&](std::size_t k) {
        crossing.computeIntersection(a, b, at[k], at[k + 1]);
        count += crossing.hasIntersection();
    });
    return count;
}

/// Counts the pairs of edges that meet.
struct Counter : geos::noding::SegmentIntersector {
    void processIntersections(geos::noding::SegmentString* a, std::size_t i,
                              geos::noding::SegmentString* b, std::size_t k) override
    {
        crossing.computeIntersection(a->getCoordinate(i), a->getCoordinate(i + 1),
                                     b->getCoordinate(k), b->getCoordinate(k + 1));
        count += crossing.hasIntersection();
    }

    geos::algorithm::LineIntersector crossing;
    std::size_t count = 0;
};

struct TwoOutlines {
    std::shared_ptr<CoordinateArraySequence> a, b;
};

std::size_t meetings(TwoOutlines const& outlines, Work const&)
{
    geos::noding::BasicSegmentString a(outlines.a.get(), nullptr), b(outlines.b.get(), nullptr);
    geos::noding::SegmentString::ConstVect base{&a}, other{&b};
    geos::noding::MCIndexSegmentSetMutualIntersector intersector;
    Counter counter;
    intersector.setBaseSegments(&base);
    intersector.setSegmentIntersector(&counter);
    intersector.process(&other);
    return counter.count;
}

/// Whether any two outlines of a set meet: pairs from a tree of their boxes, then prepared lines.
bool setCrosses(std::vector<std::shared_ptr<Geometry>> const& set, Work const&)
{
    geos::index::strtree::TemplateSTRtree<std::size_t> tree(8, set.size());
    for (std::size_t i = 0; i < set.size(); ++i)
        tree.insert(*set[i]->getEnvelopeInternal(), i);
    bool found = false;
    for (std::size_t i = 0; i < set.size() && !found; ++i) {
        geos::operation::valid::IsSimpleOp simple(*set[i]);
        found = !simple.isSimple();
        auto const prepared = geos::geom::prep::PreparedGeometryFactory::prepare(set[i].get());
        tree.query(*set[i]->getEnvelopeInternal(), [&](std::size_t k) {
            found = found || (k > i && prepared->intersects(set[k].get()));
        });
    }
    return found;
}

bool const registered[] = {
    once("perimeter", "GEOS", outline,
         [](auto const& geometry, Work const&) { return geometry->getLength(); }),
    once("centre", "GEOS", polygon,
         [](auto const& geometry, Work const&) {
             auto const center = geometry->getCentroid();
             return center->getX() + 3 * center->getY();
         }),
    once("convex_hull", "GEOS", outline,
         [](auto const& geometry, Work const&) { return geometry->convexHull()->getArea(); }),
    repeated(
        "distance_repeated", "GEOS",
        [](Work const& given) {
            return indexed<geos::operation::distance::IndexedFacetDistance>(outline(given));
        },
        [](auto const& form, Work const& given, auto i) {
            auto const at = given.queries[i];
            std::unique_ptr<Geometry> const point(
                factory().createPoint(Coordinate(at.x(), at.y())));
            return form.index->distance(point.get());
        }),
    repeated(
        "inside_repeated", "GEOS",
        [](Work const& given) { return indexed<LocatorOf>(polygon(given)); },
        [](auto const& form, Work const& given, auto i) {
            Coordinate const at(given.queries[i].x(), given.queries[i].y());
            return form.index->locate(&at) == Location::INTERIOR;
        }),
    repeated("long_segment_repeated", "GEOS", edgeTree,
             [](auto const& edges, Work const& given, auto i) {
                 return hits(edges, given.longSegments[i]);
             }),
    repeated("short_segment_repeated", "GEOS", edgeTree,
             [](auto const& edges, Work const& given, auto i) {
                 return hits(edges, given.shortSegments[i]);
             }),
    once(
        "outline_x_outline", "GEOS",
        [](Work const& given) {
            return TwoOutlines{sequence(given.outline, true), sequence(given.other, true)};
        },
        meetings),
    once("self_crossing", "GEOS", outline,
         [](auto const& geometry, Work const&) {
             geos::operation::valid::IsSimpleOp simple(*geometry);
             return !simple.isSimple();
         }),
    once("regularise", "GEOS", polygon,
         [](auto const& geometry, Work const&) { return geometry->buffer(0)->getNumPoints(); }),
    once(
        "set_crossing", "GEOS",
        [](Work const& given) {
            std::vector<std::shared_ptr<Geometry>> set;
            for (auto const& member : given.set)
                set.push_back(line(member));
            return set;
        },
        setCrosses),
    once(
        "set_regularise", "GEOS",
        [](Work const& given) {
            std::vector<Ptr> polygons;
            for (auto const& member : given.set)
                polygons.push_back(polygonOf(member));
            return std::shared_ptr<Geometry>(
                factory().createGeometryCollection(std::move(polygons)));
        },
        [](auto const& set, Work const&) { return set->Union()->getNumPoints(); }),
};

}  // namespace
