// Regularised outlines and outer hulls: known shapes, seeded curves, real outlines, properties.
#include "tests/support/regions.h"

#include <tools/cntr/read_outlines.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>

using namespace qnTest;

namespace {

struct Cleaned {
    Points points;
    std::string error;
    bool operator==(Cleaned const& other) const
    {
        return points == other.points && error == other.error;
    }
};

void PrintTo(Cleaned const& cleaned, std::ostream* out)
{
    *out << cleaned.error;
    for (auto const& p : cleaned.points)
        *out << '(' << p.x() << ' ' << p.y() << ')';
}

template <class Make>
Cleaned attempt(Make const& make)
{
    try {
        return {make(), ""};
    } catch (qcContourDefs::Errors const& error) {
        return {{}, error.what()};
    }
}

Cleaned regularized(Points const& outline)
{
    return attempt([&] { return qcRegion(outline, qcContourDefs::eRegularize).points(); });
}

Cleaned hull(Points const& outline)
{
    return attempt([&] { return qcRegion(outline, qcContourDefs::eOuterHull).points(); });
}

/// The library against the plain steps; true where the outline crosses itself.
bool compare(Points const& outline)
{
    if (!regionOf(outline).isSelfIntersecting()) {
        EXPECT_EQ(regularized(outline), (Cleaned{outline, ""}));
        EXPECT_EQ(hull(outline), (Cleaned{outline, ""}));
        return false;
    }
    EXPECT_EQ(regularized(outline), attempt([&] { return qnPlain::boundaryWalk(outline); }));
    EXPECT_EQ(hull(outline), attempt([&] { return qnPlain::outerHull(outline); }));
    return true;
}

/// Where along the curve its crossings lie, each twice. None where one is too near to a vertex for
/// the tolerances not to matter.
std::vector<std::pair<double, double>> crossingPlaces(Points const& p)
{
    std::vector<std::pair<double, double>> places;
    for (std::size_t i = 1; i < p.size(); ++i)
        for (std::size_t j = i + 1; j <= p.size(); ++j) {
            qcVector<2> const a = p[i - 1], d = p[i] - a;
            qcVector<2> const b = p[j - 1], e = p[j % p.size()] - b;
            bool const neighbours = j == i + 1 || (i == 1 && j == p.size());
            double const t = (b - a).cross(e) / d.cross(e), u = (b - a).cross(d) / d.cross(e);
            if (neighbours || !(t >= 0 && t <= 1 && u >= 0 && u <= 1))
                continue;
            if (std::min({t, 1 - t, u, 1 - u}) < 1e-4)
                return {};
            places.emplace_back(static_cast<double>(i) + t, static_cast<double>(j) + u);
        }
    return places;
}

using Bits = std::vector<std::vector<bool>>;

Bits interleaving(std::vector<std::pair<double, double>> const& places)
{
    Bits matrix;
    for (auto const& [from, to] : places) {
        matrix.emplace_back();
        for (auto const& other : places)
            matrix.back().push_back(other.first == from ||
                                    (from < other.first && other.first < to) !=
                                        (from < other.second && other.second < to));
    }
    return matrix;
}

bool isRegular(Bits matrix)
{
    for (std::size_t c = 0; c < matrix.size(); ++c) {
        auto const pivot = std::find_if(matrix.begin() + static_cast<std::ptrdiff_t>(c),
                                        matrix.end(), [&](auto const& row) { return row[c]; });
        if (pivot == matrix.end())
            return false;
        std::swap(*pivot, matrix[c]);
        for (std::size_t r = c + 1; r < matrix.size(); ++r)
            for (std::size_t k = 0; matrix[r][c] && k < matrix.size(); ++k)
                if (k != c && matrix[c][k])
                    matrix[r][k] = !matrix[r][k];
    }
    return true;
}

std::string const kInvalid = "invalid contour";
std::string const kEmpty = "qcContourDefs::EmptyContour";

}  // namespace

TEST(RegionRegularize, KnownShapes)
{
    Points const eight{{6, -3}, {0, 0}, {-6, -3}, {-6, 3}, {0, 0}, {6, 3}};
    Points const eightHull{{0, 0}, {-6, -3}, {-6, 3}, {0, 0}, {6, 3}, {6, -3}};
    struct {
        char const* name;
        Points outline;
        Cleaned regularized, hull;
    } const cases[] = {
        {"figure eight", {{-6, -3}, {6, 3}, {6, -3}, {-6, 3}}, {eight, ""}, {eightHull, ""}},
        {"loop curling inside",
         {{0, 0}, {12, 0}, {12, 8}, {5, 8}, {5, 5}, {7, 5}, {7, 10}, {0, 10}},
         {{{12, 0}, {12, 8}, {7, 8}, {7, 5}, {5, 5}, {5, 8}, {7, 8}, {7, 10}, {0, 10}, {0, 0}}, ""},
         {{{7, 8}, {7, 10}, {0, 10}, {0, 0}, {12, 0}, {12, 8}}, ""}},
        {"loop curling outside",
         {{0, 0}, {6, 0}, {6, 8}, {8, 8}, {8, 6}, {0, 6}},
         {{{6, 0}, {6, 6}, {8, 6}, {8, 8}, {6, 8}, {6, 6}, {0, 6}, {0, 0}}, ""},
         {{{6, 6}, {8, 6}, {8, 8}, {6, 8}, {6, 6}, {0, 6}, {0, 0}, {6, 0}}, ""}},
        {"winds twice",
         {{0, 0}, {12, 0}, {12, 10}, {2, 10}, {2, 2}, {10, 2}, {10, 8}, {0, 8}},
         {{{12, 0}, {12, 10}, {2, 10}, {2, 8}, {10, 8}, {10, 2}, {2, 2}, {2, 8}, {0, 8}, {0, 0}},
          ""},
         {{{2, 8}, {0, 8}, {0, 0}, {12, 0}, {12, 10}, {2, 10}}, ""}},
        {"vertex resting on an edge, which is walked twice",
         {{0, 0}, {4, 0}, {4, 4}, {2, 0}},
         {{{4, 4}, {2, 0}, {0, 0}, {2, 0}, {4, 4}, {4, 0}}, ""},
         {{{4, 4}, {2, 0}, {0, 0}, {2, 0}, {4, 4}, {4, 0}}, ""}},
        {"repeated vertex",
         {{-6, -3}, {6, 3}, {6, -3}, {6, -3}, {-6, 3}},
         {{{6, -3}, {6, -3}, {0, 0}, {-6, -3}, {-6, 3}, {0, 0}, {6, 3}}, ""},
         {{}, kEmpty}},
        {"crossing on a shared vertex",
         {{0, 0}, {2, 2}, {4, 0}, {4, 4}, {2, 2}, {0, 4}},
         {{{0, 0}, {2, 2}, {4, 0}, {4, 4}, {2, 2}, {0, 4}}, ""},
         {{{0, 0}, {2, 2}, {4, 0}, {4, 4}, {2, 2}, {0, 4}}, ""}},
        {"a neighbour in line with every edge that faces out",
         {{-6, -3}, {6, 3}, {6, 0}, {6, -3}, {-6, 3}, {-6, 0}},
         {{}, kInvalid},
         {{}, kInvalid}},
        {"only the last edge can start",
         {{6, 3}, {6, 0}, {6, -3}, {-6, 3}, {-6, -3}},
         {{{-6, -3}, {0, 0}, {6, -3}, {6, 0}, {6, 3}, {0, 0}, {-6, 3}}, ""},
         {{{0, 0}, {6, -3}, {6, 0}, {6, 3}, {0, 0}, {-6, 3}, {-6, -3}}, ""}},
        {"only the closing edge could start",
         {{-6, -3}, {6, 3}, {6, 0}, {6, -3}, {-6, 3}},
         {{}, kInvalid},
         {{}, kInvalid}},
        {"lobes thinner than the probe",
         {{0, 0}, {100, 0.1}, {200, -0.1}, {300, 0}, {200, 0.1}, {100, -0.1}},
         {{}, kInvalid},
         {{}, kInvalid}},
        {"every edge crossed",
         {{0, -10}, {6, 8}, {-9, -3}, {9, -3}, {-6, 8}},
         {{}, kInvalid},
         {{}, kInvalid}},
        {"walk that never meets its start",
         {{3, 2}, {4, 3}, {1, 0}, {4, 4}, {4, 1}},
         {{}, kInvalid},
         {{}, kInvalid}},
        {"two points", {{0, 0}, {2, 2}}, {{{0, 0}, {2, 2}}, ""}, {{{0, 0}, {2, 2}}, ""}},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(regularized(c.outline), c.regularized);
        EXPECT_EQ(hull(c.outline), c.hull);
        compare(c.outline);
    }
    EXPECT_GE(qnPlain::startEdge({{3, 2}, {4, 3}, {1, 0}, {4, 4}, {4, 1}}), 0);
}

TEST(RegionRegularize, LeavesSimpleRegionsAndFailedResultsAlone)
{
    qcRegion const holed = regionOf(Figure{square(0, 0, 10), {{square(2, 2, 2), {}}}});
    qcRegion result = regionOf(square(5, 5, 1));
    holed.regularize(result);
    EXPECT_EQ(result, holed);
    EXPECT_EQ(result.holes(), holed.holes());
    qcRegion const bad = regionOf(Points{{0, -10}, {6, 8}, {-9, -3}, {9, -3}, {-6, 8}});
    for (int again = 0; again < 2; ++again) {
        EXPECT_THROW(bad.regularize(result), qcContourDefs::BadParams);
        EXPECT_THROW(bad.outerHull(result), qcContourDefs::BadParams);
        EXPECT_EQ(result.holes(), holed.holes());
    }
}

TEST(RegionRegularize, ResultsAreKeptAndMayReplaceTheRegion)
{
    Points const curl{{0, 0}, {12, 0}, {12, 8}, {5, 8}, {5, 5}, {7, 5}, {7, 10}, {0, 10}};
    qcRegion region = regionOf(Figure{curl, {{square(9, 2, 1), {}}}});
    region.label(6);
    qcRegion kept = regionOf(Points{});
    qcRegion keptHull = kept;
    for (int again = 0; again < 2; ++again) {  // the one result does not stand for the other
        region.regularize(kept);
        region.outerHull(keptHull);
        EXPECT_EQ(kept.points(), qnPlain::boundaryWalk(curl));
        EXPECT_EQ(keptHull.points(), qnPlain::outerHull(curl));
        EXPECT_TRUE(kept.holes().empty() && keptHull.holes().empty());
        EXPECT_EQ(kept.label(), 0u);
    }
    qcRegion copy = region;
    copy.points(square(0, 0, 5));
    copy.regularize(kept);
    EXPECT_EQ(kept.points(), square(0, 0, 5));
    copy = region;
    region.outerHull(region);
    EXPECT_EQ(region, keptHull);
    EXPECT_TRUE(region.holes().empty());
    copy.regularize(
        copy);  // what it computed before lives on where the region it came from is gone
    EXPECT_EQ(copy.points(), qnPlain::boundaryWalk(curl));
}

TEST(RegionRegularize, SeededOutlinesComeOutAsThePlainStepsSay)
{
    int crossing = 0;
    // On a small lattice vertices rest on edges, stand on each other, and edges overlap.
    std::mt19937 random(41);
    for (int i = 0; i < 600; ++i) {
        Points lattice;
        for (auto n = 4 + random() % 9; n > 0; --n)
            lattice.emplace_back(random() % 6, random() % 6);
        SCOPED_TRACE("lattice outline " + std::to_string(i));
        crossing += compare(lattice);
    }
    for (unsigned seed = 40; seed < 46; ++seed)
        for (auto const& curve : crossingCurves(seed)) {
            SCOPED_TRACE(curve.name + " of seed " + std::to_string(seed));
            crossing += compare(curve.points);
        }
    EXPECT_GT(crossing, 500);
}

TEST(RegionRegularize, RealOutlinesOffsetCrudely)
{
    int crossing = 0, whole = 0;
    for (auto const* name : {"countries.wkt", "glyphs.wkt", "horse.csv", "coins.csv"}) {
        std::ifstream file(std::string(CNTR_EXAMPLE_DATA "/") + name);
        for (auto const& outline : qnTool::readOutlines(file, name).outlines) {
            SCOPED_TRACE(std::string(name) + ' ' + outline.name);
            qcContour const contour(outline.points);
            double const size = contour.diameter(qcContourDefs::eFromFirstPoint);
            for (double const part : {0.01, -0.03}) {
                Points const offset = crudeOffset(outline.points, size * part);
                if (!compare(offset))
                    continue;
                ++crossing;
                Cleaned const result = regularized(offset);
                double const back = qcContour(result.points).length();
                whole += result.error.empty() && back > 0.999999 * qcContour(offset).length();
            }
        }
    }
    EXPECT_GT(crossing, 40);
    EXPECT_GT(whole, 0);
    EXPECT_LT(whole, crossing);
}

TEST(RegionRegularize, ShapeDoesNotDependOnPlaceAndDirection)
{
    // Turning an outline turns the rays as well: another edge may be found to face the outside first.
    int sameStart = 0;
    qcXform<2> const moved(qcMatrix<2>(qcRadian(0.7), qcRadian(0.7), 1, 1), {1000.25, -333.5});
    for (auto const& curve : crossingCurves(60)) {
        SCOPED_TRACE(curve.name);
        qcRegion elsewhere = regionOf(Points{});
        regionOf(curve.points).map(moved, elsewhere);
        if (qnPlain::startEdge(curve.points) != qnPlain::startEdge(elsewhere.points()))
            continue;
        ++sameStart;
        Cleaned const here = hull(curve.points), there = hull(elsewhere.points());
        ASSERT_EQ(here.error, there.error);
        ASSERT_EQ(here.points.size(), there.points.size());
        for (std::size_t i = 0; i < here.points.size(); ++i)
            EXPECT_LT((moved * here.points[i]).distance(there.points[i]), 1e-6);
    }
    EXPECT_GT(sameStart, 10);
}

TEST(RegionRegularize, AllComesBackWhereTheCrossingsInterleaveSo)
{
    // Turning around at every crossing of a closed curve leaves one curve exactly where the matrix of
    // crossings that take turns along it, with ones on the diagonal, is regular modulo 2.
    int whole = 0, parts = 0;
    for (unsigned seed = 70; seed < 80; ++seed)
        for (auto const& curve : crossingCurves(seed)) {
            SCOPED_TRACE(curve.name + " of seed " + std::to_string(seed));
            auto const crossings = crossingPlaces(curve.points);
            Cleaned const result = regularized(curve.points);
            if (crossings.empty() || result.error == kInvalid)
                continue;
            qcRegion const clean = regionOf(result.points);
            EXPECT_FALSE(clean.isSelfIntersecting());
            double const lost = 1 - clean.length() / qcContour(curve.points).length();
            bool const expected = isRegular(interleaving(crossings));
            EXPECT_EQ(std::fabs(lost) < 1e-9, expected) << lost;
            ++(expected ? whole : parts);
        }
    EXPECT_GT(whole, 50);
    EXPECT_GT(parts, 50);
}
