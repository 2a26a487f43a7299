// workloads NAME: one fixed amount of work, whose instructions are counted. Without a name, lists them.
#include "support/outlines.h"

#include <cntr/cntr.h>

#include <cstdio>
#include <functional>
#include <map>
#include <string>

namespace {

using qnBench::outline;
using qnBench::Points;

/// Points on a lattice over the square that the outlines lie in.
Points lattice(int side)
{
    Points points;
    for (int i = 0; i < side * side; ++i)
        points.emplace_back((i % side + 0.4) * 4000 / side, (i / side + 0.7) * 4000 / side);
    return points;
}

/// The sum of ask(object, point) over a lattice.
template <class Object, class Ask>
double sum(std::string const& shape, std::size_t n, int side, Ask ask)
{
    Object const object(outline(shape, n));
    double total = 0;
    for (auto const& point : lattice(side))
        total += static_cast<double>(ask(object, point));
    return total;
}

auto const distance = [](qcContour const& contour, qcVector<2> const& point) {
    return contour.distToPoint(point, false);
};
auto const vertex = [](qcContour const& contour, qcVector<2> const& point) {
    return contour.closestVertexIndex(point);
};
auto const inside = [](qcRegion const& region, qcVector<2> const& point) {
    return region.inside(point, false);
};
auto const segment = [](qcContour const& contour, qcVector<2> const& point) {
    return contour.intersections(qcLineSeg(point, {4000 - point.y(), point.x()}), true).size();
};

double measures(std::size_t n, int times)
{
    double total = 0;
    auto const points = outline("star", n);
    for (int i = 0; i < times; ++i) {
        qcRegion region(points);
        qcRegion hull;
        region.convexHull(hull);
        total += region.length() + region.area(false) + region.inertiaMatrix(false).element(0, 0) +
                 region.encloseRect(qcXform<2>::I).size().x() + hull.area(false);
    }
    return total;
}

double savedAndLoaded()
{
    qcContour contour(outline("star", 10000));
    qcMemoryArchive out;
    out || contour;
    out.close();
    qcMemoryArchive in(out.bytes().data(), out.bytes().size());
    qcContour loaded;
    in || loaded;
    return loaded.points().back().x();
}

double regularised(std::string const& shape, std::size_t n)
{
    qcRegion result;
    qcRegion(outline(shape, n)).regularize(result);
    return static_cast<double>(result.points().size());
}

double merged()
{
    std::vector<qcPtrHandle<qcRegion>> regions;
    for (int i = 0; i < 200; ++i) {
        auto points = outline("star", 64);
        for (auto& point : points)
            point += qcVector<2>(2000.0 * (i % 20), 2000.0 * (i / 20));
        regions.emplace_back(new qcRegion(points));
    }
    qcRegionSet result;
    qcRegionSet(regions).regularize(result);
    return static_cast<double>(result.regions().size());
}

std::map<std::string, std::function<double()>> const workloads{
    {"measures_10000", [] { return measures(10000, 3); }},
    {"measures_16", [] { return measures(16, 500); }},
    {"distance_star_10000", [] { return sum<qcContour>("star", 10000, 40, distance); }},
    {"distance_comb_10000", [] { return sum<qcContour>("comb", 10000, 40, distance); }},
    {"vertex_comb_10000", [] { return sum<qcContour>("comb", 10000, 40, vertex); }},
    {"distance_16", [] { return sum<qcContour>("star", 16, 100, distance); }},
    {"inside_comb_10000", [] { return sum<qcRegion>("comb", 10000, 40, inside); }},
    {"inside_spiral_10000", [] { return sum<qcRegion>("spiral", 10000, 40, inside); }},
    {"inside_16", [] { return sum<qcRegion>("star", 16, 100, inside); }},
    {"segments_comb_10000", [] { return sum<qcContour>("comb", 10000, 20, segment); }},
    {"segments_16", [] { return sum<qcContour>("star", 16, 100, segment); }},
    {"self_crossing_10000",
     [] { return double(qcContour(outline("comb", 10000)).isSelfIntersecting()); }},
    {"farthest_circle_5000",
     [] { return qcContour(outline("circle", 5000)).diameter(qcContourDefs::eFarthestPair); }},
    {"self_crossing_teeth_2000",
     [] { return double(qcContour(outline("teeth", 2000)).isSelfIntersecting()); }},
    {"regularise_few_5000", [] { return regularised("few", 5000); }},
    {"regularise_loops_5000", [] { return regularised("loops", 5000); }},
    {"regularise_rose_2000", [] { return regularised("rose", 2000); }},
    {"merge_200", merged},
    {"save_load_10000", savedAndLoaded},
};

}  // namespace

int main(int argc, char** argv)
{
    if (argc < 2) {
        for (auto const& each : workloads)
            std::puts(each.first.c_str());
        return 0;
    }
    auto const found = workloads.find(argv[1]);
    if (found == workloads.end()) {
        std::fprintf(stderr, "workloads: there is no '%s'\n", argv[1]);
        return 2;
    }
    std::printf("%.17g\n", found->second());
    return 0;
}
