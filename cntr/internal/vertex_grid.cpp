// Vertices by column and y: sorting, lookup around a point.
#include "cntr/internal/vertex_grid.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <tuple>

namespace qnInternal {

namespace {

/// The multiple of the cell's width that a coordinate is nearest to, half away from 0. Never falls where
/// the coordinate grows. NaN counts as 0.
double roundedMultiple(double coordinate, double tolerance)
{
    double const scaled = coordinate * (1 / tolerance);
    if (scaled != scaled)
        return 0;
    return std::trunc(scaled >= 0 ? scaled + 0.5 : scaled - 0.5);
}

/// No column lies between one and the next.
double nextColumn(double column)
{
    return std::max(column + 1, std::nextafter(column, std::numeric_limits<double>::infinity()));
}

/// In tolerances, how far from a point vertices are looked at: room for the rounding of distances.
constexpr double kReach = 1 + 1e-9;

std::int32_t cellNumber(double coordinate, double tolerance)
{
    constexpr double kSmallest = std::numeric_limits<std::int32_t>::min();
    constexpr double kLargest = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(
        std::clamp(roundedMultiple(coordinate, tolerance), kSmallest, kLargest));
}

bool isFinite(qcVector<2> const& point)
{
    return std::isfinite(point.x()) && std::isfinite(point.y());
}

}  // namespace

VertexGrid::VertexGrid(std::vector<qcVector<2>> const& points, double tolerance)
    : tolerance_(tolerance)
{
    entries_.reserve(points.size());
    for (std::size_t i = 0; i < points.size(); ++i)
        if (isFinite(points[i]))
            entries_.push_back({columnOf(points[i].x()), points[i].y(), static_cast<int>(i)});
    std::sort(entries_.begin(), entries_.end(), less);
}

bool VertexGrid::less(Entry const& a, Entry const& b)
{
    return a.column < b.column || (a.column == b.column && a.y < b.y);
}

double VertexGrid::columnOf(double x) const
{
    return roundedMultiple(x, tolerance_);
}

VertexGrid::Cell VertexGrid::cellOf(qcVector<2> const& point) const
{
    return {cellNumber(point.x(), tolerance_), cellNumber(point.y(), tolerance_)};
}

bool VertexGrid::areNeighbours(qcVector<2> const& a, qcVector<2> const& b) const
{
    auto const apart = [](std::int32_t m, std::int32_t n) {
        return std::abs(std::int64_t{m} - std::int64_t{n}) > 1;
    };
    Cell const first = cellOf(a);
    Cell const second = cellOf(b);
    return !apart(first.column, second.column) && !apart(first.row, second.row);
}

std::vector<int> VertexGrid::near(std::vector<qcVector<2>> const& points,
                                  qcVector<2> const& point) const
{
    std::vector<int> found;
    if (!isFinite(point))
        return found;
    double const reach = kReach * tolerance_;
    double const lowest = point.y() - reach;
    double const last = columnOf(point.x() + reach);
    Entry from{columnOf(point.x() - reach), lowest, 0};
    auto next = entries_.begin();
    while (true) {
        next = std::lower_bound(next, entries_.end(), from, less);
        if (next == entries_.end() || next->column > last)
            break;
        if (next->column > from.column && next->y < lowest) {
            from.column = next->column;  // columns were passed over: where this one comes near
            continue;
        }
        appendNear(found, points, point, next);
        from.column = nextColumn(next->column);
        if (from.column == next->column)
            break;  // infinite, for the tiniest tolerances
    }
    std::sort(found.begin(), found.end(), [&](int a, int b) {
        Cell const first = cellOf(points[static_cast<std::size_t>(a)]);
        Cell const second = cellOf(points[static_cast<std::size_t>(b)]);
        return std::tie(first.column, first.row, a) < std::tie(second.column, second.row, b);
    });
    return found;
}

void VertexGrid::appendNear(std::vector<int>& found, std::vector<qcVector<2>> const& points,
                            qcVector<2> const& point, Place begin) const
{
    double const highest = point.y() + kReach * tolerance_;
    for (auto entry = begin;
         entry != entries_.end() && entry->column == begin->column && entry->y <= highest;
         ++entry) {
        qcVector<2> const& vertex = points[static_cast<std::size_t>(entry->vertex)];
        if (vertex.distance(point) < tolerance_ && areNeighbours(vertex, point))
            found.push_back(entry->vertex);
    }
}

}  // namespace qnInternal

qnInternal::VertexGrid const& qc_VertexIndexCache::grid(std::vector<qcVector<2>> const& points,
                                                        double tolerance)
{
    for (auto const& grid : grids_)
        if (grid.tolerance() == tolerance)
            return grid;
    return grids_.emplace_back(points, tolerance);
}
