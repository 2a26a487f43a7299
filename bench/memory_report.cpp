// Bytes per vertex of a contour, counted at the allocator: fresh, after each kind of question, copied.
// Prints rows of a markdown table.
#include "support/outlines.h"

#include <cntr/cntr.h>

#include <malloc.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <new>

namespace {

std::size_t held = 0;

void* counted(void* block)
{
    if (block == nullptr)
        throw std::bad_alloc();
    held += malloc_usable_size(block);
    return block;
}

void release(void* block) noexcept
{
    held -= block == nullptr ? 0 : malloc_usable_size(block);
    std::free(block);
}

}  // namespace

void* operator new(std::size_t size)
{
    return counted(std::malloc(size));
}
void operator delete(void* block) noexcept
{
    release(block);
}
void operator delete(void* block, std::size_t) noexcept
{
    release(block);
}

namespace {

using qnBench::Points;

/// What is held more after `act` than before it, a vertex.
template <class Act>
double grown(Points const& outline, Act act)
{
    auto const before = static_cast<double>(held);
    act();
    return (static_cast<double>(held) - before) / static_cast<double>(outline.size());
}

void report(char const* shape, std::size_t n)
{
    auto const outline = qnBench::outline(shape, n);
    qcVector<2> const middle(2000, 2000);
    std::unique_ptr<qcRegion> region, copy;
    double const fresh = grown(outline, [&] { region = std::make_unique<qcRegion>(outline); });
    double const freshCopy = grown(outline, [&] { copy = std::make_unique<qcRegion>(*region); });
    copy.reset();
    double const nearest = grown(outline, [&] { region->distToPoint(middle, false); });
    double const slabs = grown(outline, [&] {
        for (int i = 0; i < 20; ++i)
            region->inside(qcVector<2>(1990 + i, 2000.5), false);
    });
    double const segments = grown(outline, [&] {
        region->intersections(qcLineSeg({0, 10}, {4000, 3900}), true, false);
        region->isSelfIntersecting();
    });
    double const queriedCopy = grown(outline, [&] { copy = std::make_unique<qcRegion>(*region); });
    std::printf("| %s | %zu | %.1f | %.1f | %.1f | %.1f | %.1f | %.1f |\n", shape, n, fresh,
                freshCopy, nearest, slabs, segments, queriedCopy);
}

}  // namespace

int main()
{
    std::puts("| shape | vertices | fresh | its copy | + nearest point | + repeated containment "
              "| + segments, self-crossing | copy of the queried |");
    std::puts("| --- | ---: | ---: | ---: | ---: | ---: | ---: | ---: |");
    for (char const* shape : {"star", "comb"})
        for (std::size_t const n : {64u, 1000u, 100000u})
            report(shape, n);
    return 0;
}
