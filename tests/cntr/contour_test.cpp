// The contour as a value: construction, comparison, properties, caches and who hears of changes.
#include "cntr/internal/bounded_cache.h"
#include "tests/support/contour_answers.h"

#include <cntr/region.h>
#include <qc/core/compare.h>
#include <qc/core/random.h>

#include <gtest/gtest.h>

#include <map>
#include <thread>

using namespace qnOutlines;

namespace {

using Points = std::vector<qcVector<2>>;

Points const kSquare{{0, 0}, {2, 0}, {2, 2}, {0, 2}};
Points const kBow{{0, 0}, {2, 2}, {2, 0}, {0, 2}, {9, 9}};

struct Listener : qcChangeListener {
    Listener() { qcPersistent::addListener(*this); }
    ~Listener() override { qcPersistent::removeListener(*this); }
    void changed(qcPersistent const& object) noexcept override
    {
        ++count;
        if (auto const* contour = dynamic_cast<qcContour const*>(&object))
            lastSize = contour->points().size();
    }
    int count = 0;
    std::size_t lastSize = 0;
};

Questions const& questions()
{
    static std::mt19937 random(3);
    static auto const about = questionsAbout({"", kSquare, true}, random);
    return about;
}

Answers fresh(Points const& points, bool closed)
{
    return ask(OpenContour(points, closed), questions());
}

TEST(Contour, BeginsEmptyAndClosed)
{
    OpenContour const empty;
    EXPECT_TRUE(empty.isClosed());
    EXPECT_EQ(empty.label(), 0u);
    EXPECT_EQ(empty.cachedVectorSize(), 3);
    EXPECT_TRUE(empty.points().empty() && empty.lineSegs().empty() && empty.validLine().empty());
    EXPECT_FALSE(empty.tracking());
    EXPECT_EQ(empty.refCount(), 0);
}

TEST(Contour, EdgesKeepTheirPlaces)
{
    struct {
        char const* name;
        Points points;
        bool closed;
        std::vector<bool> valid;
    } const cases[] = {
        {"open", {{0, 0}, {1, 0}, {1, 1}}, false, {true, true}},
        {"closed", {{0, 0}, {1, 0}, {1, 1}}, true, {true, true, true}},
        {"one point", {{5, 5}}, true, {false}},
        {"one point, open", {{5, 5}}, false, {}},
        {"repeated", {{0, 0}, {1, 0}, {1, 0}, {1, 1}}, true, {true, true, false, true}},
        {"closer than 1e-15", {{0, 0}, {9e-16, 9e-16}, {1, 1}}, false, {false, true}},
        {"just farther", {{0, 0}, {0, 1.1e-15}, {1, 1}}, false, {true, true}},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        OpenContour const contour(c.points, c.closed);
        EXPECT_EQ(contour.validLine(), c.valid);
        for (std::size_t k = 0; k < c.valid.size(); ++k)
            EXPECT_EQ(contour.lineSegs()[k] == qcLineSeg(), !c.valid[k]);
    }
}

TEST(Contour, EqualityLooksAtStatePointsAndBoundAlone)
{
    qcContour const square(kSquare, true, 4);
    qcContour bound(square);
    bound.cachedVectorSize(0);
    struct {
        char const* name;
        qcContour other;
        bool equal;
    } const cases[] = {
        {"copy", square, true},
        {"other label", qcContour(kSquare, true, 9), true},
        {"asked before",
         [&] {
             qcContour c(square);
             c.length();
             return c;
         }(),
         true},
        {"minus zero", qcContour({{0, -0.0}, {2, 0}, {2, 2}, {0, 2}}), true},
        {"open", qcContour(kSquare, false), false},
        {"other bound", bound, false},
        {"shorter", qcContour({{0, 0}, {2, 0}, {2, 2}}), false},
        {"one bit off", qcContour({{5e-324, 0}, {2, 0}, {2, 2}, {0, 2}}), false},
        {"region of the points", qcRegion(kSquare), true},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(square == c.other, c.equal);
        EXPECT_EQ(c.other != square, !c.equal);
    }
    EXPECT_FALSE(qcContour(kSquare, false) == qcRegion(kSquare)) << "a region is closed";
}

TEST(Contour, EveryChangeOfGeometryReachesEveryQuery)
{
    struct {
        char const* name;
        void (*change)(OpenContour&);
    } const cases[] = {
        {"points", [](OpenContour& c) { c.points(kBow); }},
        {"setPoints", [](OpenContour& c) { c.setPoints(kBow); }},
        {"its own points", [](OpenContour& c) { c.points(c.points()); }},
        {"no points", [](OpenContour& c) { c.points({}); }},
        {"opened", [](OpenContour& c) { c.isClosed(false); }},
        {"assigned", [](OpenContour& c) { c = OpenContour(kBow, false); }},
        {"itself",
         [](OpenContour& c) {
             OpenContour& same = c;
             c = same;
         }},
        {"mapped",
         [](OpenContour& c) {
             c.map({{0, 1, 2, 0}, {7, 7}}, c);
         }},
        {"label and bound",
         [](OpenContour& c) {
             c.label(8);
             c.cachedVectorSize(0);
         }},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        OpenContour contour(kSquare);
        qcRegion hull;
        qcEllipse ellipse, expected;
        double residual = 0, expectedResidual = 0;
        contour.convexHull(hull);
        contour.fitEllipse(ellipse, residual);
        ask(contour, questions());
        OpenContour const before(contour);
        c.change(contour);
        EXPECT_EQ(
            difference(ask(contour, questions()), fresh(contour.points(), contour.isClosed())), "");
        if (contour.points().size() > 1) {
            qcRegion freshHull;
            qcContour const again(contour.points(), contour.isClosed());
            contour.convexHull(hull);
            again.convexHull(freshHull);
            EXPECT_EQ(hull, freshHull);
            contour.fitEllipse(ellipse, residual);
            again.fitEllipse(expected, expectedResidual);
            EXPECT_TRUE(ellipse == expected && residual == expectedResidual);
        }
        EXPECT_EQ(difference(ask(before, questions()), fresh(kSquare, true)), "") << "the copy";
        before.convexHull(hull);
        EXPECT_EQ(hull.points(), kSquare);
    }
}

TEST(Contour, CachesOutliveManyArguments)
{
    for (long const bound : {0L, 1L, 3L}) {
        OpenContour contour(kBow);
        contour.cachedVectorSize(bound);
        for (int i = 0; i < 300; ++i) {
            double const angle = 0.1 * (i * i % 23);
            qcXform<2> const xform(qcMatrix<2>(1, 0.5, 0, angle), {i % 7 * 1.0, 0});
            ASSERT_EQ(contour.extremalVertexIndex(qcRadian(angle)),
                      qnPlain::extremalVertexIndex(kBow, angle));
            ASSERT_EQ(contour.encloseRect(xform), qnPlain::encloseRect(kBow, xform));
            if (i == 200)
                contour.cachedVectorSize(0);
        }
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
                if (!expected.empty() && static_cast<long>(expected.size()) > bound)
                    expected.erase(std::next(
                        expected.begin(),
                        qfIFloor(random.next(0.0, static_cast<double>(expected.size())))));
                expected[key] = i;
                ASSERT_EQ(cache.size(), expected.size());
                ASSERT_LE(static_cast<long>(cache.size()), std::max(bound + 1, 1L));
                for (auto const& entry : expected)
                    ASSERT_TRUE(cache.find(entry.first) &&
                                *cache.find(entry.first) == entry.second);
            }
        }
    };
    std::thread(check).join();  // each thread draws the same numbers from its start
    std::thread(check).join();
}

TEST(Contour, RefusesANegativeBound)
{
    qcContour contour(kSquare);
    contour.cachedVectorSize(0);
    EXPECT_THROW(contour.cachedVectorSize(-1), qcContourDefs::BadParams);
    EXPECT_EQ(contour.cachedVectorSize(), 0);
}

TEST(Contour, TellsWhoListensOfEachChange)
{
    struct {
        char const* name;
        int told;
        void (*act)(qcContour&);
    } const cases[] = {
        {"points", 2, [](qcContour& c) { c.points(kBow); }},
        {"opening", 1, [](qcContour& c) { c.isClosed(false); }},
        {"label", 1, [](qcContour& c) { c.label(3); }},
        {"bound", 1, [](qcContour& c) { c.cachedVectorSize(7); }},
        {"refused bound", 0,
         [](qcContour& c) { EXPECT_THROW(c.cachedVectorSize(-7), qcContourDefs::BadParams); }},
        {"assignment", 0, [](qcContour& c) { c = qcContour(kBow); }},
        {"mapping into it", 0, [](qcContour& c) { qcContour(kBow).map(qcXform<2>::I, c); }},
        {"queries", 0,
         [](qcContour& c) {
             c.length();
             c.isSelfIntersecting();
             c.polygon();
         }},
        {"copying", 0,
         [](qcContour& c) {
             qcContour copy(c);
             copy.label(5);
         }},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        Listener listener;
        {
            qcContour contour(kSquare);
            contour.label(1);
            EXPECT_EQ(listener.count, 0) << "not tracked";
            contour.tracking(true);
            c.act(contour);
            EXPECT_EQ(listener.count, c.told);
            EXPECT_EQ(listener.count ? listener.lastSize : contour.points().size(),
                      contour.points().size())
                << "told after the change";
        }
        EXPECT_EQ(listener.count, c.told + 1) << "destruction";
    }
}

TEST(Contour, ChangesGoThroughTheVirtualHooks)
{
    struct Derived : qcContour {
        using qcContour::setPoints;
        void cleanCacheInfo() override
        {
            log += 'c';
            qcContour::cleanCacheInfo();
        }
        void makeDataConsistentWithPoints() override { log += points().size() == 5 ? 'd' : '?'; }
        std::string log;
    };
    Derived derived;
    derived.points(kBow);
    EXPECT_EQ(derived.log, "cd");
    derived.setPoints(kBow);
    derived.isClosed(false);
    EXPECT_EQ(derived.log, "cdcc");
    derived.label(2);
    derived.cachedVectorSize(2);
    static_cast<qcContour&>(derived) = qcContour(kSquare);
    EXPECT_EQ(derived.log, "cdcc");
}

}  // namespace
