// Contours, regions and sets that carry edge points: data and points in step, transforms shared or
// cloned, typed lists beside the plain ones, ticks.
#include "tests/support/regions.h"
#include "tests/support/stored_objects.h"

#include <cntr/cntrtmpl.h>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

namespace {

using namespace qnTest;
using Edgelets = std::vector<qcEdgelet>;
using Contour = qcContourT<qcEdgelet>;
using Region = qcRegionT<qcEdgelet>;
using Set = qcRegionSetT<qcEdgelet>;
using TypedHandle = qcPtrHandle_const<Region>;
using XformHandle = qcPtrHandle_const<qc2XformBase>;

constexpr qcContourDefs::IntersectionMode kIgnore = qcContourDefs::eIgnore;

Edgelets const kEdgelets{{{0, 0}, 5, qcAngle8(1)},
                         {{4, 0}, 65535, qcAngle8(64)},
                         {{4, 4}, 0, qcAngle8(255)},
                         {{0, 4}, 7, qcAngle8(128)}};

XformHandle doubling()
{
    return XformHandle(new qc2XformLinear(qcMatrix<2>(2, 0, 0, 2), {1, 0}));
}

Points positions(Edgelets const& data)
{
    Points all;
    for (auto const& e : data)
        all.push_back(e.position());
    return all;
}

Edgelets bare(Points const& points)
{
    Edgelets all;
    for (auto const& p : points)
        all.emplace_back(p, 0, qcAngle8(0));
    return all;
}

TypedHandle typedSquare(double x, double y)
{
    return TypedHandle(new Region(bare(square(x, y, 2)), 0));
}

TEST(ContourT, PointsAndDataFollowEachOther)
{
    XformHandle const xform = doubling();
    Contour c(kEdgelets, xform);
    EXPECT_EQ(c.data(), kEdgelets);
    EXPECT_EQ(c.points(), (Points{{-0.5, 0}, {1.5, 0}, {1.5, 2}, {-0.5, 2}}));
    EXPECT_EQ(c.length(), 8);
    c.points({{1, 1}, {2, 5}});
    EXPECT_EQ(c.data(), bare({{3, 2}, {5, 10}}));
    EXPECT_EQ(c.length(), 2 * std::sqrt(17.0));  // computed anew
    c.data({kEdgelets[1]});
    EXPECT_EQ(c.data(), Edgelets{kEdgelets[1]});
    EXPECT_EQ(c.points(), (Points{{1.5, 0}}));
    c.data({});
    EXPECT_TRUE(c.points().empty());
    EXPECT_EQ(c.datum({1, 2}), qcEdgelet({3, 4}, 0, qcAngle8(0)));
    EXPECT_EQ(c.point(qcEdgelet({3, 4}, 9, qcAngle8(9))), qcVector<2>(1, 2));

    EXPECT_EQ(Contour(kEdgelets).points(), positions(kEdgelets));
}

TEST(ContourT, WithoutTransformOnlyEmptyListsWork)
{
    Contour c;
    EXPECT_TRUE(c.dataFromPointsXform().isNull());
    c.points({});
    c.data({});
    EXPECT_THROW(c.datum({0, 0}), qcBadPointer);
    EXPECT_THROW(c.point(kEdgelets[0]), qcBadPointer);
    EXPECT_THROW(c.data(kEdgelets), qcBadPointer);
    EXPECT_THROW(c.points({{1, 1}}), qcBadPointer);
    EXPECT_TRUE(c.data().empty());
    XformHandle const singular(new qc2XformLinear(qcMatrix<2>(1, 1, 1, 1), {0, 0}));
    EXPECT_THROW(Contour(kEdgelets, singular), qcBadPointer);
    Contour noWayBack(Edgelets(), singular);
    noWayBack.points({{1, 2}});
    EXPECT_EQ(noWayBack.data(), bare({{3, 3}}));
    for (int i = 0; i < 2; ++i)  // the null inverse is kept
        EXPECT_THROW(noWayBack.point(kEdgelets[0]), qcBadPointer);
}

TEST(ContourT, ClonesTheCallersTransformAndSharesItsOwn)
{
    XformHandle const mine = doubling();
    Contour const first(kEdgelets, mine);
    EXPECT_EQ(mine->refCount(), 1U);
    EXPECT_NE(first.dataFromPointsXform(), mine);
    Contour copy(first), assigned;
    assigned = first;
    EXPECT_EQ(first.dataFromPointsXform()->refCount(), 4U);  // and the temporary one
    EXPECT_TRUE(first == copy && first == assigned && Contour() == Contour());
    EXPECT_TRUE(first != Contour(kEdgelets, mine));  // equal values, another transform
    copy.label(99);
    copy.isClosed(false);
    copy.cachedVectorSize(9);
    EXPECT_TRUE(copy == first);
    copy.points({{1, 1}});
    EXPECT_TRUE(copy != first);
    EXPECT_EQ(Region(first, 5).dataFromPointsXform(), first.dataFromPointsXform());
}

/// A class that shows which calls come through the virtual slots.
template <class Base>
class Watched : public Base {
public:
    using Base::Base;
    std::string told;

protected:
    void cleanCacheInfo() override { told += 'c', Base::cleanCacheInfo(); }
    // clang-format off
    void makeDataConsistentWithPoints() override { told += 'd', Base::makeDataConsistentWithPoints(); }
    void makePointsConsistentWithData() override { told += 'p', Base::makePointsConsistentWithData(); }
    // clang-format on
};

TEST(ContourT, SettersReachOverriddenOperations)
{
    auto const during = [](auto& object, auto const& action) {
        object.told.clear();
        action();
        return object.told;
    };
    Watched<Contour> c(kEdgelets);
    EXPECT_EQ(during(c, [&] { c.isClosed(false), c.cachedVectorSize(2); }), "c");
    EXPECT_EQ(during(c, [&] { static_cast<qcContour&>(c) = qcContour(); }), "");
    Watched<Region> r(kEdgelets, 3UL);
    EXPECT_EQ(during(r, [&] { r.data(kEdgelets); }), "pcc");
    EXPECT_EQ(during(r, [&] { r.points({{1, 1}}); }), "cdc");
    EXPECT_EQ(during(r, [&] { r.holes({}); }), "c");
    EXPECT_EQ(during(r, [&] { r.isClosed(true), r.label(4); }), "");
    Watched<Set> s(std::vector<TypedHandle>{typedSquare(0, 0)});
    EXPECT_EQ(s.told, "");
    EXPECT_EQ(during(s, [&] { s.add(holeOf(square(9, 9, 1)), kIgnore); }), "cdc");
}

TEST(RegionT, HasOneContourThroughBothBases)
{
    Region r(kEdgelets, 7);
    EXPECT_EQ(static_cast<qcContour*>(static_cast<qcRegion*>(&r)),
              static_cast<qcContour*>(static_cast<Contour*>(&r)));
    r.isClosed(true);
    EXPECT_THROW(static_cast<qcContour&>(r).isClosed(false), qcContourDefs::RegionCannotBeSetOpen);
    Contour open(kEdgelets);
    open.isClosed(false);
    open.label(1);
    EXPECT_EQ(open.length(), 12);
    Region const fromOpen(open, 2);
    EXPECT_EQ(fromOpen.label(), 2U);
    EXPECT_TRUE(fromOpen.isClosed());
    EXPECT_EQ(fromOpen.data(), kEdgelets);
    EXPECT_EQ(fromOpen.length(), 16);  // of the closed outline
}

TEST(RegionT, TypedHolesStayApart)
{
    Region r(kEdgelets, 0);
    r.qcRegion::holes(std::vector<Hole>{holeOf(square(1, 1, 1))});
    EXPECT_EQ(r.data(), bare(positions(kEdgelets)));  // setting plain holes rebuilds the data
    EXPECT_EQ(r.area(true), 15);
    auto const crossing = typedSquare(3, 3);
    r.holes({crossing, TypedHandle()});
    EXPECT_EQ(r.area(true), 15);
    EXPECT_EQ(r.qcRegion::holes().size(), 1U);
    EXPECT_TRUE(r.inside({3.5, 3.5}, true));
    EXPECT_EQ(crossing->refCount(), 2U);
    Region const copy(r);
    EXPECT_EQ(copy.holes().size(), 2U);
    EXPECT_EQ(copy.qcRegion::holes(), r.qcRegion::holes());
    Region assigned;
    assigned = copy;
    EXPECT_EQ(crossing->refCount(), 4U);
}

TEST(RegionT, DrawsTicksAcrossTheEdges)
{
    std::pair<int, qcVector<2>> const cases[] = {
        {64, {0.5, 0}}, {0, {0, -0.5}}, {96, qcVector<2>(0.5, qcRadian(qcDegree(45)))}};
    for (auto const& [code, half] : cases) {
        SCOPED_TRACE(code);
        qcVector<2> const at(10, 20);
        Region const r({{at, 1, qcAngle8(static_cast<unsigned char>(code))}}, 0);
        qcRecordingTablet tablet;
        static_cast<qcRegion const&>(r).draw(tablet, qcColor(1, 2, 3), qcUITablet::eOverlayLayer);
        ASSERT_EQ(tablet.segments().size(), 1U);
        auto const& s = tablet.segments()[0];
        qcVector<2> const from(s.from.first(), s.from.second()), to(s.to.first(), s.to.second());
        EXPECT_LT(from.distance(at + half), 1e-14);
        EXPECT_LT(to.distance(at - half), 1e-14);
        EXPECT_TRUE(s.color == qcColor(1, 2, 3) && s.layer == qcUITablet::eOverlayLayer);
    }
    TypedHandle const region(new Region(kEdgelets, 0));
    qcRecordingTablet tablet;
    Set({region, region}).draw(tablet, qcColor(), qcUITablet::eImageLayer);
    EXPECT_EQ(tablet.segments().size(), 8U);
}

TEST(RegionSetT, BothListsHoldTheTypedRegions)
{
    auto const a = typedSquare(0, 0), b = typedSquare(9, 9);
    Set const set({a, TypedHandle(), b});
    ASSERT_EQ(set.regions().size(), 3U);
    EXPECT_EQ(set.regions()[0].get(), a.get());
    EXPECT_TRUE(set.regions()[1].isNull());
    EXPECT_EQ(set.regionsT()[2], b);
    qcPtrHandle<Region> const mine(new Region(kEdgelets, 0));
    Set const fromMutable(std::vector<qcPtrHandle<Region>>{mine});
    EXPECT_EQ(mine->refCount(), 3U);
    Set copy(fromMutable);
    EXPECT_EQ(mine->refCount(), 5U);
    EXPECT_TRUE(copy == fromMutable);
    copy = Set();
    EXPECT_EQ(mine->refCount(), 3U);
    EXPECT_TRUE(copy.regionsT().empty());
}

TEST(RegionSetT, PlainRegionsGetTypedOnesMadeFromTheirOutlines)
{
    auto const first = typedSquare(0, 0);
    qcPtrHandle<qcRegion> const plain(new qcRegion(square(9, 0, 4)));
    plain->label(6);
    plain->holes(std::vector<Hole>{holeOf(square(10, 1, 1))});
    Set set({first});
    set.add(plain, kIgnore);
    EXPECT_EQ(set.regions()[0].get(), first.get());
    EXPECT_EQ(set.regions()[1], plain);
    auto const typed = set.regionsT();
    ASSERT_EQ(typed.size(), 2U);
    EXPECT_NE(typed[0], first);  // made anew as well, without what its data said
    EXPECT_EQ(typed[1]->data(), bare(plain->points()));
    EXPECT_EQ(typed[1]->label(), 0U);
    EXPECT_TRUE(typed[1]->qcRegion::holes().empty());
    EXPECT_EQ(typed[1]->dataFromPointsXform()->mapPoint({3, 4}), qcVector<2>(3, 4));
    EXPECT_EQ(set.area(true), 4 + 15);
    EXPECT_THROW(set.regions(std::vector<Hole>{plain, Hole(), plain}, kIgnore), qcBadPointer);
    EXPECT_EQ(set.regions().size(), 3U);
    ASSERT_EQ(set.regionsT().size(), 3U);  // built up to the null
    EXPECT_EQ(set.regionsT()[0]->points(), plain->points());
    // A mode works on the plain list alone.
    Set merging({typedSquare(0, 0)});
    merging.add(holeOf(square(1, 1, 2)), qcContourDefs::eRegularize);
    EXPECT_EQ(merging.regions().size(), 1U);
    EXPECT_EQ(merging.regionsT().size(), 2U);
}

TEST(DataCarrying, WhatIsNotProvidedThrowsAndTouchesNothing)
{
    Contour c(kEdgelets);
    Region r(kEdgelets, 3);
    Set s({typedSquare(0, 0)});
    auto const before = describe(&c) + describe(&r) + describe(&s);
    qcXform<2> const xform(qcMatrix<2>(2, 0, 0, 2), {1, 1});
    std::function<void()> const calls[] = {
        [&] { c.convexHullT(r); }, [&] { c.mapT(xform, c); }, [&] { r.mapT(xform, r); },
        [&] { r.regularizeT(r); }, [&] { r.convexHullT(r); }, [&] { s.mapT(xform, s); },
        [&] { s.regularizeT(s); },
    };
    for (auto const& call : calls)
        EXPECT_THROW(call(), qcPel::BadWindow);
    EXPECT_EQ(describe(&c) + describe(&r) + describe(&s), before);
}

TEST(DataCarrying, RecordsHoldWhatTheySay)
{
    // A new transform is read: the inverse of the old one must not serve any more, not even where
    // a listener asks for it on the way.
    struct Asking : qcChangeListener {
        Contour of{kEdgelets};
        void changed(qcPersistent const&) noexcept override { of.point(kEdgelets[0]); }
    } asking;
    Contour& c = asking.of;
    c.tracking(true);
    qcPersistent::addListener(asking);
    Contour const stored(kEdgelets, doubling());
    qcMemoryArchive out;
    out || const_cast<Contour&>(stored);
    qcMemoryArchive in(out.bytes());
    in || c;
    qcPersistent::removeListener(asking);
    EXPECT_EQ(c.point(qcEdgelet({3, 4}, 0, qcAngle8(0))), qcVector<2>(1, 2));
    EXPECT_TRUE(c != stored);

    // A region keeps outline, label and plain holes, no data; its record wraps the plain one.
    Region r(kEdgelets, 4);
    r.holes({typedSquare(0, 0)});
    qcRegion const plain(r);
    qcMemoryArchive typedOut, plainOut;
    typedOut || r;
    plainOut || const_cast<qcRegion&>(plain);
    Bytes wrapped(1, 0);
    wrapped.insert(wrapped.end(), plainOut.bytes().begin(), plainOut.bytes().end());
    EXPECT_EQ(typedOut.bytes(), wrapped);  // how records load: the golden archives
}

}  // namespace
