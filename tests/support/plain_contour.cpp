// Contours answered step by step: measures, nearest places, crossings, enclosing shapes, moments.
#include "tests/support/plain_contour.h"

#include <qc/core/compare.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>

namespace qnPlain {

namespace {

bool overlap(qcRect const& b, qcRect const& r)
{
    qcVector<2> const bMin = b.origin().position(), bMax = b.lr().position();
    qcVector<2> const rMin = r.origin().position(), rMax = r.lr().position();
    return bMax.x() >= rMin.x() && !(bMin.x() > rMax.x()) && bMax.y() >= rMin.y() &&
           !(bMin.y() > rMax.y());
}

qcRect at(qcVector<2> const& point)
{
    return qcRect(point, {0, 0});
}

/// Rounded half away from zero, kept within 32 bits; NaN is near nothing, so any cell will do.
long cell(double coordinate, double tolerance)
{
    double v = coordinate * (1 / tolerance);
    v = v >= 0 ? v + 0.5 : v - 0.5;
    if (std::isnan(v))
        return 0;
    return static_cast<long>(std::max(-2147483648.0, std::min(2147483647.0, v)));
}

}  // namespace

std::vector<qcLineSeg> edges(Points const& p, bool closed)
{
    std::vector<qcLineSeg> all;
    if (closed && !p.empty())
        all.emplace_back(p.back(), p.front());
    for (std::size_t i = 1; i < p.size(); ++i)
        all.emplace_back(p[i - 1], p[i]);
    return all;
}

double length(Points const& points, bool closed)
{
    double sum = 0;
    for (auto const& edge : edges(points, closed))
        sum += edge.p1().distance(edge.p2());
    return sum;
}

qcVector<2> meanPosition(Points const& points, bool closed)
{
    double total = 0, mx = 0, my = 0;
    for (auto const& edge : edges(points, closed)) {
        double const d = (edge.p2() - edge.p1()).len();
        total += d;
        mx += (edge.p1().x() + edge.p2().x()) * 0.5 * d;
        my += (edge.p1().y() + edge.p2().y()) * 0.5 * d;
    }
    return {mx * (1 / total), my * (1 / total)};
}

double medianFeatureSize(Points const& points, bool closed)
{
    std::vector<double> lengths;
    for (auto const& edge : edges(points, closed))
        lengths.push_back(edge.p1().distance(edge.p2()));
    // Largest first; NaN, which is in no order with numbers, after all of them.
    std::sort(lengths.begin(), lengths.end(),
              [](double a, double b) { return a > b || (a == a && b != b); });
    return lengths[lengths.size() / 2];
}

long closestVertexIndex(Points const& points, qcVector<2> const& place)
{
    double best = HUGE_VAL;
    long index = 0;
    for (std::size_t i = 0; i < points.size(); ++i)
        if (double const d = place.distance(points[i]); d < best) {
            best = d;
            index = static_cast<long>(i);
        }
    return index;
}

qcVector<2> closestPoint(Points const& points, bool closed, qcVector<2> const& place)
{
    qcVector<2> result;
    double best = HUGE_VAL;
    for (auto const& edge : edges(points, closed)) {
        double const d = edge.distToPoint(place);
        if (!(d < best))
            continue;
        best = d;
        qcVector<2> const along = edge.p2() - edge.p1();
        double const t = ((place - edge.p1()) * along) / (along * along);
        result = !(t > 0) ? edge.p1() : t >= 1 ? edge.p2() : edge.line().proj(place).position();
    }
    return result;
}

std::vector<int> vertexIndex(Points const& points, qcVector<2> const& place, double tolerance)
{
    if (!(tolerance > 0))
        return {};
    std::map<std::pair<long, long>, std::vector<int>> grid;
    for (std::size_t k = 0; k < points.size(); ++k)
        grid[{cell(points[k].x(), tolerance), cell(points[k].y(), tolerance)}].push_back(
            static_cast<int>(k));
    std::vector<int> found;
    long const ci = cell(place.x(), tolerance), cj = cell(place.y(), tolerance);
    for (long i = ci - 1; i <= ci + 1; ++i)
        for (long j = cj - 1; j <= cj + 1; ++j)
            if (auto const here = grid.find({i, j}); here != grid.end())
                for (int k : here->second)
                    if (points[static_cast<std::size_t>(k)].distance(place) < tolerance)
                        found.push_back(k);
    return found;
}

long extremalVertexIndex(Points const& points, double angle)
{
    qcVector<2> const d(std::cos(angle), std::sin(angle));
    auto const score = [&](qcVector<2> const& p) {
        if (qfRealEq(d, {1, 0}, 1e-15))
            return p.x();
        if (qfRealEq(d, {-1, 0}, 1e-15))
            return -p.x();
        if (qfRealEq(d, {0, 1}, 1e-15))
            return p.y();
        if (qfRealEq(d, {0, -1}, 1e-15))
            return -p.y();
        return d * p;
    };
    double best = -1.7976931348623157e308;
    long index = -1;
    for (std::size_t i = 0; i < points.size(); ++i)
        if (score(points[i]) > best) {
            best = score(points[i]);
            index = static_cast<long>(i);
        }
    return index;
}

Crossings crossings(Points const& points, bool closed, qcLineSeg const& segment, bool touchingEnds)
{
    qcVector<2> const a = segment.p1(), b = segment.p2();
    qcRect const r = at(b).enclose(at(a));
    Crossings hits;
    if (!overlap(encloseRect(points, qcXform<2>()), r))
        return hits;
    auto const all = edges(points, closed);
    for (std::size_t k = 0; k < all.size(); ++k) {
        qcLineSeg const& edge = all[k];
        if (qfRealEq(edge.p1(), edge.p2(), 1e-15) ||
            !overlap(at(edge.p1()).enclose(at(edge.p2())), r) ||
            edge.line().isParallel(segment.line()))
            continue;
        if (!touchingEnds && !(edge.distToPoint(a) > 1e-6 && edge.distToPoint(b) > 1e-6))
            continue;
        qcVector<2> const p = edge.line().intersect(segment.line()).position();
        if (edge.distToPoint(p) < 1e-6 && segment.distToPoint(p) < 1e-6) {
            hits.points.push_back(p);
            hits.edges.push_back(static_cast<int>(k));
        }
    }
    auto const key = [&](std::size_t i) { return (hits.points[i] - a) * (b - a); };
    for (std::size_t i = 0; i + 1 < hits.points.size(); ++i)
        for (std::size_t j = i + 1; j < hits.points.size(); ++j)
            if (key(i) > key(j)) {
                std::swap(hits.points[i], hits.points[j]);
                std::swap(hits.edges[i], hits.edges[j]);
            }
    return hits;
}

bool isSelfIntersecting(Points const& points, bool closed)
{
    for (auto const& edge : edges(points, closed))
        if (!qfRealEq(edge.p1(), edge.p2(), 1e-15) &&
            !crossings(points, closed, edge, false).points.empty())
            return true;
    return false;
}

qcRect encloseRect(Points const& points, qcXform<2> const& xform)
{
    bool const identity =
        qfRealEq(xform.trans(), {0, 0}, 1e-15) && qfRealEq(xform.matrix(), qcMatrix<2>(), 1e-15);
    auto const place = [&](qcVector<2> const& p) { return identity ? p : xform * p; };
    qcRect rect = at(place(points.at(0)));
    for (auto const& p : points)
        rect = rect.enclose(at(place(p)));
    return rect;
}

qcCircle farthestPairCircle(Points const& points)
{
    qcCircle circle;
    double best = 0;
    for (auto const& p : points)
        for (auto const& q : points)
            if (double const d = p.distance(q); d > best) {
                best = d;
                circle = qcCircle((p + q) * 0.5, d * 0.5);
            }
    return circle;
}

qcCircle firstPointCircle(Points const& points)
{
    if (points.empty())
        return {};
    double r = 0;
    for (auto const& p : points)
        r = points[0].distance(p) > r ? points[0].distance(p) : r;
    return {points[0], r};
}

/// By sums over the edges: exact in principle, and nothing like a fan of triangles.
qc_InertiaData inertiaDataPolygon(Points const& points)
{
    double a = 0, x = 0, y = 0, xx = 0, xy = 0, yy = 0;
    for (auto const& edge : edges(points, true)) {
        double const px = edge.p1().x(), py = edge.p1().y(), qx = edge.p2().x(), qy = edge.p2().y();
        double const k = px * qy - py * qx;
        a += k / 2;
        x += k * (px + qx) / 6;
        y += k * (py + qy) / 6;
        xx += k * (px * px + px * qx + qx * qx) / 12;
        yy += k * (py * py + py * qy + qy * qy) / 12;
        xy += k * (2 * px * py + px * qy + qx * py + 2 * qx * qy) / 24;
    }
    double const sign = a < 0 ? -1 : 1, m01 = sign * (xy - x * y / a);
    return qc_InertiaData(a, {x / a, y / a},
                          {sign * (xx - x * x / a), m01, m01, sign * (yy - y * y / a)});
}

}  // namespace qnPlain
