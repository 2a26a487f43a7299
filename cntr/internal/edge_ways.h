/// The ways in which the edges of an outline run, by the boxes of its index: what runs one way does not
/// meet itself.
#pragma once

#include "cntr/internal/edge_index.h"

#include <qc/core/vector.h>

#include <array>
#include <cstddef>
#include <vector>

namespace qnInternal {

class EdgeWays {
public:
    /// Of the edges of a regular index. Linear.
    EdgeWays(EdgeIndex const& index, std::vector<qcVector<2>> const& points);

    /// Whether edges of two nodes, one and the same or neighbours on the outline, may meet elsewhere
    /// than at shared ends. They do not where all run one way in x and none stands still, so that the
    /// boxes of no two overlap; or the same in y; or where they go back neither in x nor in y. Leaves that
    /// do not stand in outline order may be of stretches apart, which meet whatever their ways: above level
    /// 0 they count as turning.
    bool turn(std::size_t level, std::size_t node, std::size_t other) const
    {
        unsigned const ways = ways_[begin_[level] + node] | ways_[begin_[level] + other];
        auto const all = [&](unsigned some) { return (ways & some) == some; };
        constexpr unsigned kBack = kLess | kMore;
        constexpr unsigned kBackOrStill = kNotLess | kNotMore;
        return (all(kBack) || all(kBack << kBitsOfX)) &&
               all(kBackOrStill | kBackOrStill << kBitsOfX);
    }

private:
    static unsigned char waysOf(EdgeIndex const& index, std::vector<qcVector<2>> const& points,
                                std::size_t leaf);

    /// The ways in which edges run in x, as bits, and behind them those in y.
    enum Way : unsigned { kLess = 1, kMore = 2, kNotLess = 4, kNotMore = 8 };
    static constexpr unsigned kBitsOfX = 4;
    static constexpr unsigned char kAllWays = 0xFF;

    std::array<std::size_t, BoxHierarchy::kMostLevels + 1> begin_{};  // by level
    std::vector<unsigned char> ways_;
};

}  // namespace qnInternal
