/// Numbers in a ring that grows, and which of two comes first on the way round from a third.
///
/// Every number has a label, and labels ascend along the ring from number 0 on. A run that finds no
/// room between two labels spreads those around it: the smallest aligned range of labels that is not
/// crowded, where larger ranges count as crowded with a smaller share of their labels in use. So a
/// run costs its length and, on average, the square of the logarithm of all for every number (Bender
/// and others, Two simplified algorithms for maintaining order in a list, 2002).
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace qnInternal {

class RingOrder {
public:
    /// The numbers from 0 to count - 1, one after the other.
    explicit RingOrder(std::size_t count);

    std::size_t size() const { return label_.size(); }
    std::size_t next(std::size_t number) const { return next_[number]; }
    std::size_t previous(std::size_t number) const { return previous_[number]; }

    /// Puts `count` new numbers, from size() up, one after the other behind `place`.
    void insertBehind(std::size_t place, std::size_t count);

    /// How far it is from one number to another along the ring, in labels: for comparisons.
    std::uint64_t way(std::size_t from, std::size_t to) const { return label_[to] - label_[from]; }

private:
    void link(std::size_t from, std::size_t to);
    void spread(std::size_t first, std::size_t count, std::uint64_t low, int bits);

    std::vector<std::size_t> next_;
    std::vector<std::size_t> previous_;
    std::vector<std::uint64_t> label_;
};

}  // namespace qnInternal
