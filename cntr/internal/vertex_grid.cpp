// Vertices by cell: sorting, lookup of a cell and its neighbours.
#include "cntr/internal/vertex_grid.h"

#include <algorithm>
#include <limits>
#include <tuple>

namespace qnInternal {

namespace {

/// The cell number of a coordinate: rounded half away from 0, kept within 32 bits. NaN is cell 0: its
/// vertices are at no distance from anything, so any cell will do.
std::int32_t cellNumber(double coordinate, double scale)
{
    double const scaled = coordinate * scale;
    double const rounded = scaled >= 0 ? scaled + 0.5 : scaled - 0.5;
    constexpr double kLargest = std::numeric_limits<std::int32_t>::max();
    constexpr double kSmallest = std::numeric_limits<std::int32_t>::min();
    if (rounded >= kLargest)
        return std::numeric_limits<std::int32_t>::max();
    if (rounded <= kSmallest)
        return std::numeric_limits<std::int32_t>::min();
    return rounded != rounded ? 0 : static_cast<std::int32_t>(rounded);
}

}  // namespace

VertexGrid::VertexGrid(std::vector<qcVector<2>> const& points, double tolerance)
    : tolerance_(tolerance)
{
    entries_.reserve(points.size());
    for (auto const& point : points)
        entries_.push_back({cellOf(point), static_cast<int>(entries_.size())});
    std::sort(entries_.begin(), entries_.end(), less);
}

bool VertexGrid::less(Entry const& a, Entry const& b)
{
    return std::tie(a.cell.column, a.cell.row, a.vertex) <
           std::tie(b.cell.column, b.cell.row, b.vertex);
}

VertexGrid::Cell VertexGrid::cellOf(qcVector<2> const& point) const
{
    double const scale = 1 / tolerance_;
    return {cellNumber(point.x(), scale), cellNumber(point.y(), scale)};
}

std::vector<int> VertexGrid::near(std::vector<qcVector<2>> const& points,
                                  qcVector<2> const& point) const
{
    std::vector<int> found;
    Cell const center = cellOf(point);
    // Wider than a cell number, so that the neighbours of the outermost cells can be named.
    for (std::int64_t column = center.column - std::int64_t{1};
         column <= center.column + std::int64_t{1}; ++column) {
        if (column < std::numeric_limits<std::int32_t>::min() ||
            column > std::numeric_limits<std::int32_t>::max())
            continue;
        // The three rows of a column stand together, so they are one stretch of the entries.
        std::int64_t const firstRow = std::max<std::int64_t>(
            center.row - std::int64_t{1}, std::numeric_limits<std::int32_t>::min());
        Entry const from{{static_cast<std::int32_t>(column), static_cast<std::int32_t>(firstRow)},
                         0};
        for (auto entry = std::lower_bound(entries_.begin(), entries_.end(), from, less);
             entry != entries_.end() && entry->cell.column == column &&
             entry->cell.row <= center.row + std::int64_t{1};
             ++entry)
            if (points[static_cast<std::size_t>(entry->vertex)].distance(point) < tolerance_)
                found.push_back(entry->vertex);
    }
    return found;
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
