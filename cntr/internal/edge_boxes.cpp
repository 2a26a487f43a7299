// The boxes of edges, two at a time.
#include "cntr/internal/edge_boxes.h"

#include <cstring>

namespace qnInternal {

namespace {

/// Makes boxes i and i + 1 of a group.
void setTwo(BoxGroup& boxes, std::size_t i, Extent const& first, Extent const& second)
{
    auto const set = [i](Eight& numbers, double one, double other) {
        Pair const pair{one, other};
        std::memcpy(&numbers[i], &pair, sizeof pair);
    };
    set(boxes.minX, first.low[0], second.low[0]);
    set(boxes.minY, first.low[1], second.low[1]);
    set(boxes.maxX, first.high[0], second.high[0]);
    set(boxes.maxY, first.high[1], second.high[1]);
}

}  // namespace

BoxGroup boxesOfEdges(Outline const& outline, std::size_t begin, std::size_t end)
{
    Pair from = pairOf(edgeStart(outline.points, outline.closed, begin));
    qcVector<2> const* to = &edgeEnd(outline.points, outline.closed, begin);
    qcVector<2> const* const last = to + (end - begin);
    auto const next = [&] {
        if (to == last)
            return noExtent();
        Pair const start = from;
        from = pairOf(*to++);
        return Extent{smaller(from, start), larger(from, start)};
    };
    BoxGroup boxes;
    for (std::size_t i = 0; i < end - begin; i += 2) {
        Extent const first = next();
        setTwo(boxes, i, first, next());
    }
    return boxes;
}

}  // namespace qnInternal
