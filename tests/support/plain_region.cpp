// Regions answered step by step: containment, nearest places, boundary walk, outer hull, splicing.
#include "tests/support/plain_region.h"

#include <cntr/contour_defs.h>
#include <cntr/moments.h>

#include <qc/core/compare.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>
#include <tuple>

namespace qnPlain {

namespace {

qcVector<2> const& edgeStart(Points const& p, std::size_t k)
{
    return p[k == 0 ? p.size() - 1 : k - 1];
}

std::size_t meetings(Points const& outline, qcVector<2> const& a, qcVector<2> const& b,
                     bool touchingEnds)
{
    return Contour(outline).intersections(qcLineSeg(a, b), touchingEnds).size();
}

/// Vertices nearer than a millionth, in the order in which the grid holds them.
std::vector<std::size_t> sameVertices(Points const& points, qcVector<2> const& place)
{
    if (points.size() < 2)
        throw qcContourDefs::EmptyContour();
    auto const found = Contour(points).vertexIndex(place, 1e-6);
    return {found.begin(), found.end()};
}

void appendRound(Points& list, Points const& loop, std::size_t first, std::size_t end)
{
    for (std::size_t i = first; i < end; ++i)
        list.push_back(loop[i % loop.size()]);
}

/// One cut; false where no loop passes a vertex twice.
bool cutOnce(std::vector<Points>& loops)
{
    for (auto& loop : loops)
        for (std::size_t i = 0; i < loop.size(); ++i)
            for (std::size_t j : sameVertices(loop, loop[i])) {
                if (j == i)
                    continue;
                if (j < i)
                    j += loop.size();
                Points first, second;
                appendRound(first, loop, i, j);
                appendRound(second, loop, j, i + loop.size());
                loop = first;
                loops.push_back(second);
                return true;
            }
    return false;
}

bool dropOnce(std::vector<Points>& loops)
{
    for (std::size_t i = 0; i < loops.size(); ++i)
        for (std::size_t j = 0; j < loops.size(); ++j)
            if (i != j && inside({loops[j], {}}, (loops[i][0] + loops[i][1]) / 2.0, true)) {
                loops[i] = Points(loops.back());
                loops.pop_back();
                return true;
            }
    return false;
}

bool joinOnce(std::vector<Points>& loops)
{
    for (std::size_t u = 0; u + 1 < loops.size(); ++u)
        for (std::size_t w = u + 1; w < loops.size(); ++w)
            for (std::size_t a = 0; a < loops[u].size(); ++a) {
                auto const shared = sameVertices(loops[w], loops[u][a]);
                if (shared.empty())
                    continue;
                Points joined;
                appendRound(joined, loops[u], a, a + loops[u].size());
                appendRound(joined, loops[w], shared[0], shared[0] + loops[w].size());
                loops[u] = joined;
                loops[w] = Points(loops.back());
                loops.pop_back();
                return true;
            }
    return false;
}

bool meet(Points const& first, Points const& second)
{
    for (auto const& edge : edges(second, true))
        if (!Contour(first).intersections(edge, true).empty())
            return true;
    return false;
}

}  // namespace

long insideCount(Points const& outline, qcVector<2> const& point, bool twoRays)
{
    if (!Contour(outline).encloseRect(qcXform<2>()).within(point))
        return 0;
    std::vector<double> angles;
    for (auto const& vertex : outline) {
        if (!((vertex - point).len() > 1e-6))
            return 1;
        angles.push_back((vertex - point).angle().norm().toDouble());
    }
    std::sort(angles.begin(), angles.end());
    qcVector<2> direction(1, 0);
    for (std::size_t j = 0; j < angles.size(); ++j) {
        double const next = angles[(j + 1) % angles.size()];
        double const gap = qcRadian(next - angles[j]).norm().toDouble();
        if (gap > 3.14159265358979323846 / static_cast<double>(angles.size())) {
            direction = qcVector<2>(1.0, qcRadian(angles[j] + gap / 2));
            break;
        }
    }
    qcVector<2> const reach =
        direction * (2 * Contour(outline).encloseCircle(qcContourDefs::eFromFirstPoint).radius());
    std::size_t count = meetings(outline, point, point + reach, false);
    if (twoRays)
        count = std::min(count, meetings(outline, point, point - reach, false));
    return static_cast<long>(count);
}

bool inside(Figure const& figure, qcVector<2> const& point, bool considerHoles)
{
    if (insideCount(figure.outline, point, false) % 2 != 1)
        return false;
    return !considerHoles ||
           std::none_of(figure.holes.begin(), figure.holes.end(),
                        [&](Figure const& hole) { return inside(hole, point, true); });
}

NamedVertex closestVertex(Figure const& figure, qcVector<2> const& point, bool considerHoles)
{
    NamedVertex closest{-1, Contour(figure.outline).closestVertexIndex(point)};
    double best = point.distance(figure.outline[static_cast<std::size_t>(closest.index)]);
    for (std::size_t h = 0; considerHoles && h < figure.holes.size(); ++h) {
        Points const& hole = figure.holes[h].outline;
        long const index = Contour(hole).closestVertexIndex(point);
        double const d = point.distance(hole[static_cast<std::size_t>(index)]);
        if (d < best) {
            best = d;
            closest = {static_cast<long>(h), index};
        }
    }
    return closest;
}

qcVector<2> closestPoint(Figure const& figure, qcVector<2> const& point, bool verticesOnly,
                         bool considerHoles)
{
    if (verticesOnly) {
        auto const [which, index] = closestVertex(figure, point, considerHoles);
        return (which < 0 ? figure : figure.holes[static_cast<std::size_t>(which)])
            .outline[static_cast<std::size_t>(index)];
    }
    qcVector<2> best = Contour(figure.outline).closestPoint(point, false);
    for (auto const& hole : figure.holes) {
        qcVector<2> const candidate = Contour(hole.outline).closestPoint(point, false);
        if (point.distance(candidate) < point.distance(best))
            best = candidate;
    }
    return best;
}

double area(Figure const& figure, bool considerHoles)
{
    double total = qf_Area(figure.outline);
    for (std::size_t h = 0; considerHoles && h < figure.holes.size(); ++h)
        total -= qf_Area(figure.holes[h].outline);
    return total;
}

qcVector<2> centerOfMass(Figure const& figure, bool considerHoles)
{
    qcVector<2> const center = qf_CenterOfMass(figure.outline);
    if (!considerHoles || figure.holes.empty())
        return center;
    double rest = qf_Area(figure.outline);
    qcVector<2> sum = center * rest;
    for (auto const& hole : figure.holes) {
        double const a = qf_Area(hole.outline);
        sum = sum - qf_CenterOfMass(hole.outline) * a;
        rest = rest - a;
    }
    return sum * (1 / rest);
}

long startEdge(Points const& p)
{
    double const e = 0.01 * Contour(p).medianFeatureSize();
    for (std::size_t i = 0; i + 1 < p.size(); ++i) {
        qcVector<2> const u = (p[i] - p[i + 1]).unit();
        qcVector<2> const m = (p[i] + p[i + 1]) * 0.5;
        qcVector<2> const v(-u.y(), u.x());
        qcVector<2> const a = m + v * e;
        qcVector<2> const b = m - v * e;
        bool const clear = meetings(p, a, b, true) == 1 && meetings(p, p[i], p[i + 1], true) == 2;
        if (clear && (insideCount(p, a, true) == 0 || insideCount(p, b, true) == 0))
            return static_cast<long>(i);
    }
    return -1;
}

Points boundaryWalk(Points const& p)
{
    if (p.size() < 3)
        throw qcContourDefs::EmptyContour();
    long const start = startEdge(p);
    if (start < 0)
        throw qcContourDefs::BadParams(L"invalid contour");
    std::size_t const n = p.size();
    auto const s = static_cast<std::size_t>(start);
    qcVector<2> c = p[s];
    std::size_t k = s + 1;
    bool forward = true;
    Points walked;
    std::vector<int> met;
    std::set<std::tuple<double, double, std::size_t, bool>> seen;
    do {
        if (!seen.emplace(c.x(), c.y(), k, forward).second)
            throw qcContourDefs::BadParams(L"invalid contour");
        qcVector<2> const t = forward ? p[k] : p[(k + n - 1) % n];
        auto const crossed = Contour(p).intersections(qcLineSeg(c, t), met, false);
        if (!crossed.empty()) {
            c = crossed[0];
            forward = !forward;
            k = static_cast<std::size_t>(met[0]);
        } else {
            c = t;
            k = (forward ? k + 1 : k + n - 1) % n;
        }
        walked.push_back(c);
    } while (!(c == p[s]));
    return walked;
}

Points outerHull(Points const& outline)
{
    std::vector<Points> loops{boundaryWalk(outline)};
    while (cutOnce(loops)) {}
    while (dropOnce(loops)) {}
    while (joinOnce(loops)) {}
    return loops[0];
}

Points splice(Points const& first, Points const& second)
{
    for (std::size_t i = 0; i < first.size(); ++i) {
        if (qfRealEq(edgeStart(first, i), first[i], 1e-15))
            continue;
        std::vector<int> met;
        auto const crossed =
            Contour(second).intersections(qcLineSeg(edgeStart(first, i), first[i]), met, true);
        if (crossed.empty())
            continue;
        Points list{crossed[0]};
        appendRound(list, first, i, i + first.size());
        list.push_back(crossed[0]);
        auto const j = static_cast<std::size_t>(met[0]);
        appendRound(list, second, j, j + second.size());
        return list;
    }
    throw qcContourDefs::BadParams(L"spliced regions do not intersect");
}

double area(Set const& set, bool considerHoles)
{
    double sum = 0.0;
    for (auto const& figure : set)
        sum += area(figure, considerHoles);
    return sum;
}

qcVector<2> centerOfMass(Set const& set, bool considerHoles)
{
    double total = 0.0;
    qcVector<2> sum;
    for (auto const& figure : set) {
        double const a = area(figure, considerHoles);
        sum += centerOfMass(figure, considerHoles) * a;
        total += a;
    }
    return std::fabs(total) > 1e-15 ? sum * (1 / total) : qcVector<2>();
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
