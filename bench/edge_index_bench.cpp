// Where an index begins to pay, which the library's thresholds are set by:
// * plain_hits against index_hits (and plain_nearest against index_nearest), by the number of edges:
//   kMaxPlainEdges in cntr/internal/edge_index.h is where the lines cross;
// * parity_loop against slabs_built and slabs_asked: kQueriesWithoutSlabs in contour_containment.cpp
//   is about slabs_built / (parity_loop - slabs_asked), the questions after which slabs are paid for.
#include "cntr/internal/edge_hits.h"
#include "cntr/internal/edge_index.h"
#include "cntr/internal/nearest.h"
#include "cntr/internal/parity.h"
#include "support/questions.h"

#include <qc/core/internal/plane.h>

#include <algorithm>
#include <limits>

namespace {

using namespace qnBench;
using namespace qnInternal;

Work const& star(benchmark::State const& state)
{
    return work("star", static_cast<std::size_t>(state.range(0)));
}

/// Runs ask(i) for one query after the other.
template <class Ask>
void rotate(benchmark::State& state, Ask ask)
{
    std::size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(ask(i));
        i = (i + 1) % Work::kQueries;
    }
}

HitQuery query(Work const& given, std::size_t i)
{
    return {given.longSegments[i][0], given.longSegments[i][1], true};
}

std::size_t hitsBetween(Points const& points, HitQuery const& asked, std::size_t begin,
                        std::size_t end)
{
    std::size_t hits = 0;
    for (std::size_t k = begin; k < end; ++k)
        hits += asked.meets(edgeStart(points, true, k), edgeEnd(points, true, k)).has_value();
    return hits;
}

void plain_hits(benchmark::State& state)
{
    auto const& given = star(state);
    rotate(state, [&](std::size_t i) {
        return hitsBetween(given.outline, query(given, i), 0, given.outline.size());
    });
}
BENCHMARK(plain_hits)->RangeMultiplier(2)->Range(8, 512);

void index_hits(benchmark::State& state)
{
    auto const& given = star(state);
    EdgeIndex const index(given.outline, true);
    rotate(state, [&](std::size_t i) {
        auto const asked = query(given, i);
        SegmentReach const reach(asked, index.scale());
        std::size_t hits = 0;
        index.forEachLeaf(reach, [&](std::size_t leaf, Box const&) {
            hits += hitsBetween(given.outline, asked, index.leafBegin(leaf), index.leafEnd(leaf));
        });
        return hits;
    });
}
BENCHMARK(index_hits)->RangeMultiplier(2)->Range(8, 512);

void plain_nearest(benchmark::State& state)
{
    auto const& given = star(state);
    rotate(state, [&](std::size_t i) {
        double best = std::numeric_limits<double>::infinity();
        for (std::size_t k = 0; k < given.outline.size(); ++k) {
            double const distance =
                segmentDistance(edgeStart(given.outline, true, k), edgeEnd(given.outline, true, k),
                                given.queries[i]);
            best = distance < best ? distance : best;
        }
        return best;
    });
}
BENCHMARK(plain_nearest)->RangeMultiplier(2)->Range(8, 512);

void index_nearest(benchmark::State& state)
{
    auto const& given = star(state);
    EdgeIndex const index(given.outline, true);
    rotate(state,
           [&](std::size_t i) { return nearestEdge(index, given.outline, given.queries[i]); });
}
BENCHMARK(index_nearest)->RangeMultiplier(2)->Range(8, 512);

void index_built(benchmark::State& state)
{
    auto const& given = star(state);
    for (auto _ : state)
        benchmark::DoNotOptimize(EdgeIndex(given.outline, true).regular());
}
BENCHMARK(index_built)->RangeMultiplier(8)->Range(8, 32768);

struct Containment {
    explicit Containment(Points const& outline) : box(boxOf(outline.front()))
    {
        for (auto const& point : outline)
            enclose(box, point);
        for (auto const& point : outline)
            radius = std::max(radius, outline.front().distance(point));
    }

    Box box;
    double radius = 0;
};

void parity_loop(benchmark::State& state)
{
    auto const& given = star(state);
    Containment const known(given.outline);
    ParityReach const reach(known.box, given.outline.size(), given.outline.front(),
                            {known.radius, known.radius});
    rotate(state, [&](std::size_t i) {
        return insideByAllEdges(given.outline, given.longSegments[i][0], reach);
    });
}
BENCHMARK(parity_loop)->RangeMultiplier(8)->Range(8, 32768);

void slabs_built(benchmark::State& state)
{
    auto const& given = star(state);
    Containment const known(given.outline);
    ParityReach const reach(known.box, given.outline.size(), given.outline.front(),
                            {known.radius, known.radius});
    for (auto _ : state)
        benchmark::DoNotOptimize(
            SlabIndex(given.outline, known.box, reach).inside(given.outline, known.box.min));
}
BENCHMARK(slabs_built)->RangeMultiplier(8)->Range(8, 32768);

void slabs_asked(benchmark::State& state)
{
    auto const& given = star(state);
    Containment const known(given.outline);
    ParityReach const reach(known.box, given.outline.size(), given.outline.front(),
                            {known.radius, known.radius});
    SlabIndex const slabs(given.outline, known.box, reach);
    rotate(state,
           [&](std::size_t i) { return slabs.inside(given.outline, given.longSegments[i][0]); });
}
BENCHMARK(slabs_asked)->RangeMultiplier(8)->Range(8, 32768);

}  // namespace
