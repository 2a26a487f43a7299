// The plain answers about several figures.
#include "tests/support/plain_regionst.h"

#include <cmath>
#include <limits>

namespace qnPlain {
namespace {

bool meet(Points const& first, Points const& second)
{
    for (auto const& edge : edges(second, true))
        if (!Contour(first).intersections(edge, true).empty())
            return true;
    return false;
}

}  // namespace

double area(Set const& set, bool considerHoles)
{
    double sum = 0.0;
    for (auto const& figure : set)
        sum += area(figure, considerHoles);
    return sum;
}

qcVector<2> centerOfMass(Set const& set, bool considerHoles)
{
    double s = 0.0;
    double x = 0.0;
    double y = 0.0;
    for (auto const& figure : set) {
        double const a = area(figure, considerHoles);
        qcVector<2> const c = centerOfMass(figure, considerHoles);
        x += a * c.x();
        y += a * c.y();
        s += a;
    }
    if (!(std::fabs(s) > 1e-15))
        return {0, 0};
    double const reciprocal = 1 / s;
    return {reciprocal * x, reciprocal * y};
}

qcMatrix<2> inertiaMatrix(Set const& set)
{
    qc_InertiaData total;
    for (auto const& figure : set) {
        auto const matrix = inertiaDataPolygon(figure.outline).inertiaMatrix();
        total = total + qc_InertiaData(area(figure, false), centerOfMass(figure, false), matrix);
    }
    return total.inertiaMatrix();
}

bool inside(Set const& set, qcVector<2> const& point, bool considerHoles)
{
    bool any = false;
    for (auto const& figure : set)
        any = any || inside(figure, point, considerHoles);
    return any;
}

double distToPoint(Set const& set, qcVector<2> const& point, bool verticesOnly, bool considerHoles,
                   bool insideIsZero)
{
    double least = std::numeric_limits<double>::infinity();
    for (auto const& figure : set) {
        double e = 0.0;
        if (!insideIsZero || !inside(figure, point, considerHoles)) {
            auto const nearest = closestPoint(figure, point, verticesOnly, considerHoles);
            e = (point - nearest).len();
        }
        if (least > e)
            least = e;
    }
    return least;
}

bool isSelfIntersecting(Set const& set)
{
    for (std::size_t i = 0; i < set.size(); ++i) {
        if (Contour(set[i].outline).isSelfIntersecting())
            return true;
        for (std::size_t j = i + 1; j < set.size(); ++j)
            if (meet(set[i].outline, set[j].outline))
                return true;
    }
    return false;
}

qcRect encloseRect(Set const& set, qcXform<2> const& xform)
{
    qcRect rect = Contour(set.front().outline).encloseRect(xform);
    for (auto const& figure : set)
        rect = rect.enclose(Contour(figure.outline).encloseRect(xform));
    return rect;
}

std::vector<Points> cleaned(Set const& set, bool hull)
{
    std::vector<Points> outlines;
    for (auto const& figure : set)
        outlines.push_back(figure.outline);
    if (!isSelfIntersecting(set))
        return outlines;
    for (std::size_t i = 0; i + 1 < outlines.size(); ++i) {
        std::size_t j = i + 1;
        while (j < outlines.size()) {
            if (meet(outlines[i], outlines[j])) {
                outlines[i] = splice(outlines[i], outlines[j]);
                outlines[j] = Points(outlines.back());
                outlines.pop_back();
            }
            ++j;
        }
    }
    for (auto& outline : outlines)
        if (Contour(outline).isSelfIntersecting())
            outline = hull ? outerHull(outline) : boundaryWalk(outline);
    return outlines;
}

}  // namespace qnPlain
