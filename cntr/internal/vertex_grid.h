/// The vertices of a contour by square cells, one grid for every tolerance asked.
#pragma once

#include <qc/core/vector.h>

#include <cstdint>
#include <vector>

namespace qnInternal {

/// A cell is as wide as the tolerance, and centred on a multiple of it. Its numbers are kept within 32
/// bits, so that the outermost cells may hold any number of vertices; these are looked up by columns
/// that have no such end.
class VertexGrid {
public:
    /// `tolerance` is above 0. O(n log n).
    VertexGrid(std::vector<qcVector<2>> const& points, double tolerance);

    double tolerance() const { return tolerance_; }

    /// Indices of the vertices nearer to `point` than the tolerance that lie in its cell or one around
    /// it: cell by cell, x before y, ascending inside a cell.
    std::vector<int> near(std::vector<qcVector<2>> const& points, qcVector<2> const& point) const;

    struct Cell {
        std::int32_t column;
        std::int32_t row;
    };

    Cell cellOf(qcVector<2> const& point) const;

private:
    struct Entry {
        double column;
        double y;
        int vertex;
    };
    using Place = std::vector<Entry>::const_iterator;

    static bool less(Entry const& a, Entry const& b);
    double columnOf(double x) const;
    void appendNear(std::vector<int>& found, std::vector<qcVector<2>> const& points,
                    qcVector<2> const& point, Place begin) const;
    bool areNeighbours(qcVector<2> const& a, qcVector<2> const& b) const;

    double tolerance_;
    std::vector<Entry> entries_;  // of the finite vertices, by column, then y
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
