// The smallest and largest steps of each leaf's edges, told by their signs.
#include "cntr/internal/edge_ways.h"

#include "cntr/internal/edge_walk.h"

#include <limits>

namespace qnInternal {

EdgeWays::EdgeWays(EdgeIndex const& index, std::vector<qcVector<2>> const& points)
{
    for (std::size_t level = 0; level < index.levelCount(); ++level)
        begin_[level + 1] = begin_[level] + index.boxCount(level);
    ways_.resize(begin_[index.levelCount()]);
    for (std::size_t node = 0; node < index.boxCount(0); ++node)
        ways_[node] = waysOf(index, points, index.leafAt(node));
    for (std::size_t level = 1; level < index.levelCount(); ++level)
        for (std::size_t node = 0; node < index.boxCount(level - 1); ++node)
            ways_[begin_[level] + node / EdgeIndex::kFan] |=
                index.inOutlineOrder() ? ways_[begin_[level - 1] + node] : kAllWays;
}

unsigned char EdgeWays::waysOf(EdgeIndex const& index, std::vector<qcVector<2>> const& points,
                               std::size_t leaf)
{
    constexpr double kFar = std::numeric_limits<double>::infinity();
    Pair lowStep = both(kFar);
    Pair highStep = both(-kFar);
    Pair previous = pairOf(edgeStart(points, index.closed(), index.leafBegin(leaf)));
    // The ends of the edges stand one behind the other.
    qcVector<2> const* to = &edgeEnd(points, index.closed(), index.leafBegin(leaf));
    for (std::size_t k = index.leafBegin(leaf); k < index.leafEnd(leaf); ++k) {
        Pair const point = pairOf(*to++);
        lowStep = smaller(lowStep, point - previous);
        highStep = larger(highStep, point - previous);
        previous = point;
    }
    auto const inBoth = [](unsigned way) { return PairMask{way, way << kBitsOfX}; };
    PairMask const ways = ((lowStep < 0) & inBoth(kLess)) | ((highStep > 0) & inBoth(kMore)) |
                          ((highStep >= 0) & inBoth(kNotLess)) |
                          ((lowStep <= 0) & inBoth(kNotMore));
    return static_cast<unsigned char>(ways[0] | ways[1]);
}

}  // namespace qnInternal
