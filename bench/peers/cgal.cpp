// CGAL, with plain doubles: hull, farthest pair, and its tree of segments (in the plane z = 0).
#include "support/questions.h"

#include <CGAL/AABB_segment_primitive.h>
#include <CGAL/AABB_traits.h>
#include <CGAL/AABB_tree.h>
#include <CGAL/Polygon_2_algorithms.h>
#include <CGAL/Simple_cartesian.h>
#include <CGAL/all_furthest_neighbors_2.h>
#include <CGAL/convex_hull_2.h>

#include <cmath>
#include <iterator>
#include <memory>

namespace {

using namespace qnBench;
using Kernel = CGAL::Simple_cartesian<double>;
using Flat = std::vector<Kernel::Point_2>;
using Edges = std::vector<Kernel::Segment_3>;
using Tree = CGAL::AABB_tree<
    CGAL::AABB_traits<Kernel, CGAL::AABB_segment_primitive<Kernel, Edges::const_iterator>>>;

Flat flat(Work const& given)
{
    Flat made;
    for (auto const& at : given.outline)
        made.emplace_back(at.x(), at.y());
    return made;
}

Flat hull(Flat const& points)
{
    Flat made;
    CGAL::convex_hull_2(points.begin(), points.end(), std::back_inserter(made));
    return made;
}

double farthest(Flat const& points, Work const&)
{
    auto const corners = hull(points);
    std::vector<int> partner;
    CGAL::all_furthest_neighbors_2(corners.begin(), corners.end(), std::back_inserter(partner));
    double longest = 0;
    for (std::size_t i = 0; i < corners.size(); ++i)
        longest = std::max(longest, CGAL::squared_distance(
                                        corners[i], corners[static_cast<std::size_t>(partner[i])]));
    return std::sqrt(longest);
}

struct Nearest {
    std::shared_ptr<Edges> edges;
    std::shared_ptr<Tree> tree;
};

Nearest nearest(Work const& given)
{
    Nearest made{std::make_shared<Edges>(), nullptr};
    auto const n = given.outline.size();
    for (std::size_t i = 0; i < n; ++i) {
        auto const &a = given.outline[(i + n - 1) % n], &b = given.outline[i];
        made.edges->emplace_back(Kernel::Point_3(a.x(), a.y(), 0),
                                 Kernel::Point_3(b.x(), b.y(), 0));
    }
    made.tree = std::make_shared<Tree>(made.edges->cbegin(), made.edges->cend());
    made.tree->accelerate_distance_queries();
    return made;
}

bool const registered[] = {
    once("area", "CGAL", flat,
         [](Flat const& points, Work const&) {
             return std::fabs(CGAL::polygon_area_2(points.begin(), points.end(), Kernel()));
         }),
    once("convex_hull", "CGAL", flat,
         [](Flat const& points, Work const&) {
             auto const corners = hull(points);
             return CGAL::polygon_area_2(corners.begin(), corners.end(), Kernel());
         }),
    once("farthest_pair", "CGAL", flat, farthest),
    repeated("distance_repeated", "CGAL", nearest,
             [](auto const& form, Work const& given, auto i) {
                 auto const at = given.queries[i];
                 return std::sqrt(form.tree->squared_distance(Kernel::Point_3(at.x(), at.y(), 0)));
             }),
};

}  // namespace
