// nanoflann: a k-d tree of the vertices.
#include "support/questions.h"

#include <nanoflann.hpp>

#include <memory>

namespace {

using namespace qnBench;

struct Cloud {
    Points points;

    std::size_t kdtree_get_point_count() const { return points.size(); }
    double kdtree_get_pt(std::size_t i, std::size_t axis) const
    {
        return axis == 0 ? points[i].x() : points[i].y();
    }
    template <class Box>
    bool kdtree_get_bbox(Box&) const
    {
        return false;
    }
};

using Tree = nanoflann::KDTreeSingleIndexAdaptor<nanoflann::L2_Simple_Adaptor<double, Cloud>, Cloud,
                                                 2, std::size_t>;

struct Nearest {
    std::shared_ptr<Cloud> cloud;
    std::shared_ptr<Tree> tree;
};

Nearest nearest(Work const& given)
{
    auto cloud = std::make_shared<Cloud>(Cloud{given.outline});
    auto tree = std::make_shared<Tree>(2, *cloud);
    tree->buildIndex();
    return {cloud, tree};
}

bool const registered[] = {
    repeated("nearest_vertex_repeated", "nanoflann", nearest,
             [](auto const& form, Work const& given, auto i) {
                 double const at[] = {given.queries[i].x(), given.queries[i].y()};
                 std::size_t index = 0;
                 double squared = 0;
                 form.tree->knnSearch(at, 1, &index, &squared);
                 return squared;
             }),
};

}  // namespace
