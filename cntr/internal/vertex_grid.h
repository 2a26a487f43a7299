/// The vertices of a contour sorted into square cells, one grid for every tolerance asked.
#pragma once

#include <qc/core/vector.h>

#include <cstdint>
#include <vector>

namespace qnInternal {

/// Vertices by cell; a cell is as wide as the tolerance, and centred on a multiple of it.
class VertexGrid {
public:
    /// `tolerance` is above 0. O(n log n).
    VertexGrid(std::vector<qcVector<2>> const& points, double tolerance);

    double tolerance() const { return tolerance_; }

    /// Indices of the vertices nearer to `point` than the tolerance: cell by cell, x before y,
    /// ascending inside a cell.
    std::vector<int> near(std::vector<qcVector<2>> const& points, qcVector<2> const& point) const;

    struct Cell {
        std::int32_t column;
        std::int32_t row;
    };

    Cell cellOf(qcVector<2> const& point) const;

private:
    struct Entry {
        Cell cell;
        int vertex;
    };

    static bool less(Entry const& a, Entry const& b);

    double tolerance_;
    std::vector<Entry> entries_;  // by column, row, vertex
};

}  // namespace qnInternal

/// The grids of a contour, in the order in which their tolerances were first asked.
class qc_VertexIndexCache {
public:
    /// The grid of `tolerance` (above 0), built where it is not there yet.
    qnInternal::VertexGrid const& grid(std::vector<qcVector<2>> const& points, double tolerance);

private:
    std::vector<qnInternal::VertexGrid> grids_;
};
