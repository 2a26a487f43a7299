// Vertices by column and row: sorting, lookup around a point.
#include "cntr/internal/vertex_grid.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>
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

/// How far from a point vertices are looked at: room for the rounding of distances, and for those whose
/// squares are too small for a double.
double reachOf(double tolerance)
{
    constexpr double kDistanceRounding = 1e-9;
    constexpr double kSquareVanishes = 1e-160;
    return tolerance * (1 + kDistanceRounding) + kSquareVanishes;
}

constexpr double kLastCell = std::numeric_limits<std::int32_t>::max();

/// The cell of a column or row.
double cellNumber(double multiple)
{
    return std::clamp(multiple, -kLastCell - 1, kLastCell);
}

/// Whether the cell and those around it hold one column or row each.
bool isInner(double multiple)
{
    return std::fabs(multiple) < kLastCell - 1;
}

bool areNeighbours(double multiple, double other)
{
    return std::fabs(cellNumber(multiple) - cellNumber(other)) <= 1;
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
            entries_.push_back({placeOf(points[i]), static_cast<int>(i)});
    std::sort(entries_.begin(), entries_.end(), isEntryBefore);
}

bool VertexGrid::isBefore(Entry const& a, Place const& b)
{
    return a.place.column < b.column || (a.place.column == b.column && a.place.row < b.row);
}

bool VertexGrid::isEntryBefore(Entry const& a, Entry const& b)
{
    return std::tie(a.place.column, a.place.row, a.vertex) <
           std::tie(b.place.column, b.place.row, b.vertex);
}

VertexGrid::Place VertexGrid::placeOf(qcVector<2> const& point) const
{
    return {roundedMultiple(point.x(), tolerance_), roundedMultiple(point.y(), tolerance_)};
}

VertexGrid::Place VertexGrid::cellOf(qcVector<2> const& point) const
{
    Place const place = placeOf(point);
    return {cellNumber(place.column), cellNumber(place.row)};
}

std::vector<int> VertexGrid::inCompany() const
{
    // Vertices that are near each other stand in neighbouring columns, or rounding has put one between.
    // Infinite columns are not apart either.
    auto const apart = [](Entry const& a, Entry const& b) {
        return std::fabs(a.place.column - b.place.column) > 2;
    };
    std::vector<int> vertices;
    for (auto entry = entries_.begin(); entry != entries_.end(); ++entry) {
        bool const first = entry == entries_.begin();
        bool const last = std::next(entry) == entries_.end();
        if (!((first || apart(*std::prev(entry), *entry)) &&
              (last || apart(*entry, *std::next(entry)))))
            vertices.push_back(entry->vertex);
    }
    return vertices;
}

void VertexGrid::findNear(std::vector<qcVector<2>> const& points, qcVector<2> const& point,
                          std::vector<int>& found) const
{
    found.clear();
    if (!isFinite(point))
        return;
    Place const place = placeOf(point);
    if (!isInner(place.column) || !isInner(place.row))
        return findNearOutermost(points, point, found);
    forEachBetween({place.column - 1, place.row - 1}, {place.column + 1, place.row + 1},
                   [&](Entry const& entry) {
                       auto const i = static_cast<std::size_t>(entry.vertex);
                       if (points[i].distance(point) < tolerance_)
                           found.push_back(entry.vertex);
                   });
}

void VertexGrid::findNearOutermost(std::vector<qcVector<2>> const& points, qcVector<2> const& point,
                                   std::vector<int>& found) const
{
    Place const place = placeOf(point);
    qcVector<2> const reach(reachOf(tolerance_), reachOf(tolerance_));
    auto const vertex = [&](int number) { return points[static_cast<std::size_t>(number)]; };
    forEachBetween(placeOf(point - reach), placeOf(point + reach), [&](Entry const& entry) {
        if (areNeighbours(entry.place.column, place.column) &&
            areNeighbours(entry.place.row, place.row) &&
            vertex(entry.vertex).distance(point) < tolerance_)
            found.push_back(entry.vertex);
    });
    // Cells that hold many columns or rows.
    if (found.size() > 1)
        std::sort(found.begin(), found.end(), [&](int a, int b) {
            return isEntryBefore({cellOf(vertex(a)), a}, {cellOf(vertex(b)), b});
        });
}

template <class Visit>
void VertexGrid::forEachBetween(Place const& low, Place const& high, Visit const& visit) const
{
    Place from = low;
    auto entry = entries_.begin();
    while (true) {
        entry = std::lower_bound(entry, entries_.end(), from, isBefore);
        if (entry == entries_.end() || entry->place.column > high.column)
            return;
        double const column = entry->place.column;
        if (column > from.column && entry->place.row < low.row) {
            from.column = column;  // columns were passed over: where this one comes near
            continue;
        }
        for (; entry != entries_.end() && entry->place.column == column &&
               entry->place.row <= high.row;
             ++entry)
            visit(*entry);
        from.column = nextColumn(column);
        if (from.column == column)
            return;  // infinite, for the tiniest tolerances
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
