// The exception classes: numbers and messages; and which query throws on few points.
#include "tests/support/changes.h"

#include <cntr/contour.h>
#include <cntr/region.h>

#include <gtest/gtest.h>

#include <functional>

namespace {

/// That each base catches it, the program in tests/consumer shows.
template <class E>
void expectNumberAndRethrow(long number)
{
    SCOPED_TRACE(typeid(E).name());
    EXPECT_EQ(E().message(), L"");
    E const said(L"so \u20AC");
    EXPECT_EQ(said.errorNumber(), number);
    qnTest::Changes changes;
    auto* const heap = new E(said);
    heap->tracking(true);
    try {
        heap->suicideAndRethrow();
        ADD_FAILURE() << "returned";
    } catch (E const& e) {
        EXPECT_EQ(changes.count, 1) << "the object on the heap, tracked alone, has ended";
        EXPECT_EQ(e.message(), L"so \u20AC");
    }
}

TEST(ContourErrors, HaveNumbersAndRethrowThemselvesFromTheHeap)
{
    expectNumberAndRethrow<qcContourDefs::EmptyContour>(0x10004680);
    expectNumberAndRethrow<qcContourDefs::EmptyRegionSet>(0x10004682);
    expectNumberAndRethrow<qcContourDefs::BadParams>(0x10004683);
    expectNumberAndRethrow<qcContourDefs::RegionCannotBeSetOpen>(0x10004684);
}

TEST(ContourErrors, QueriesThatNeedEdgesThrowOnFewerThanTwoPoints)
{
    qcVector<2> const p(1, 1);
    qcRegion region({{7, 7}, {8, 8}});
    qcEllipse ellipse;
    double residual = 4;
    using C = qcContour const&;
    std::function<void(C)> const cases[] = {
        [&](C c) { c.meanPosition(); },
        [&](C c) { c.closestVertexIndex(p); },
        [&](C c) { c.closestPoint(p, false); },
        [&](C c) { c.closestPoint(p, true); },
        [&](C c) { c.distToPoint(p, false); },
        [&](C c) { c.vertexIndex(p, -1); },
        [&](C c) { c.extremalVertexIndex(qcRadian(1)); },
        [&](C c) { c.extremalVertexPosition(qcRadian(1)); },
        [&](C c) { c.intersections(qcLineSeg(), true); },
        [&](C c) { c.intersections(qcContour()); },
        [&](C c) { c.encloseRect(qcXform<2>::I); },
        [&](C c) { c.convexHull(region); },
        [&](C c) { c.fitEllipse(ellipse, residual); },
    };
    for (auto const& c : cases)
        for (auto const& few : {qcContour(), qcContour({p}), qcContour({p}, false)})
            EXPECT_THROW(c(few), qcContourDefs::EmptyContour) << &c - cases;
    EXPECT_EQ(region.points().size(), 2u);
    EXPECT_EQ(residual, 4);
    EXPECT_EQ(qcContour({p}).length(), 0);
}

}  // namespace
