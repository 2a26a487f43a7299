// Sets of regions: the list and its setters, caches and who hears of them, sums, merging.
#include "tests/support/outlines.h"
#include "tests/support/regions.h"
#include "tests/support/rounds.h"

#include <cntr/regionst.h>

#include <gtest/gtest.h>

#include <algorithm>
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

/// What each query does before any other: whether it tells of its cache, and what it throws on a set
/// of nothing and on one with a null handle in the middle.
TEST(RegionSet, QueriesTellRefuseAndStop)
{
    using S = qcRegionSet;
    static qcRecordingTablet tablet;
    // clang-format off
    struct {
        char const* name;
        void (*query)(S const&);
        char const* told;
        bool refusesEmpty, stopsAtNull;
    } const cases[] = {
        {"area", [](S const& s) { s.area(true); }, "n", false, true},
        {"area without holes", [](S const& s) { s.area(false); }, "n", false, true},
        {"centre", [](S const& s) { s.centerOfMass(true); }, "n", true, true},
        {"inertia", [](S const& s) { s.inertiaMatrix(false); }, "n", true, true},
        {"rectangle", [](S const& s) { s.encloseRect(qcXform<2>::I); }, "n", true, true},
        {"crossings", [](S const& s) { s.isSelfIntersecting(); }, "", false, true},
        {"regularize", [](S const& s) { S out; s.regularize(out); }, "", false, true},
        {"outer hull", [](S const& s) { S out; s.outerHull(out); }, "", false, true},
        {"inside", [](S const& s) { s.inside({99, 1}, true); }, "", false, true},
        {"inside the first", [](S const& s) { s.inside({1, 1}, true); }, "", false, false},
        {"distance", [](S const& s) { s.distToPoint({1, 1}, true, true, true); }, "", true, true},
        {"draw", [](S const& s) { s.draw(tablet, {}, qcUITablet::eImageLayer); }, "", false, true},
        {"equality", [](S const& s) { static_cast<void>(s == S(s)); }, "", false, true},
    };
    // clang-format on
    WatchedSet watched({squareAt(0, 0), squareAt(1, 1)});
    Regions const nullWithin{squareAt(0, 0), Hole(), squareAt(9, 9)};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(watched.during([&] { c.query(watched); }), c.told);
        EXPECT_EQ(watched.during([&] { c.query(watched); }), "") << "again";
        if (c.refusesEmpty)
            EXPECT_THROW(c.query(S()), qcContourDefs::EmptyRegionSet);
        else
            EXPECT_NO_THROW(c.query(S()));
        if (c.stopsAtNull)
            EXPECT_THROW(c.query(S(nullWithin)), qcBadPointer);
        else
            EXPECT_NO_THROW(c.query(S(nullWithin)));
    }
    EXPECT_EQ(S().area(true), 0.0);
    EXPECT_FALSE(S().inside({0, 0}, true));
    EXPECT_THROW(WatchedSet().checkEmptyRegionSet(), qcContourDefs::EmptyRegionSet);
    EXPECT_THROW(watched.cachedVectorSize(-1), qcContourDefs::BadParams);
    EXPECT_EQ(watched.cachedVectorSize(), 3);
    EXPECT_FALSE(S(nullWithin) == S({squareAt(1, 0), Hole(), Hole()})) << "told before the null";
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

TEST(RegionSet, MergesInOnePassWithTheLastRegionMoved)
{
    Hole const a = squareAt(0, 0, 3), b = squareAt(2, 1, 3), c3 = squareAt(-2, -1.5, 3);
    Hole const far = squareAt(40, 0), bowTie = holeOf({{0, 0}, {2, 2}, {2, 0}, {0, 2}});
    for (Mode const mode : {qcContourDefs::eRegularize, qcContourDefs::eOuterHull}) {
        auto const left = [&](Regions const& list) {
            return qcRegionSet(list, mode).regions().size();
        };
        EXPECT_EQ(left({a, far, b, bowTie}), 3u) << "first and third";
        EXPECT_EQ(left({a, b, c3}), 2u) << "the moved one is not compared again";
    }
    Points const spliced{{10, 5}, {10, 10}, {0, 10},  {0, 0},  {10, 0},
                         {10, 5}, {15, 5},  {15, 15}, {5, 15}, {5, 5}};
    EXPECT_EQ(qnPlain::splice(square(0, 0, 10), square(5, 5, 10)), spliced);
    Regions const apart{a, far};
    EXPECT_EQ(qcRegionSet(apart, qcContourDefs::eOuterHull).regions(), apart);
    qcRegionSet setter({a});
    EXPECT_THROW(setter.add(Hole(), qcContourDefs::eRegularize), qcBadPointer);
    EXPECT_EQ(setter.regions().size(), 2U);  // what a failing mode leaves
}

/// Figures here and there, overlapping or not, some with a hole in the middle, some crossing
/// themselves, clockwise or not; few of them, or enough for a tree of their boxes, now and then so near
/// to each other that dozens are spliced into one.
qnPlain::Set randomFigures(std::mt19937& random)
{
    auto const between = [&](double low, double high) {
        return qnOutlines::uniform(random, low, high);
    };
    bool const many = random() % 60 == 0;
    double const reach = many ? between(6, 30) : 8;
    double const height = random() % 3 == 0 ? 1 : reach;  // a row of figures, at times
    qnPlain::Set set(many ? 33 + random() % 30 : 1 + random() % 5);
    for (auto& figure : set) {
        qcVector<2> const center(between(-reach, reach), between(-height, height));
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

/// Compares both ways to clean a set; whether regions were merged.
bool cleansAsThePlainSteps(qcRegionSet const& set, qnPlain::Set const& figures)
{
    bool merged = false;
    for (bool const hull : {false, true}) {
        auto const got = attempt([&] {
            qcRegionSet clean;
            hull ? set.outerHull(clean) : set.regularize(clean);
            std::vector<Points> outlines;
            for (auto const& region : clean.regions())
                outlines.push_back(region->points());
            return outlines;
        });
        EXPECT_EQ(got, attempt([&] { return qnPlain::cleaned(figures, hull); }));
        merged = merged || (got.second.empty() && got.first.size() < figures.size());
    }
    return merged;
}

TEST(RegionSet, AnswersAsThePlainSteps)
{
    std::mt19937 random(23);
    int merged = 0;
    for (int run = 0; run < rounds(1500); ++run) {
        SCOPED_TRACE(run);
        auto figures = randomFigures(random);
        Regions regions;
        for (auto& figure : figures) {
            if (!attempt([&] { return regionOf(figure); }).second.empty())
                figure.holes.clear();  // which meet the outline
            regions.push_back(Hole(new qcRegion(regionOf(figure))));
        }
        qcRegionSet const set(regions);
        qcXform<2> const xform(qcMatrix<2>(1, 0.25, -2, 3), {1, double(run)});
        EXPECT_EQ(set.encloseRect(xform), qnPlain::encloseRect(figures, xform));
        auto const moments = set.inertiaMatrix(false), plain = qnPlain::inertiaMatrix(figures);
        // Polygons' own moments are defined up to the rounding of the sums that give their centres,
        // of cubes of coordinates, which enter by their squares over the area.
        double smallest = 1;
        for (auto const& figure : figures)
            smallest = std::min(smallest, qnPlain::area(figure, false));
        double const reach = figures.size() > 5 ? 34 : 12;
        for (int k = 0; k < 4; ++k)
            EXPECT_NEAR(moments.element(k / 2, k % 2), plain.element(k / 2, k % 2),
                        1e-11 * std::pow(reach, 6) / smallest);
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
        merged += cleansAsThePlainSteps(set, figures);
    }
    EXPECT_GT(merged, 250);
}

TEST(RegionSet, MergesFiguresThatTouchOrNearlyDoAsThePlainSteps)
{
    constexpr std::size_t kMostPoints = 16;
    std::mt19937 random(24);
    auto const outlines = qnOutlines::randomised(25, rounds(600));
    int merged = 0;
    for (int run = 0; run < rounds(1500); ++run) {
        SCOPED_TRACE(run);
        qnPlain::Set figures;
        Regions regions;
        for (std::size_t count = 2 + random() % 5; figures.size() < count;) {
            auto const& outline = outlines[random() % outlines.size()];
            if (outline.points.size() < 3 || outline.points.size() > kMostPoints)
                continue;
            figures.push_back({outline.points, {}});
            regions.push_back(holeOf(outline.points));
        }
        merged += cleansAsThePlainSteps(qcRegionSet(regions), figures);
    }
    EXPECT_GT(merged, 100);
}

TEST(RegionSet, SplicesWhatMeetsTheWayToACrossingBeyondItsEdges)
{
    // The first two meet within the tolerance beyond a corner, where the third meets nothing else.
    Points const far = square(90, 90, 1);
    Points const edge{{9 + 5e-7, 11}, {11 + 5e-7, 9}, {12, 12}};
    Points const tip{{1e-7, -1e-7}, {-10 + 1e-7, -20 - 1e-7}, {-1, -20}};
    for (auto const& outlines : std::vector<std::vector<Points>>{
             {square(0, 0, 10), edge, {{9.9, 10 + 3e-7}, {10.1, 10 + 3e-7}, {10, 15}}, far},
             {{{-10, -10}, {0, 0}, {-10, -5}}, tip, {{-1, 8e-8}, {1, 8e-8}, {0, 5}}, far}}) {
        qnPlain::Set figures;
        Regions regions;
        for (auto const& outline : outlines) {
            figures.push_back({outline, {}});
            regions.push_back(holeOf(outline));
        }
        cleansAsThePlainSteps(qcRegionSet(regions), figures);
    }
}

TEST(RegionSet, SplicesManyIntoOneAsThePlainSteps)
{
    // On the long sides of a bar, from one end to the other or in any order, and on each other.
    Points const bar{{0, 0}, {800, 7}, {801, 30}, {1, 23}};
    std::mt19937 random(26);
    int merged = 0;
    for (int run = 0; run < rounds(3); ++run) {
        SCOPED_TRACE(run);
        qnPlain::Set figures{{bar, {}}};
        Regions regions{holeOf(bar)};
        for (int i = 0; i < 240; ++i) {
            double const part = run % 3 == 0   ? (i + 0.5) / 240
                                : run % 3 == 1 ? (239.5 - i) / 240
                                               : qnOutlines::uniform(random, 0, 1);
            bool const above = random() % 3 == 0;
            qcVector<2> const place =
                (above ? bar[3] : bar[0]) + (bar[1] - bar[0]) * part - qcVector<2>(1, 1);
            figures.push_back({square(place.x(), place.y(), 2), {}});
            regions.push_back(holeOf(figures.back().outline));
        }
        merged += cleansAsThePlainSteps(qcRegionSet(regions), figures);
    }
    EXPECT_GE(merged, rounds(3) / 2) << "now and then no edge can start the walk";
}

TEST(RegionSet, MomentsOfNothingAndOfHoles)
{
    qcRegionSet const flat({holeOf({{0, 0}, {1, 0}, {2, 0}})});
    EXPECT_EQ(flat.centerOfMass(false), qcVector<2>(0, 0));
    EXPECT_EQ(flat.inertiaMatrix(true), flat.inertiaMatrix(false));
    qcRegionSet const rings(
        {Hole(new qcRegion(regionOf(Figure{square(0, 0, 9), {{square(1, 1, 1), {}}}})))});
    for (int again = 0; again < 2; ++again)
        EXPECT_THROW(rings.inertiaMatrix(true), qcContourDefs::BadParams);
    EXPECT_THROW(qcRegionSet({holeOf({{0, 0}, {1, 1}})}).area(false), qcContourDefs::EmptyContour);
}

}  // namespace
