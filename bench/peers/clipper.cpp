// Clipper 6: integer coordinates, so outlines are scaled to a millionth of a unit.
#include "support/questions.h"

#include <polyclipping/clipper.hpp>

#include <cmath>

namespace {

using namespace qnBench;
namespace cl = ClipperLib;

cl::IntPoint scaled(qcVector<2> const& at)
{
    return cl::IntPoint(std::llround(at.x() * 1e6), std::llround(at.y() * 1e6));
}

cl::Path path(Work const& given)
{
    cl::Path made;
    for (auto const& at : given.outline)
        made.push_back(scaled(at));
    return made;
}

bool const registered[] = {
    once("area", "Clipper6", path,
         [](cl::Path const& outline, Work const&) { return std::fabs(cl::Area(outline)) * 1e-12; }),
    once("inside_first", "Clipper6", path,
         [](cl::Path const& outline, Work const& given) {
             return cl::PointInPolygon(scaled(given.queries[0]), outline) != 0;
         }),
    once("inside_eight", "Clipper6", path,
         [](cl::Path const& outline, Work const& given) {
             int count = 0;
             for (std::size_t i = 0; i < 8; ++i)
                 count += cl::PointInPolygon(scaled(given.queries[i]), outline) != 0;
             return count;
         }),
    once("regularise", "Clipper6", path,
         [](cl::Path const& outline, Work const&) {
             cl::Paths simple;
             cl::SimplifyPolygon(outline, simple, cl::pftNonZero);
             return simple.size();
         }),
};

}  // namespace
