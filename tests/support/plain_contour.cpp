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

double Contour::length() const
{
    double sum = 0;
    for (auto const& edge : edges(points_, closed_))
        sum += edge.p1().distance(edge.p2());
    return sum;
}

qcVector<2> Contour::meanPosition() const
{
    double total = 0, mx = 0, my = 0;
    for (auto const& edge : edges(points_, closed_)) {
        double const d = (edge.p2() - edge.p1()).len();
        total += d;
        mx += (edge.p1().x() + edge.p2().x()) * 0.5 * d;
        my += (edge.p1().y() + edge.p2().y()) * 0.5 * d;
    }
    return {mx * (1 / total), my * (1 / total)};
}

double Contour::medianFeatureSize() const
{
    std::vector<double> lengths;
    for (auto const& edge : edges(points_, closed_))
        lengths.push_back(edge.p1().distance(edge.p2()));
    // Largest first; NaN, which is in no order with numbers, after all of them.
    std::sort(lengths.begin(), lengths.end(),
              [](double a, double b) { return a > b || (a == a && b != b); });
    return lengths[lengths.size() / 2];
}

long Contour::closestVertexIndex(qcVector<2> const& place) const
{
    double best = HUGE_VAL;
    long index = 0;
    for (std::size_t i = 0; i < points_.size(); ++i)
        if (double const d = place.distance(points_[i]); d < best) {
            best = d;
            index = static_cast<long>(i);
        }
    return index;
}

qcVector<2> Contour::closestPoint(qcVector<2> const& place, bool verticesOnly) const
{
    if (verticesOnly)
        return points_[static_cast<std::size_t>(closestVertexIndex(place))];
    qcVector<2> result;
    double best = HUGE_VAL;
    for (auto const& edge : edges(points_, closed_)) {
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

double Contour::distToPoint(qcVector<2> const& place, bool verticesOnly) const
{
    return closestPoint(place, verticesOnly).distance(place);
}

std::vector<int> Contour::vertexIndex(qcVector<2> const& place, double tolerance) const
{
    if (!(tolerance > 0))
        return {};
    std::map<std::pair<long, long>, std::vector<int>> grid;
    for (std::size_t k = 0; k < points_.size(); ++k)
        grid[{cell(points_[k].x(), tolerance), cell(points_[k].y(), tolerance)}].push_back(
            static_cast<int>(k));
    std::vector<int> found;
    long const ci = cell(place.x(), tolerance), cj = cell(place.y(), tolerance);
    for (long i = ci - 1; i <= ci + 1; ++i)
        for (long j = cj - 1; j <= cj + 1; ++j)
            if (auto const here = grid.find({i, j}); here != grid.end())
                for (int k : here->second)
                    if (points_[static_cast<std::size_t>(k)].distance(place) < tolerance)
                        found.push_back(k);
    return found;
}

long Contour::extremalVertexIndex(qcRadian angle) const
{
    qcVector<2> const d(std::cos(angle.toDouble()), std::sin(angle.toDouble()));
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
    for (std::size_t i = 0; i < points_.size(); ++i)
        if (score(points_[i]) > best) {
            best = score(points_[i]);
            index = static_cast<long>(i);
        }
    return index;
}

Points Contour::intersections(qcLineSeg const& segment, std::vector<int>& met,
                              bool touchingEnds) const
{
    qcVector<2> const a = segment.p1(), b = segment.p2();
    qcRect const r = at(b).enclose(at(a));
    Points hits;
    met.clear();
    if (!overlap(encloseRect(qcXform<2>()), r))
        return hits;
    auto const all = edges(points_, closed_);
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
            hits.push_back(p);
            met.push_back(static_cast<int>(k));
        }
    }
    auto const key = [&](std::size_t i) { return (hits[i] - a) * (b - a); };
    for (std::size_t i = 0; i + 1 < hits.size(); ++i)
        for (std::size_t j = i + 1; j < hits.size(); ++j)
            if (key(i) > key(j)) {
                std::swap(hits[i], hits[j]);
                std::swap(met[i], met[j]);
            }
    return hits;
}

Points Contour::intersections(qcLineSeg const& segment, bool touchingEnds) const
{
    std::vector<int> unused;
    return intersections(segment, unused, touchingEnds);
}

bool Contour::isSelfIntersecting() const
{
    for (auto const& edge : edges(points_, closed_))
        if (!qfRealEq(edge.p1(), edge.p2(), 1e-15) && !intersections(edge, false).empty())
            return true;
    return false;
}

qcRect Contour::encloseRect(qcXform<2> const& xform) const
{
    bool const identity =
        qfRealEq(xform.trans(), {0, 0}, 1e-15) && qfRealEq(xform.matrix(), qcMatrix<2>(), 1e-15);
    auto const place = [&](qcVector<2> const& p) { return identity ? p : xform * p; };
    qcRect rect = at(place(points_.at(0)));
    for (auto const& p : points_)
        rect = rect.enclose(at(place(p)));
    return rect;
}

qcCircle Contour::encloseCircle(qcContourDefs::DiameterMode mode) const
{
    qcCircle circle;
    double best = 0;
    if (mode == qcContourDefs::eFromFirstPoint && !points_.empty()) {
        for (auto const& p : points_)
            best = std::max(best, points_[0].distance(p));
        return {points_[0], best};
    }
    for (auto const& p : points_)
        for (auto const& q : points_)
            if (double const d = p.distance(q); d > best) {
                best = d;
                circle = qcCircle((p + q) * 0.5, d * 0.5);
            }
    return circle;
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
