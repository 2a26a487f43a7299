// The replaced operator new and what it counts.
#include "tests/support/allocations.h"

#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <new>

namespace {

struct Counts {
    bool on;
    long calls, failing, live;
    long long bytes, peak;
};

thread_local Counts counts{};

void* take(std::size_t size)
{
    if (counts.on && counts.calls++ == counts.failing)
        return nullptr;
    void* const memory = std::malloc(size == 0 ? 1 : size);
    if (memory && counts.on) {
        ++counts.live;
        counts.bytes += static_cast<long long>(malloc_usable_size(memory));
        counts.peak = std::max(counts.peak, counts.bytes);
    }
    return memory;
}

void give(void* memory) noexcept
{
    if (memory && counts.on) {
        --counts.live;
        counts.bytes -= static_cast<long long>(malloc_usable_size(memory));
    }
    std::free(memory);
}

}  // namespace

void* operator new(std::size_t size)
{
    if (void* const memory = take(size))
        return memory;
    throw std::bad_alloc();
}

void* operator new(std::size_t size, std::nothrow_t const&) noexcept
{
    return take(size);
}

void operator delete(void* memory) noexcept
{
    give(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    give(memory);
}

namespace qnTest {

// clang-format off
Allocations::Allocations() { counts = Counts{true, 0, -1, 0, 0, 0}; }
Allocations::~Allocations() { counts.on = false; }
long Allocations::liveBlocks() const { return counts.live; }
long long Allocations::peakBytes() const { return counts.peak; }
// clang-format on

void Allocations::fail(long call)
{
    counts.calls = 0;
    counts.failing = call;
}

bool Allocations::endFailing()
{
    bool const came = counts.failing >= 0 && counts.calls > counts.failing;
    counts.failing = -1;
    return came;
}

}  // namespace qnTest
