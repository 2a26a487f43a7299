// The contour as a value: comparison, properties, caches and who hears of changes.
#include "cntr/internal/bounded_cache.h"
#include "tests/support/changes.h"
#include "tests/support/contour_answers.h"
#include "tests/support/golden_archives.h"

#include <cntr/region.h>
#include <cntr/regionst.h>
#include <qc/core/compare.h>
#include <qc/core/random.h>

#include <gtest/gtest.h>

#include <map>
#include <thread>

using namespace qnOutlines;
using qnTest::Composer;

namespace {

using Points = std::vector<qcVector<2>>;

Points const kSquare{{0, 0}, {2, 0}, {2, 2}, {0, 2}};
Points const kBow{{0, 0}, {2, 2}, {2, 0}, {0, 2}, {9, 9}};

Questions const& questions()
{
    static std::mt19937 random(3);
    static auto const about = questionsAbout({"", kSquare, true}, random);
    return about;
}

/// Every answer, with the hull and the ellipse.
std::pair<Answers, Points> everything(OpenContour const& contour)
{
    auto answers = ask(contour, questions());
    qcRegion hull;
    if (contour.points().size() > 1) {
        qcEllipse ellipse;
        double residual = 0;
        contour.convexHull(hull);
        contour.fitEllipse(ellipse, residual);
        answers.emplace_back("residual", residual);
        answers.emplace_back("radius", ellipse.radii().x());
    }
    return {answers, hull.points()};
}

TEST(Contour, EqualityLooksAtStatePointsAndBoundAlone)
{
    qcContour const square(kSquare, true, 4);
    qcContour bound(square), asked(square);
    bound.cachedVectorSize(0);
    asked.length();
    struct {
        char const* name;
        qcContour other;
        bool equal;
    } const cases[] = {
        {"other label", qcContour(kSquare, true, 9), true},
        {"asked before", asked, true},
        {"minus zero", qcContour({{0, -0.0}, {2, 0}, {2, 2}, {0, 2}}), true},
        {"open", qcContour(kSquare, false), false},
        {"other bound", bound, false},
        {"shorter", qcContour({{0, 0}, {2, 0}, {2, 2}}), false},
        {"one bit off", qcContour({{5e-324, 0}, {2, 0}, {2, 2}, {0, 2}}), false},
        {"region of the points", qcRegion(kSquare), true},
    };
    for (auto const& c : cases) {
        EXPECT_EQ(square == c.other, c.equal) << c.name;
        EXPECT_EQ(c.other != square, !c.equal) << c.name;
    }
    EXPECT_FALSE(qcContour(kSquare, false) == qcRegion(kSquare)) << "a region is closed";
}

TEST(Contour, EveryChangeOfGeometryReachesEveryQuery)
{
    using C = OpenContour;
    struct {
        char const* name;
        void (*change)(C&);
    } const cases[] = {
        {"points", [](C& c) { c.points(kBow); }},
        {"setPoints", [](C& c) { c.setPoints(kBow); }},
        {"its own points", [](C& c) { c.points(c.points()); }},
        {"no points", [](C& c) { c.points({}); }},
        {"opened", [](C& c) { c.isClosed(false); }},
        {"assigned", [](C& c) { c = C(kBow, false); }},
        {"itself", [](C& c) { c = *&c; }},
        {"mapped",
         [](C& c) {
             c.map(qcXform<2>({0, 1, 2, 0}, {7, 7}), c);
         }},
        {"label and bound", [](C& c) { c.label(8), c.cachedVectorSize(0); }},
        {"loaded",
         [](C& c) {
             c.tracking(true);
             qcMemoryArchive record(Composer()
                                        .byte(1, 0)
                                        .number(6)
                                        .byte(0)
                                        .pointList({{1, -2}, {0.5, 3}})
                                        .number(0xFFFFFFFDu)
                                        .bytes());
             record || c;
             EXPECT_TRUE(c.tracking());
             EXPECT_EQ(c.cachedVectorSize(), -3) << "a negative bound is kept and serves";
             EXPECT_EQ(C(c), c);
         }},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        OpenContour contour(kSquare);
        auto const first = everything(contour);
        OpenContour const before(contour);
        c.change(contour);
        EXPECT_TRUE(everything(contour) ==
                    everything(OpenContour(contour.points(), contour.isClosed())));
        EXPECT_TRUE(everything(before) == first) << "the copy";
    }
}

TEST(Contour, AFullCacheReplacesTheEntryThatItsThreadDraws)
{
    auto const check = [] {
        qcRandomUniform random(1);
        for (long const bound : {-5L, 0L, 1L, 3L}) {
            qnInternal::BoundedCache<int, int> cache;
            std::map<int, int> expected;
            for (int i = 0; i < 60; ++i) {
                int const key = i * 37 % 101;
                cache.insert(key, i, bound);
                auto const size = expected.size();
                if (size > 0 && static_cast<long>(size) > bound)
                    expected.erase(std::next(
                        expected.begin(), qfIFloor(random.next(0.0, static_cast<double>(size)))));
                expected[key] = i;
                ASSERT_EQ(cache.size(), expected.size());
                ASSERT_LE(static_cast<long>(cache.size()), std::max(bound + 1, 1L));
                for (auto const& [k, value] : expected)
                    ASSERT_TRUE(cache.find(k) && *cache.find(k) == value);
            }
        }
    };
    std::thread(check).join();  // each thread draws the same numbers from its start
    std::thread(check).join();
}

TEST(Contour, TellsWhoListensOfEachChange)
{
    using C = qcContour;
    auto const refused = [](C& c) {
        EXPECT_THROW(c.cachedVectorSize(-7), qcContourDefs::BadParams);
        EXPECT_EQ(c.cachedVectorSize(), 3);
    };
    struct {
        char const* name;
        int told;
        void (*act)(C&);
    } const cases[] = {
        {"points", 2, [](C& c) { c.points(kBow); }},
        {"opening", 1, [](C& c) { c.isClosed(false); }},
        {"label", 1, [](C& c) { c.label(3); }},
        {"bound", 1, [](C& c) { c.cachedVectorSize(7); }},
        {"refused bound", 0, refused},
        {"assignment", 0, [](C& c) { c = C(kBow); }},
        {"mapping into it", 0, [](C& c) { C(kBow).map(qcXform<2>::I, c); }},
        {"queries", 0, [](C& c) { c.length(), c.isSelfIntersecting(), c.polygon(); }},
        {"copying", 0, [](C& c) { C(c).label(5); }},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        qnTest::Changes changes;
        {
            C contour(kSquare);
            contour.label(1);
            EXPECT_EQ(changes.count, 0) << "not tracked";
            contour.tracking(true);
            c.act(contour);
            EXPECT_EQ(changes.count, c.told);
        }
        EXPECT_EQ(changes.count, c.told + 1) << "destruction";
    }
}

}  // namespace
