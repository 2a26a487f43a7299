// The exception classes: numbers, messages, bases, records; and which query throws on few points.
#include "tests/support/changes.h"

#include <cntr/contour.h>
#include <cntr/region.h>

#include <gtest/gtest.h>

#include <functional>

namespace {

template <class Base, class E>
bool caughtAs(E const& e)
{
    try {
        throw e;
    } catch (Base const& caught) {
        return static_cast<void const*>(dynamic_cast<E const*>(&caught)) != nullptr;
    } catch (...) {
        return false;
    }
}

template <class E>
class ContourError : public testing::Test {
};

using Classes = testing::Types<qcContourDefs::EmptyContour, qcContourDefs::EmptyRegionSet,
                               qcContourDefs::BadParams, qcContourDefs::RegionCannotBeSetOpen>;
TYPED_TEST_SUITE(ContourError, Classes, );  // clang wants the last argument named, if empty

template <class E>
constexpr long kNumber = 0;
template <>
constexpr long kNumber<qcContourDefs::EmptyContour> = 0x10004680;
template <>
constexpr long kNumber<qcContourDefs::EmptyRegionSet> = 0x10004682;
template <>
constexpr long kNumber<qcContourDefs::BadParams> = 0x10004683;
template <>
constexpr long kNumber<qcContourDefs::RegionCannotBeSetOpen> = 0x10004684;

TYPED_TEST(ContourError, IsCaughtByEveryBaseAndRethrowsItselfFromTheHeap)
{
    EXPECT_EQ(TypeParam().message(), L"");
    TypeParam const said(L"so \u20AC");
    EXPECT_TRUE(caughtAs<qcContourDefs::Errors>(said));
    EXPECT_TRUE(caughtAs<qcExceptionWithString>(said));
    EXPECT_TRUE(caughtAs<qcException>(said));
    EXPECT_TRUE(caughtAs<qcPersistent>(said));
    EXPECT_TRUE(caughtAs<std::exception>(said));
    EXPECT_EQ((caughtAs<qcContourDefs::BadParams>(said)),
              (std::is_same_v<TypeParam, qcContourDefs::BadParams>));
    EXPECT_EQ(said.errorNumber(), kNumber<TypeParam>);
    qnTest::Changes changes;
    auto* const heap = new TypeParam(said);
    heap->tracking(true);
    try {
        heap->suicideAndRethrow();
        ADD_FAILURE() << "returned";
    } catch (TypeParam const& e) {
        EXPECT_EQ(changes.count, 1) << "the object on the heap, tracked alone, has ended";
        EXPECT_EQ(e.message(), L"so \u20AC");
    }
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
