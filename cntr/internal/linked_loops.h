/// A closed walk, cut into loops and joined again at vertices that lie on each other.
///
/// The vertices stay where they are; only their neighbours change, so a cut costs the shorter of the
/// two loops and a join the one that is joined.
#pragma once

#include "cntr/internal/vertex_grid.h"

#include <qc/core/vector.h>

#include <cstddef>
#include <optional>
#include <vector>

namespace qnInternal {

class LinkedLoops {
public:
    /// One loop of all `walk`'s points; `walk` outlives this object.
    explicit LinkedLoops(std::vector<qcVector<2>> const& walk);

    /// Cuts loops at vertices they pass twice until none does. The part from the first such vertex to
    /// the other one stays in its place, the rest goes to the end of the list. Throws
    /// qcContourDefs::EmptyContour where a loop of a single vertex comes out.
    void cutAtDoubleVertices();

    std::size_t loopCount() const { return order_.size(); }

    /// The points of the loop at a place of the list.
    std::vector<qcVector<2>> points(std::size_t place) const;

    /// Removes a loop; the last one takes its place.
    void remove(std::size_t place);

    /// Joins to the first loop of the list, time and again, the first later loop that shares a
    /// vertex with it, at the first such vertex.
    void joinToFirst();

private:
    struct Loop {
        std::size_t start;
        std::size_t size;
    };

    struct Pair {
        std::size_t vertex;
        std::size_t twin;
    };

    class FirstLoop;  // the order of its vertices
    class TouchingLoops;

    std::optional<Pair> doubleVertex(Loop const& loop) const;
    void cut(std::size_t place, Pair const& at);
    void relabel(std::size_t vertex, std::size_t count, std::size_t loop);
    std::optional<std::size_t> firstTwin(std::size_t vertex, std::size_t loop) const;
    std::size_t numberIn(Loop const& loop, std::size_t vertex) const;
    void link(std::size_t from, std::size_t to);
    void leaveList(std::size_t place);

    std::vector<qcVector<2>> const& walk_;
    VertexGrid grid_;
    std::vector<std::vector<int>> twins_;  // other vertices at a vertex, cell by cell
    std::vector<std::size_t> next_;
    std::vector<std::size_t> previous_;
    std::vector<std::size_t> loopOf_;
    std::vector<Loop> loops_;         // by number
    std::vector<std::size_t> order_;  // the list: numbers of loops by place
};

}  // namespace qnInternal
