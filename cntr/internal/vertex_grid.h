/// The vertices of a contour by square cells, one grid for every tolerance asked.
#pragma once

#include <qc/core/vector.h>

#include <vector>

namespace qnInternal {

/// A cell is as wide as the tolerance, and centred on a multiple of it. Its numbers are kept within 32
/// bits, so that the outermost cells may hold any number of vertices; inside, vertices stand by columns
/// and rows that have no such end.
class VertexGrid {
public:
    /// `tolerance` is above 0. O(n log n).
    VertexGrid(std::vector<qcVector<2>> const& points, double tolerance);

    double tolerance() const { return tolerance_; }

    /// Replaces `found` by the indices of the vertices nearer to `point` than the tolerance that lie in
    /// its cell or one around it: cell by cell, x before y, ascending inside a cell.
    void findNear(std::vector<qcVector<2>> const& points, qcVector<2> const& point,
                  std::vector<int>& found) const;

    /// The vertices near which there may be another one, in no certain order: all others have none, for
    /// tolerances whose squares do not vanish.
    std::vector<int> inCompany() const;

    /// Multiples of the cell's width: whole numbers, or infinite.
    struct Place {
        double column;
        double row;
    };

    /// The cell that holds a point, by numbers within 32 bits.
    Place cellOf(qcVector<2> const& point) const;

private:
    struct Entry {
        Place place;
        int vertex;
    };

    static bool isBefore(Entry const& a, Place const& b);
    static bool isEntryBefore(Entry const& a, Entry const& b);
    Place placeOf(qcVector<2> const& point) const;
    void findNearOutermost(std::vector<qcVector<2>> const& points, qcVector<2> const& point,
                           std::vector<int>& found) const;

    template <class Visit>
    void forEachBetween(Place const& low, Place const& high, Visit const& visit) const;

    double tolerance_;
    std::vector<Entry> entries_;  // of the finite vertices, by column, row and vertex
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
