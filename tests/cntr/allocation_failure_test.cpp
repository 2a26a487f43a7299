// Operations whose every allocation in turn fails: std::bad_alloc comes out and nothing else, nothing
// is lost, what was to be written to is as before, and the same call then succeeds.
#include "tests/support/allocations.h"
#include "tests/support/golden_archives.h"
#include "tests/support/regions.h"

#include <cntr/cntrtmpl.h>

#include <gtest/gtest.h>

#include <functional>
#include <new>

namespace {

using namespace qnTest;

/// What the operations work on, made anew for each try.
struct Bench {
    /// A throw from a set's isSelfIntersecting() leaves the answer reached so far: asked before.
    Bench() { set.isSelfIntersecting(); }

    qcRegion crossing = regionOf(Points{{0, 0}, {4, 4}, {4, 0}, {0, 4}, {-3, 2}});
    qcRegion holed = regionOf(Figure{square(0, 0, 9), {{square(2, 2, 3), {}}}});
    qcRegionSet set{
        {holeOf(square(0, 0, 3)), holeOf(square(2, 1, 3)), holeOf(square(-2, -1.5, 3))}};
    qcContourT<qcEdgelet> typed{{{{1, 2}, 3, qcAngle8(4)}, {{5, 6}, 7, qcAngle8(8)}}};

    // Destinations, filled so that a loss shows.
    qcContour contour{{{7, 7}, {8, 8}, {9, 1}}, false, 3};
    qcRegion region = regionOf(Figure{square(50, 50, 9), {{square(51, 51, 1), {}}}});
    qcRegionSet result{{holeOf(square(70, 70, 1))}};
    qcContourT<qcEdgelet> typedResult;
    Bytes bytes;
    double number = 0;

    std::string destinations() const
    {
        return describe(&contour) + describe(&region) + describe(&result) + describe(&typedResult) +
               std::to_string(bytes.size()) + ' ' + std::to_string(number);
    }
    std::string sources() const { return describe(&crossing) + describe(&holed) + describe(&set); }
};

struct Operation {
    char const* name;
    std::function<void(Bench&)> run;
};

std::vector<Operation> operations()
{
    static qcXform<2> const xform(qcMatrix<2>(0, -1, 1, 0), {1, 2});
    static Bytes const archive = store(Bench().set);
    using B = Bench;
    // clang-format off
    return {
        {"copy a region with holes", [](B& b) { b.region = b.holed; }},
        {"copy a set with caches", [](B& b) { b.result = b.set; }},
        {"map a contour", [](B& b) { b.crossing.qcContour::map(xform, b.contour); }},
        {"map a region", [](B& b) { b.holed.map(xform, b.region); }},
        {"regularize", [](B& b) { b.crossing.regularize(b.region); }},
        {"outer hull", [](B& b) { b.crossing.outerHull(b.region); }},
        {"convex hull", [](B& b) { b.crossing.convexHull(b.region); }},
        {"merge a set", [](B& b) { b.set.regularize(b.result); }},
        {"hulls of a set", [](B& b) { b.set.outerHull(b.result); }},
        {"rectangle", [](B& b) { b.number = b.set.encloseRect(xform).size().x(); }},
        {"inside", [](B& b) { b.number = b.holed.inside({3, 3}, true) + 2; }},
        {"crossings", [](B& b) { b.number = double(b.crossing.intersections(b.holed, true).size()); }},
        {"copy edge points", [](B& b) { b.typedResult = b.typed; }},
        {"vertices near", [](B& b) { b.number = double(b.holed.vertexIndex({0, 0}, 1).size()); }},
        {"extremal vertex", [](B& b) { b.number = double(b.holed.extremalVertexIndex(qcRadian(1))); }},
        {"ellipse", [](B& b) { qcEllipse ellipse; b.crossing.fitEllipse(ellipse, b.number); }},
        {"store", [](B& b) { b.bytes = store(b.set); }},
        {"load", [](B& b) { b.result = dynamic_cast<qcRegionSet&>(*load(archive).object); }},
    };
    // clang-format on
}

/// Does the operation with the given allocation failing, and then once more. True where it came.
bool attempt(Operation const& operation, long failing, std::string const& wanted,
             Allocations& allocations)
{
    Bench bench;
    auto const before = bench.destinations(), sources = bench.sources();
    allocations.fail(failing);
    try {
        operation.run(bench);
    } catch (std::bad_alloc const&) {
    }
    bool const failed = allocations.endFailing();
    EXPECT_EQ(bench.sources(), sources);
    // A failure may be taken calmly, with the right result.
    auto const after = bench.destinations();
    EXPECT_TRUE(after == wanted || (failed && after == before));
    operation.run(bench);
    EXPECT_EQ(bench.destinations(), wanted) << "again";
    return failed;
}

TEST(AllocationFailure, LeavesEverythingAsItWasAndLosesNothing)
{
    for (auto const& operation : operations()) {
        SCOPED_TRACE(operation.name);
        Bench good;
        operation.run(good);  // also takes what this thread keeps until it ends
        auto const wanted = good.destinations();
        long failing = 0;
        for (bool failed = true; failed && failing < 1000; ++failing) {
            SCOPED_TRACE(failing);
            Allocations allocations;
            failed = attempt(operation, failing, wanted, allocations);
            EXPECT_EQ(allocations.liveBlocks(), 0);
        }
        EXPECT_GT(failing, 1) << "nothing was allocated";
        EXPECT_LT(failing, 1000);
    }
}

}  // namespace
