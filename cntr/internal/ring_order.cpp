// Labels of the numbers in a ring, spread where they become crowded.
#include "cntr/internal/ring_order.h"

#include <algorithm>

namespace qnInternal {

namespace {

constexpr int kLabelBits = 62;

/// By what factor the numbers that a range may hold grow where the range is doubled. Below 2, so that
/// a range that was spread has room for as many runs as it has numbers.
constexpr double kGrowth = 1.5;

}  // namespace

RingOrder::RingOrder(std::size_t count) : next_(count), previous_(count), label_(count)
{
    for (std::size_t i = 0; i < count; ++i)
        link(i, i + 1 < count ? i + 1 : 0);
    spread(0, count, 0, kLabelBits);
}

void RingOrder::link(std::size_t from, std::size_t to)
{
    next_[from] = to;
    previous_[to] = from;
}

void RingOrder::spread(std::size_t first, std::size_t count, std::uint64_t low, int bits)
{
    if (count == 0)
        return;
    std::uint64_t const step = (std::uint64_t{1} << bits) / count;
    for (std::size_t i = 0; i < count; ++i, first = next_[first])
        label_[first] = low + i * step;
}

void RingOrder::insertBehind(std::size_t place, std::size_t count)
{
    std::size_t first = place, last = place, held = 1;
    std::uint64_t low = 0;
    double room = 1;
    int bits = 0;
    while (bits<kLabelBits&& static_cast<double>(held + count)> room) {
        ++bits;
        room *= kGrowth;
        low = label_[place] >> bits << bits;
        std::uint64_t const high = low + (std::uint64_t{1} << bits);
        for (; first != 0 && label_[previous_[first]] >= low; ++held)
            first = previous_[first];
        for (; next_[last] != 0 && label_[next_[last]] < high; ++held)
            last = next_[last];
    }
    std::size_t const after = next_[place];
    std::size_t const begin = size();
    next_.resize(begin + count);
    previous_.resize(begin + count);
    label_.resize(begin + count);
    std::size_t from = place;
    for (std::size_t number = begin; number < begin + count; from = number++)
        link(from, number);
    link(from, after);
    spread(first, held + count, low, bits);
}

}  // namespace qnInternal
