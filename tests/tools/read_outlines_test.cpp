// Reading and writing outlines as text: what is understood, what is refused and where, limits.
#include <tools/cntr/read_outlines.h>
#include <tools/cntr/write_outlines.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <limits>
#include <random>
#include <sstream>
#include <stdexcept>

using namespace qnTool;

namespace {

ReadResult read(std::string const& text, ReadOptions const& options = {})
{
    std::istringstream in(text);
    return readOutlines(in, "f", options);
}

/// `name:line[x y,x y](hole)` with [ ] for closed, < > for open outlines.
std::string shown(std::vector<Outline> const& outlines)
{
    std::ostringstream out;
    auto const points = [&](std::vector<qcVector<2>> const& list, char const* ends) {
        out << ends[0];
        for (std::size_t i = 0; i < list.size(); ++i)
            out << (i ? "," : "") << list[i].x() << ' ' << list[i].y();
        out << ends[1];
    };
    for (auto const& outline : outlines) {
        out << (&outline == outlines.data() ? "" : " ") << outline.name << ':' << outline.line;
        points(outline.points, outline.closed ? "[]" : "<>");
        for (auto const& hole : outline.holes)
            points(hole, "()");
    }
    return out.str();
}

std::string errorsOf(ReadResult const& result)
{
    std::string all;
    for (auto const& error : result.errors)
        all += (all.empty() ? "" : "\n") + error.text();
    return all;
}

std::string written(std::vector<Outline> const& outlines, WriteOptions const& options)
{
    std::ostringstream out;
    writeOutlines(out, outlines, options);
    return out.str();
}

}  // namespace

TEST(ReadOutlines, UnderstandsBothFormats)
{
    struct {
        char const *what, *text, *outlines;
    } const cases[] = {
        {"lines, cases, blanks", "LineString(0 0,1\n2) ;\tLINESTRING (\n3 4 , 5 6 )",
         ":1<0 0,1 2> :2<3 4,5 6>"},
        {"closed line", "LINESTRING (0 0, 4 0, 4 4, 0 0)", ":1[0 0,4 0,4 4]"},
        {"rings with and without the repeat",
         "# a b \nPOLYGON ((0 0, 9 0, 9 9, 0 0),\n (1 1, 2 1, 2 2), (3 3, 4 3, 4 4, 3 3))",
         "a b:2[0 0,9 0,9 9](1 1,2 1,2 2)(3 3,4 3,4 4)"},
        {"parts are numbered",
         "#n\nMULTIPOLYGON (((0 0, 1 0, 1 1)),\n((5 5, 6 5, 6 6), (5 5, 5 5)))\n# m\n"
         "MULTILINESTRING((1 1, 2 2))",
         "n 1:2[0 0,1 0,1 1] n 2:3[5 5,6 5,6 6](5 5) m:5<1 1,2 2>"},
        {"the last comment names, once", "# x\n\n#y\nLINESTRING(1 2)LINESTRING(3 4)",
         "y:4<1 2> :4<3 4>"},
        {"mark, header, separators, line ends",
         "\xef\xbb\xbfx;y\r\n0;1\r\n2 , 3\r\n\t4\t5\r\n 6   7  ", ":2<0 1,2 3,4 5,6 7>"},
        {"numbers", "-0.5e1,+2\n.25,1E-3", ":1<-5 2,0.25 0.001>"},
        {"blank and comment lines part outlines",
         "# one\nlon,lat\n0,0\n1,0\n0,0\n \n\n2,2\n# three\n3,3\n3,3",
         "one:3[0 0,1 0] :8<2 2> three:10[3 3]"},
        {"column names that begin like a geometry or a number", "Point X,info\n1,2", ":2<1 2>"},
    };
    for (auto const& c : cases) {
        auto const result = read(c.text);
        EXPECT_EQ(shown(result.outlines), c.outlines) << c.what;
        EXPECT_EQ(errorsOf(result), "") << c.what;
    }
    EXPECT_EQ(shown(read("0,0\n1,1\n", {OutlineFormat::eGuess, true}).outlines), ":1[0 0,1 1]");
    auto const steering = read("# a\x1b[2J\xc3\xa9\xc2\xa9\xc2\x9b"
                               "2J\xc2:\n1,1")
                              .outlines.at(0)
                              .name;
    EXPECT_EQ(steering, "a [2J\xc3\xa9\xc2\xa9  2J\xc2:");
    auto const cut = read("#" + std::string(999, 'n') + "\xc3\xa9\n1,1").outlines.at(0).name;
    EXPECT_EQ(cut, std::string(999, 'n'));
}

TEST(ReadOutlines, ReportsFaultsAndKeepsTheRest)
{
    struct {
        char const *what, *text, *outlines, *errors;
    } const cases[] = {
        {"nothing", " \n# name\n", "", "f:3: no outline in this input"},
        {"bad number", "0,0\n1,1\n\n2,2\n3,x\n4\n\n5,5", ":1<0 0,1 1> :8<5 5>",
         "f:5: expected y, a number, found 'x'"},
        {"decimal comma", "1,5;2,5\n# next\n0,0", "next:3<0 0>",
         "f:1: expected the end of the line after x and y, found ';2,5'"},
        {"missing y", "7\n\n1 \n\n2,", "",
         "f:1: expected a separator and y after x, found the end of the line\n"
         "f:3: expected a separator and y after x, found the end of the line\n"
         "f:5: expected y, a number, found the end of the input"},
        {"not finite", "nan,0\n\n1,-inf\n\n1e999,0\n\n\x01,0", "",
         "f:1: x is not finite: 'nan,0'\nf:3: y is not finite: '-inf'\n"
         "f:5: x is too large or too small for a double: '1e999,0'\n"
         "f:7: expected x, a number, found '\\x01,0'"},
        {"header only at the top", "1,2\nx,y\n", "", "f:2: expected x, a number, found 'x,y'"},
        {"resynchronise",
         "POLYGON ((0 0, 1 1\nLINESTRING (0 0, 1 1)\nLINESTRING (1)\n (7 7)\n# k\n"
         "LINESTRING (2 2)",
         ":2<0 0,1 1> k:6<2 2>",
         "f:2: expected ',' or ')' after a point of x and y, found 'LINESTRING (0 0, 1 1)'\n"
         "f:3: expected a blank and y after x, found ')'"},
        {"a part spoils its geometry", "MULTILINESTRING ((0 0, 1 1),\n(nan 0))\nLINESTRING(1 1)",
         ":3<1 1>", "f:2: x is not finite: 'nan 0))'"},
        {"refused geometries",
         "POINT (1 2)\nPOLYGON EMPTY\nLINESTRING Z (0 0 0,\n1 1 1)\npolygonzm((0 0 0 0))\n"
         "GEOMETRYCOLLECTION (\nPOINT (1 1),\nLINESTRING (0 0))\nLINESTRING (3 3)",
         ":9<3 3>",
         "f:1: POINT is not read: expected LINESTRING, POLYGON, MULTILINESTRING or MULTIPOLYGON\n"
         "f:2: POLYGON EMPTY has no points\n"
         "f:3: LINESTRING with Z or M is not read: expected points of x and y alone\n"
         "f:5: POLYGON with Z or M is not read: expected points of x and y alone\n"
         "f:6: GEOMETRYCOLLECTION is not read: expected LINESTRING, POLYGON, MULTILINESTRING or "
         "MULTIPOLYGON"},
        {"height without saying so", "LINESTRING (0 0 0, 1 1 1)", "",
         "f:1: expected ',' or ')' after a point of x and y, found '0, 1 1 1)'"},
        {"unclosed", "POINT ((1 1)", "",
         "f:1: POINT is not read: expected LINESTRING, POLYGON, MULTILINESTRING or MULTIPOLYGON\n"
         "f:1: POINT has no closing ')': the rest was left out"},
    };
    for (auto const& c : cases) {
        auto const result = read(c.text);
        EXPECT_EQ(shown(result.outlines), c.outlines) << c.what;
        EXPECT_EQ(errorsOf(result), c.errors) << c.what;
    }
    auto const forced = read("1 2", {OutlineFormat::eWkt});
    EXPECT_EQ(errorsOf(forced), "f:1: expected LINESTRING, POLYGON, MULTILINESTRING or "
                                "MULTIPOLYGON, found '1 2'");
}

TEST(ReadOutlines, StopsAtLimitsAndSaysSo)
{
    std::string const two = "0,0\n1,0\n\n5,5\n6,6\n";
    struct {
        std::string text;
        ReadOptions options;
        std::size_t outlines;
        char const* error;
    } const cases[] = {
        // clang-format off
        {two, {{}, {}, 1000, 3, 9}, 1, "f:5: more than 3 points: the rest was left out"},
        {two, {{}, {}, 1000, 9, 1}, 1, "f:4: more than 1 outlines and holes: the rest was left out"},
        {two, {{}, {}, 14, 9, 9}, 1, "f:5: more than 14 bytes: the rest was left out"},
        {"LINESTRING(1 1)\nLINESTRING(2 2)", {{}, {}, 28, 9, 9}, 1,
         "f:2: more than 28 bytes: the rest was left out"},
        {two, {{}, {}, two.size(), 4, 2}, 2, ""},
        // clang-format on
    };
    for (auto const& c : cases) {
        auto const result = read(c.text, c.options);
        EXPECT_EQ(result.outlines.size(), c.outlines) << c.error;
        EXPECT_EQ(errorsOf(result), c.error);
        EXPECT_TRUE(result.errors.empty() || result.errors[0].kind == ReadError::eLimit);
    }
    std::string faults;
    for (int i = 0; i < 5000; ++i)
        faults += "x\n\n";
    EXPECT_EQ(read(faults).errors.size(), 1001u);
    EXPECT_EQ(read("POLYGON " + std::string(3'000'000, '(')).errors.size(), 1u);
    EXPECT_EQ(read("TIN " + std::string(3'000'000, '(')).errors.size(), 2u);
    EXPECT_EQ(errorsOf(read("1" + std::string(2000, '0') + "e-2000,0")).substr(0, 30),
              "f:1: x has too many characters");
    std::ifstream folder(CNTR_EXAMPLE_DATA);
    EXPECT_EQ(readOutlines(folder, "d").errors.at(0).kind, ReadError::eUnreadable);
}

TEST(ReadOutlines, TakesEveryShippedFile)
{
    struct {
        char const* file;
        std::size_t counts[3];  // outlines, holes, closed
    } const cases[] = {{"countries.wkt", {38, 1, 38}}, {"borders.wkt", {4, 0, 0}},
                       {"manhattan.wkt", {13, 0, 13}}, {"glyphs.wkt", {25, 20, 25}},
                       {"horse.csv", {2, 0, 2}},       {"coins.csv", {24, 0, 24}}};
    for (auto const& c : cases) {
        std::ifstream in(std::string(CNTR_EXAMPLE_DATA "/") + c.file);
        auto const result = readOutlines(in, c.file);
        std::size_t holes = 0, closed = 0;
        for (auto const& outline : result.outlines) {
            holes += outline.holes.size();
            closed += outline.closed;
        }
        EXPECT_EQ(errorsOf(result), "");
        auto const counts = {result.outlines.size(), holes, closed};
        EXPECT_TRUE(std::equal(counts.begin(), counts.end(), c.counts)) << c.file;
        auto const again = read(written(result.outlines, {result.format, {}}));
        ASSERT_EQ(again.outlines.size(), result.outlines.size()) << c.file;
        for (std::size_t i = 0; i < again.outlines.size(); ++i) {
            auto const &a = again.outlines[i], &b = result.outlines[i];
            EXPECT_TRUE(a.name == b.name && a.points == b.points) << c.file << i;
            EXPECT_TRUE(a.holes == b.holes && a.closed == b.closed) << c.file << i;
        }
    }
}

TEST(WriteOutlines, AnyDoubleComesBack)
{
    std::mt19937_64 random(3);
    Outline outline{"bits", {{-5e-324, std::numeric_limits<double>::max()}}, true, {}, 0};
    for (int i = 0; i < 5000; ++i)
        outline.points.emplace_back(std::ldexp(double(random()), int(random() % 1900) - 1000), i);
    for (auto const format : {OutlineFormat::eWkt, OutlineFormat::eCsv})
        EXPECT_TRUE(read(written({outline}, {format, {}})).outlines.at(0).points == outline.points);
}

TEST(WriteOutlines, WritesWhatTheFormatHolds)
{
    std::vector<Outline> const both = {{"a\nb", {{0, 0}, {4, 0.5}}, false, {}, 0},
                                       {"", {{0, -0.001}, {1e21, 2}}, true, {{{1, 1}}}, 0}};
    EXPECT_EQ(written(both, {}), "# a b\nLINESTRING (0 0, 4 0.5)\n"
                                 "POLYGON ((0 -0.001, 1e+21 2, 0 -0.001), (1 1, 1 1))\n");
    EXPECT_EQ(written(both, {OutlineFormat::eCsv, 2}),
              "# a b\n0.00,0.00\n4.00,0.50\n\n0.00,0.00\n1000000000000000000000.00,2.00\n"
              "0.00,0.00\n\n# hole 1\n1.00,1.00\n1.00,1.00\n");
    for (auto const& bad : {Outline{}, Outline{"", {{0, 0}, {0, HUGE_VAL}}, false, {}, 0},
                            Outline{"", {{0, 0}}, true, {{}}, 0}}) {
        std::ostringstream out;
        EXPECT_THROW(writeOutlines(out, {both[0], bad}), std::invalid_argument);
        EXPECT_EQ(out.str(), "");
    }
    EXPECT_EQ(numberText(-std::numeric_limits<double>::max(), 100).size(), 411u);
}
