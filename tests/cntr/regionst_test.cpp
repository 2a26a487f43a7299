// Sets of regions: the list and its setters, caches and who hears of them, sums, merging.
#include "tests/support/plain_regionst.h"
#include "tests/support/regions.h"

#include <cntr/regionst.h>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

namespace {

using namespace qnTest;
using Mode = qcContourDefs::IntersectionMode;
using Regions = std::vector<Hole>;

constexpr Mode kIgnore = qcContourDefs::eIgnore;

/// A set that says what is called and gives access to what derived classes reach.
class WatchedSet : public qcRegionSet, public qcChangeListener {
public:
    explicit WatchedSet(Regions const& regions = {}) : qcRegionSet(regions)
    {
        tracking(true);
        qcPersistent::addListener(*this);
    }
    ~WatchedSet() override
    {
        qcPersistent::removeListener(*this);
        tracking(false);
    }
    WatchedSet(WatchedSet const&) = delete;
    WatchedSet& operator=(WatchedSet const&) = delete;

    void changed(qcPersistent const&) noexcept override { told += "n"; }
    using qcRegionSet::checkEmptyRegionSet;
    using qcRegionSet::setRegions;

    mutable std::string told;

    std::string during(std::function<void()> const& action)
    {
        told.clear();
        action();
        return told;
    }

protected:
    void cleanCacheInfo() override
    {
        told += "c" + std::to_string(regions().size());
        qcRegionSet::cleanCacheInfo();
    }
    void makeDataConsistentWithPoints() override
    {
        told += "d" + std::to_string(regions().size());
        qcRegionSet::makeDataConsistentWithPoints();
    }
};

Hole squareAt(double x, double y, double side = 2)
{
    return holeOf(square(x, y, side));
}

TEST(RegionSet, SettersClearThenReplaceThenRebuildThenApplyTheMode)
{
    Regions const two{squareAt(0, 0), squareAt(1, 1)};
    WatchedSet set;
    // c: caches dropped, n: notified, d: data rebuilt; the number is the list's length by then.
    EXPECT_EQ(set.during([&] { set.regions(two, kIgnore); }), "c0nd2c2n");
    EXPECT_EQ(set.during([&] { set.add(squareAt(9, 9), kIgnore); }), "c2nd3c3n");
    EXPECT_EQ(set.during([&] { set.add(squareAt(9, 0), static_cast<Mode>(3)); }), "c3nd4c4n");
    EXPECT_EQ(set.during([&] { set.add(squareAt(1, 0), qcContourDefs::eRegularize); }), "c4nd5c5n");
    EXPECT_LT(set.regions().size(), 5U);
    EXPECT_EQ(set.during([&] { set.setRegions(two); }), "");
    EXPECT_EQ(set.during([&] { set.cachedVectorSize(4); }), "n");
    EXPECT_EQ(set.during([&] { static_cast<qcRegionSet&>(set) = qcRegionSet(two); }), "");
}

TEST(RegionSet, OnlySomeQueriesTellOfTheirCaches)
{
    WatchedSet set({squareAt(0, 0), squareAt(1, 1)});
    qcRegionSet out;
    struct {
        char const* name;
        std::function<void()> query;
        char const* first;
    } const cases[] = {
        {"area", [&] { set.area(true); }, "n"},
        {"area without holes", [&] { set.area(false); }, "n"},
        {"centre", [&] { set.centerOfMass(true); }, "n"},
        {"inertia", [&] { set.inertiaMatrix(false); }, "n"},
        {"rectangle", [&] { set.encloseRect(qcXform<2>::I); }, "n"},
        {"crossings", [&] { set.isSelfIntersecting(); }, ""},
        {"regularize", [&] { set.regularize(out); }, ""},
        {"outerHull", [&] { set.outerHull(out); }, ""},
        {"inside",
         [&] {
             set.inside({1, 1}, true);
         },
         ""},
        {"distance",
         [&] {
             set.distToPoint({1, 1}, true, true, true);
         },
         ""},
    };
    for (auto const& c : cases) {
        EXPECT_EQ(set.during(c.query), c.first) << c.name;
        EXPECT_EQ(set.during(c.query), "") << c.name << " again";
    }
}

TEST(RegionSet, EmptySetsAnswerOrRefuse)
{
    WatchedSet set;
    qcRegionSet out({squareAt(0, 0)});
    EXPECT_EQ(set.area(true), 0.0);
    EXPECT_FALSE(set.inside({0, 0}, true));
    EXPECT_FALSE(set.isSelfIntersecting());
    set.regularize(out);
    EXPECT_TRUE(out.regions().empty());
    std::function<void()> const refused[] = {
        [&] { set.centerOfMass(true); }, [&] { set.inertiaMatrix(false); },
        [&] {
            set.distToPoint({0, 0}, true, true, true);
        },
        [&] { set.encloseRect(qcXform<2>::I); }, [&] { set.checkEmptyRegionSet(); }};
    for (auto const& query : refused)
        EXPECT_THROW(query(), qcContourDefs::EmptyRegionSet);
    EXPECT_EQ(set.cachedVectorSize(), 3);
    EXPECT_THROW(set.cachedVectorSize(-1), qcContourDefs::BadParams);
    EXPECT_EQ(set.cachedVectorSize(), 3);
}

TEST(RegionSet, NullHandlesStopWhatReachesThem)
{
    Regions const list{squareAt(0, 0), Hole(), squareAt(9, 9)};
    qcRegionSet const set(list);
    qcRegionSet out({squareAt(5, 5)});
    qcRecordingTablet tablet;
    std::function<void()> const queries[] = {
        [&] { set.area(false); },
        [&] { set.centerOfMass(true); },
        [&] { set.inertiaMatrix(true); },
        [&] {
            set.inside({99, 99}, true);
        },
        [&] {
            set.distToPoint({0, 0}, true, true, true);
        },
        [&] { set.encloseRect(qcXform<2>::I); },
        [&] { set.draw(tablet, qcColor(), qcUITablet::eImageLayer); },
        [&] { static_cast<void>(set == qcRegionSet(set)); }};
    for (auto const& query : queries)
        EXPECT_THROW(query(), qcBadPointer);
    EXPECT_TRUE(set.inside({1, 1}, true));  // found before the null is reached
    EXPECT_FALSE(set == qcRegionSet({squareAt(0, 0)}));
    EXPECT_FALSE(set == qcRegionSet({squareAt(1, 0), Hole(), Hole()}));
    // The first look at crossings fails and leaves the answer reached so far.
    EXPECT_THROW(set.regularize(out), qcBadPointer);
    EXPECT_FALSE(set.isSelfIntersecting());
    EXPECT_EQ(out.regions().size(), 1U);
}

TEST(RegionSet, CrossingsReachedBeforeAFailureStayUntilAChange)
{
    Hole const bowTie = holeOf({{0, 0}, {2, 2}, {2, 0}, {0, 2}});
    qcRegionSet set({bowTie, Hole()});
    EXPECT_THROW(set.isSelfIntersecting(), qcBadPointer);
    EXPECT_TRUE(set.isSelfIntersecting());
    EXPECT_THROW(qcRegionSet(set).isSelfIntersecting() ? throw qcBadPointer() : 0, qcBadPointer);
    set.add(bowTie, kIgnore);
    EXPECT_THROW(set.isSelfIntersecting(), qcBadPointer);
}

TEST(RegionSet, CopiesShareRegionsAndResultsButNotTheirRectangles)
{
    Hole const a = squareAt(0, 0), b = squareAt(1, 1);
    qcRegionSet first({a, b});
    first.area(true);
    qcRegionSet clean;
    first.regularize(clean);
    Hole const merged = clean.regions().front();
    EXPECT_EQ(a->refCount(), 2U);
    qcRegionSet copy(first);
    EXPECT_EQ(a->refCount(), 3U);
    copy.regularize(clean);
    EXPECT_EQ(clean.regions().front(), merged);  // the same object: not computed again
    qcRegionSet hull;
    copy.outerHull(hull);
    EXPECT_NE(hull.regions().front(), merged);
    copy.add(squareAt(9, 9), kIgnore);
    EXPECT_EQ(copy.area(true), 12.0);
    EXPECT_EQ(first.area(true), 8.0);
    first.regularize(first);  // may be the set itself
    EXPECT_EQ(first.regions().front(), merged);
    EXPECT_EQ(first.area(true), merged->area(true));
    EXPECT_NE(first, copy);
    EXPECT_EQ(qcRegionSet({a, b}), qcRegionSet({squareAt(0, 0), squareAt(1, 1)}));
    EXPECT_NE(qcRegionSet({a, b}), qcRegionSet({b, a}));
}

TEST(RegionSet, AreasStayUntilTheSetHears)
{
    WatchedSet set({squareAt(0, 0)});
    EXPECT_EQ(set.area(true), 4.0);
    set.setRegions({squareAt(0, 0, 1)});
    EXPECT_EQ(set.area(true), 4.0);
    qcPtrHandle<qcRegion> const mine(new qcRegion(square(0, 0, 3)));
    set.regions(std::vector<qcPtrHandle<qcRegion>>{mine}, kIgnore);
    EXPECT_EQ(mine->refCount(), 2U);
    EXPECT_EQ(set.area(true), 9.0);
    mine->points(square(0, 0, 5));
    EXPECT_EQ(set.area(true), 9.0);
    set.add(squareAt(50, 50, 1), kIgnore);
    EXPECT_EQ(set.area(true), 26.0);
}

TEST(RegionSet, RectanglesAreKeptForAFewTransforms)
{
    for (long const bound : {0L, 1L, 3L}) {
        WatchedSet set({squareAt(0, 0), squareAt(5, 1)});
        set.cachedVectorSize(bound);
        auto const shifted = [](double x) { return qcXform<2>(qcMatrix<2>(), {x, 0}); };
        auto const asked = [&](int k) {
            return set.during([&] {
                EXPECT_EQ(set.encloseRect(shifted(k)).origin().position(), qcVector<2>(k, 0));
                EXPECT_EQ(set.encloseRect(shifted(k)).lr().position(), qcVector<2>(k + 7, 3));
            });
        };
        for (int k = 0; k < 20; ++k)
            EXPECT_EQ(asked(k), "n");
        int kept = 0;
        for (int k = 19; k >= 0;
             --k) {  // a computed one may push another out: count what was there
            qcRegionSet copy(set);
            copy.tracking(true);
            kept += set.during([&] { copy.encloseRect(shifted(k)); }).empty();
        }
        EXPECT_EQ(kept, bound + 1);
    }
}

TEST(RegionSet, MergesInOnePassWithTheLastRegionMoved)
{
    Hole const a = squareAt(0, 0, 3), b = squareAt(2, 1, 3), c3 = squareAt(-2, -1.5, 3);
    Hole const far = squareAt(40, 0), bowTie = holeOf({{0, 0}, {2, 2}, {2, 0}, {0, 2}});
    struct {
        char const* name;
        Regions regions;
        std::size_t left;
    } const cases[] = {
        {"apart", {a, far}, 2},
        {"one in the other", {squareAt(0, 0, 9), squareAt(3, 3)}, 2},
        {"two", {a, b}, 1},
        {"first and third", {a, far, b}, 2},
        {"first and third of four", {a, far, b, bowTie}, 3},
        {"the moved one is not compared again", {a, b, c3}, 2},
        {"crossing itself", {bowTie, far}, 2},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        for (Mode const mode : {qcContourDefs::eRegularize, qcContourDefs::eOuterHull}) {
            qcRegionSet const set(c.regions, mode);
            EXPECT_EQ(set.regions().size(), c.left);
        }
    }
    Regions const apart{a, far};
    EXPECT_EQ(qcRegionSet(apart, qcContourDefs::eOuterHull).regions(), apart);
    qcRegionSet setter({a});
    EXPECT_THROW(setter.add(Hole(), qcContourDefs::eRegularize), qcBadPointer);
    EXPECT_EQ(setter.regions().size(), 2U);  // what a failing mode leaves
}

/// Figures here and there, overlapping or not, some with a hole in the middle, some crossing
/// themselves, clockwise or not.
qnPlain::Set randomFigures(std::mt19937& random)
{
    auto const between = [&](double low, double high) {
        return low + (high - low) * (static_cast<double>(random()) / 4294967296.0);
    };
    qnPlain::Set set(1 + random() % 5);
    for (auto& figure : set) {
        qcVector<2> const center(between(-8, 8), between(-8, 8));
        std::size_t const count = 3 + random() % 9;
        double const turn = (random() % 2 ? 1 : -1) * (random() % 6 == 0 ? 2.0 : 1.0);
        for (std::size_t k = 0; k < count; ++k) {
            double const angle =
                turn * 6.283185307179586 * (double(k) + between(0, 0.5)) / double(count);
            figure.outline.push_back(center + qcVector<2>(between(1, 4), qcRadian(angle)));
        }
        if (random() % 2)
            figure.holes.push_back({square(center.x() - 0.1, center.y() - 0.1, 0.2), {}});
    }
    return set;
}

TEST(RegionSet, AnswersAsThePlainSteps)
{
    std::mt19937 random(23);
    int merged = 0;
    for (int run = 0; run < 1500; ++run) {
        SCOPED_TRACE(run);
        auto figures = randomFigures(random);
        Regions regions;
        for (auto& figure : figures) {
            try {
                regions.push_back(Hole(new qcRegion(regionOf(figure))));
            } catch (qcContourDefs::BadParams const&) {  // the hole meets the outline
                figure.holes.clear();
                regions.push_back(Hole(new qcRegion(regionOf(figure))));
            }
        }
        qcRegionSet const set(regions);
        qcXform<2> const xform(qcMatrix<2>(1, 0.25, -2, 3), {1, double(run)});
        EXPECT_EQ(set.encloseRect(xform), qnPlain::encloseRect(figures, xform));
        auto const moments = set.inertiaMatrix(false), plain = qnPlain::inertiaMatrix(figures);
        double const size = 1 + std::fabs(plain.element(0, 0)) + std::fabs(plain.element(1, 1));
        for (int k = 0; k < 4; ++k)  // polygons' own moments are defined up to rounding
            EXPECT_NEAR(moments.element(k / 2, k % 2), plain.element(k / 2, k % 2), 1e-9 * size);
        EXPECT_EQ(set.isSelfIntersecting(), qnPlain::isSelfIntersecting(figures));
        for (bool const holes : {false, true}) {
            EXPECT_EQ(set.area(holes), qnPlain::area(figures, holes));
            EXPECT_EQ(set.centerOfMass(holes), qnPlain::centerOfMass(figures, holes));
            for (auto const& p : figures.front().outline) {
                qcVector<2> const q = p * 0.7;
                EXPECT_EQ(set.inside(q, holes), qnPlain::inside(figures, q, holes));
                for (bool const zero : {false, true})
                    EXPECT_EQ(set.distToPoint(q, zero, holes, zero),
                              qnPlain::distToPoint(figures, q, zero, holes, zero));
            }
        }
        for (bool const hull : {false, true}) {
            std::vector<Points> got, wanted;
            std::string gotError, wantedError;
            qcRegionSet clean;
            try {
                hull ? set.outerHull(clean) : set.regularize(clean);
            } catch (qcContourDefs::Errors const& error) {
                gotError = error.what();
            }
            try {
                wanted = qnPlain::cleaned(figures, hull);
            } catch (qcContourDefs::Errors const& error) {
                wantedError = error.what();
            }
            for (auto const& region : clean.regions())
                got.push_back(region->points());
            EXPECT_EQ(got, wanted);
            EXPECT_EQ(gotError, wantedError);
            merged += got.size() < figures.size();
        }
    }
    EXPECT_GT(merged, 500);
}

TEST(RegionSet, SumsFollowOrientationAndCancel)
{
    // Two squares apart: the centre between them; the middle belongs to neither.
    qcRegionSet const two({holeOf(square(-0.5, -0.5, 1)), holeOf(square(3.5, -0.5, 1))});
    EXPECT_EQ(two.centerOfMass(false), qcVector<2>(2, 0));
    EXPECT_FALSE(two.inside({2, 0}, false));
    EXPECT_EQ(two.distToPoint({2, 0}, false, false, true), 1.5);
    EXPECT_EQ(two.inertiaMatrix(true), two.inertiaMatrix(false));
    // Areas of nothing: no centre.
    qcRegionSet const flat({holeOf({{0, 0}, {1, 0}, {2, 0}})});
    EXPECT_EQ(flat.centerOfMass(false), qcVector<2>(0, 0));
    // Holes have no moments; nothing stays behind.
    auto const ring =
        Hole(new qcRegion(regionOf(Figure{square(0, 0, 9), {{square(1, 1, 1), {}}}})));
    qcRegionSet const rings({ring});
    EXPECT_THROW(rings.inertiaMatrix(true), qcContourDefs::BadParams);
    EXPECT_THROW(rings.inertiaMatrix(true), qcContourDefs::BadParams);
    EXPECT_EQ(rings.area(true), 80.0);
    EXPECT_THROW(qcRegionSet({holeOf({{0, 0}, {1, 1}})}).area(false), qcContourDefs::EmptyContour);
}

}  // namespace
