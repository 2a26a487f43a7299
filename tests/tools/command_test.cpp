// The command from outside: what it prints, what it writes, and the status it ends with.
#include "tests/support/xml.h"
#include "tests/tools/command.h"

#include <cntr/cntr.h>
#include <tools/cntr/archive_tree.h>

#include <sys/resource.h>

#include <cmath>
#include <nlohmann/json.hpp>
#include <random>
#include <set>

namespace {

namespace fs = std::filesystem;
using nlohmann::json;

long countOf(std::string const& text, std::string const& part)
{
    long count = 0;
    for (std::size_t at = 0; (at = text.find(part, at)) != std::string::npos; ++at)
        ++count;
    return count;
}

}  // namespace

TEST_F(Command, EndsWithTheStatusOfWhatHappened)
{
    write("one.csv", "1,1\n");
    write("null.cntr", std::string(1, '\0'));
    struct {
        char const* arguments;
        int status;
        char const *out, *err;  // contained
    } const cases[] = {
        {"--help", 0, "locate", ""},
        {"measure --help", 0, "--json", ""},
        {"", 2, "", "cntr: A subcommand is required"},
        {"frobnicate", 2, "", "cntr: there is no subcommand 'frobnicate'"},
        {"measure", 2, "", "cntr: FILE is required"},
        {"measure --frobnicate", 2, "", "cntr: there is no option '--frobnicate'"},
        {"locate a.wkt b.wkt --point 5,5", 2, "", "cntr: one argument too many: 'b.wkt'"},
        {"measure square.wkt --columns name,size", 2, "", "no column 'size'"},
        {"measure square.wkt --precision 101", 2, "", "cntr: --precision: Value 101 not in range"},
        {"measure square.wkt --format xml", 2, "",
         "cntr: --format: wkt, csv or archive, not 'xml'"},
        {"measure square.wkt --format 2", 2, "", "not '2'"},
        {"measure square.wkt --format WKT", 0, "sq", ""},
        {"locate square.wkt", 2, "", "--point X,Y"},
        {"locate square.wkt --point 3", 2, "", "expected a separator"},
        {"locate square.wkt --point a,b", 2, "", "--point: no point in 'a,b'"},
        {"locate square.wkt --points /dev/null", 3, "", "/dev/null: no point in this input"},
        {"convert square.wkt out.xyz", 2, "", "--to"},
        {"measure nothing.wkt line.csv", 3, "#1", "nothing.wkt: cannot be opened"},
        {"measure .", 3, "", ".:1: reading failed"},
        {"measure bad.wkt", 3, "1.414213562373095", "bad.wkt:2: expected y, a number"},
        {"measure /dev/null", 3, "", "no outline"},
        {"clean line.csv", 3, "", "line.csv:1: #1: an open outline"},
        {"archive square.wkt", 3, "", "byte 1: a pointer record that is neither"},
        {"measure square.wkt --format archive", 3, "",
         "byte 0: qcArchive::ValueOutOfRange (0x10001305): a pointer"},
        {"measure null.cntr", 3, "", "null.cntr: record at byte 0: no contour, region or set"},
        {"measure one.csv", 4, "", "qcContourDefs::EmptyContour (0x10004680): too few points"},
        {"measure hole.wkt --columns name", 4, "sq",
         "hole.wkt:2: h: ring 3: qcContourDefs::BadParams (0x10004683): holes cannot intersect"},
        {"measure hole.wkt bad.wkt --columns name", 4, "sq", "bad.wkt:2"},
        {"hull line.csv -o /dev/full --to wkt", 6, "", "/dev/full: cannot be written: No space"},
        {"convert square.wkt no/out.wkt", 6, "", "no/out.wkt: cannot be written"},
        {"measure square.wkt --svg no/out.svg", 6, "sq", "no/out.svg: cannot be written"},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.arguments);
        auto const outcome = run(c.arguments);
        EXPECT_EQ(outcome.status, c.status) << outcome.err;
        EXPECT_TRUE(holds(outcome.out, c.out)) << outcome.out;
        EXPECT_TRUE(holds(outcome.err, c.err)) << outcome.err;
        EXPECT_EQ(outcome.err.empty(), c.status == 0) << outcome.err;
    }
    EXPECT_EQ(run("measure square.wkt", ">/dev/full").status, 6);
    EXPECT_EQ(run("--help", ">/dev/full").status, 6);
}

TEST_F(Command, MeasuresOutlinesAndRegions)
{
    EXPECT_EQ(
        run("measure line.csv square.wkt --columns name,closed,length,area,areaWithHoles").out,
        "name  closed  length  area  areaWithHoles\n"
        "#1        no       9     -              -\n"
        "sq       yes      16    16             15\n");
    EXPECT_EQ(run("measure - --closed --precision 2 --columns area,crosses <line.csv").out,
              "area  crosses\n6.00       no\n");
    EXPECT_EQ(json::parse(run("measure square.wkt line.csv --json --columns name,holes").out),
              json::parse(R"({"outlines": [{"name": "sq", "holes": 1},
                                           {"name": "#1", "holes": null}]})"));
    EXPECT_EQ(json::parse(run("measure square.wkt --json --set --columns area").out),
              json::parse(R"({"sets": [{"area": 16.0}]})"));
    auto const row = json::parse(run("measure square.wkt --json").out)["outlines"][0];
    // The outline less a unit square around (1.5, 1.5).
    double const c = (16 * 2 - 1.5) / 15;
    double const xx = 64. / 3 + 16 * (2 - c) * (2 - c) - 1. / 12 - (1.5 - c) * (1.5 - c);
    EXPECT_NEAR(row["centroidWithHoles"][0].get<double>(), c, 1e-12);
    EXPECT_NEAR(row["inertia"][0].get<double>(), xx, 1e-12);
    EXPECT_NEAR(row["solidity"].get<double>(), 15. / 16, 1e-12);
    EXPECT_EQ(row["holes"], 1);
    EXPECT_EQ(row["high"], json({4.0, 4.0}));
    EXPECT_NEAR(row["fitRadii"][0].get<double>(), std::sqrt(8.0), 1e-9);
    auto const set = json::parse(run("measure square.wkt moved.wkt --set --json").out)["sets"][0];
    EXPECT_EQ(set["regions"], 2);
    EXPECT_NEAR(set["areaWithHoles"].get<double>(), 31.0, 1e-12);
    EXPECT_EQ(set["crosses"], true);
}

TEST_F(Command, LocatesPointsWithAndWithoutHoles)
{
    write("p.csv", "x,y\n5,4\n\n1.5,1.75\n");
    auto const rows =
        json::parse(run("locate square.wkt --point 3,3.5 -1,2 --points p.csv --json").out);
    json answers = json::array();
    for (auto const& row : rows["points"])
        answers.push_back({row["inside"], row["insideWithHoles"], row["distance"], row["closest"],
                           row["vertexRing"]});
    EXPECT_EQ(answers, json::parse("[[true, true, 0.5, [3.0, 4.0], 1],"
                                   " [false, false, 1.0, [0.0, 2.0], 2],"
                                   " [false, false, 1.0, [4.0, 4.0], 1],"
                                   " [true, false, 0.25, [1.5, 2.0], 2]]"));
    auto const set = json::parse(run("locate square.wkt --set --point 1.5,1.5 --json").out);
    EXPECT_EQ(set["points"][0]["inside"], true);
    EXPECT_EQ(set["points"][0]["insideWithHoles"], false);
}

TEST_F(Command, CleansCrossesMergesAndHulls)
{
    auto const clean = run("clean eight.csv --closed");
    EXPECT_EQ(clean.status, 0);
    EXPECT_TRUE(holds(clean.err, "1 crossing resolved")) << clean.err;
    EXPECT_TRUE(holds(clean.out, "5 5")) << clean.out;
    write("curl.csv", "0,0\n10,0\n10,10\n3,10\n3,4\n7,4\n7,12\n0,12\n");
    auto const hull = run("clean - --closed --outer-hull <curl.csv");
    EXPECT_TRUE(holds(hull.err, "#1: 31.2 % of the length did not come back")) << hull.err;

    auto const points = json::parse(run("cross square.wkt moved.wkt --json").out)["points"];
    std::set<json> met;  // edge k ends at vertex k
    for (auto const& p : points)
        met.insert(json::array({p["point"][0], p["point"][1], p["edge"], p["otherEdge"]}));
    EXPECT_EQ(met, (std::set<json>{{2.0, 4.0, 3, 0}, {4.0, 3.0, 2, 1}}));
    auto const merged = run("merge square.wkt moved.wkt --outer-hull");
    EXPECT_TRUE(holds(merged.err, "2 regions -> 1, area 32 -> ")) << merged.err;
    EXPECT_TRUE(holds(merged.err, "the set: 1 of 1 hole did not come back")) << merged.err;
    EXPECT_EQ(run("hull line.csv").out, "POLYGON ((0 0, 3 4, 3 8, 0 0))\n");
}

TEST_F(Command, SaysWhatCleaningAndMergingLeave)
{
    // As small as the tolerance of a crossing.
    write("tiny.csv", "6e-6,8e-6\n2e-6,0e-6\n4e-6,7e-6\n3e-6,8e-6\n1e-6,2e-6\n");
    auto const tiny = run("clean tiny.csv --closed");
    EXPECT_TRUE(holds(tiny.err, "2 crossings resolved, 1 remain\n")) << tiny.err;
    write("row.wkt", "# a\nPOLYGON ((0 0, 4 0, 4 4, 0 4))\n# b\nPOLYGON ((3 3, 7 3, 7 7, 3 7))\n"
                     "# c\nPOLYGON ((6 6, 10 6, 10 10, 6 10))\n");
    auto const row = run("merge row.wkt");
    EXPECT_TRUE(holds(row.err, "3 regions -> 2, area 48 -> 46")) << row.err;
    EXPECT_TRUE(holds(row.err, "some regions of the result still overlap")) << row.err;
    EXPECT_TRUE(holds(row.out, "# c\nPOLYGON ((6 6, 10 6, 10 10, 6 10, 6 6))\n")) << row.out;
    EXPECT_EQ(countOf(row.out, "#"), 1) << row.out;

    std::string const square = "# a\nPOLYGON ((0 0, 4 0, 4 4, 0 4))\n# b\nPOLYGON ";
    struct {
        char const *other, *regions;
        bool repeats;
    } const cases[] = {
        {"((0 0, 4 0, 4 4, 0 4))", "2 regions -> 1, area 32 -> 32,", true},
        {"((4 4, 0 4, 0 0, 4 0))", "2 regions -> 1, area 32 -> 32,", true},
        {"((0 4, 4 4, 4 0, 0 0))", "2 regions -> 1, area 32 -> 0,", true},
        {"((1 1, 5 1, 5 5, 1 5))", "2 regions -> 1,", false},
        {"((5 0, 9 0, 9 4, 5 4))", "2 regions -> 2, area 32 -> 32,", false},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.other);
        write("two.wkt", square + c.other);
        auto const two = run("merge two.wkt");
        EXPECT_TRUE(holds(two.err, c.regions)) << two.err;
        EXPECT_EQ(holds(two.err, "two.wkt:4: b: the same outline as two.wkt:2: a"), c.repeats);
    }
}

TEST_F(Command, HullsAreOutlinesThatCanBeReadOrNone)
{
    write("flat.wkt", "# two\nLINESTRING (0 0, 1 1)\n# three\nLINESTRING (0 0, 2 2, 1 1)\n"
                      "# same\nLINESTRING (3 3, 3 3, 3 3)\n");
    auto const flat = run("hull flat.wkt -o hulls.wkt");
    EXPECT_EQ(flat.status, 4);
    EXPECT_EQ(flat.err, "cntr: flat.wkt:6: same: no hull of fewer than two different points\n");
    EXPECT_EQ(file("hulls.wkt"), "# two\nLINESTRING (0 0, 1 1)\n# three\nLINESTRING (0 0, 2 2)\n");
    EXPECT_EQ(run("measure hulls.wkt").status, 0);

    qcMemoryArchive archive;
    qcContour contour({{0, 0}, {4, 0}, {std::nan(""), 9}, {4, 4}}, false);
    qcPersistent* none = nullptr;
    qcPersistent::serializePointer(archive, &contour, none);
    write("nan.cntr", {archive.bytes().begin(), archive.bytes().end()});
    auto const rest = run("hull nan.cntr");
    EXPECT_EQ(rest.out, "POLYGON ((0 0, 4 0, 4 4, 0 0))\n");
    EXPECT_TRUE(holds(rest.err, "warning: nan.cntr: #1: 1 point left out")) << rest.err;
}

TEST_F(Command, CrossesEveryRingWithEveryOtherInOrder)
{
    using Corners = std::vector<qcVector<2>>;
    std::mt19937 random(3);
    auto const some = [&](char const* name, double width, double height) {
        std::uniform_real_distribution<> x(0, width), y(0, height);
        Corners corners;
        std::string text;
        for (int i = 0; i < 60; ++i) {
            qcVector<2> const& corner = corners.emplace_back(x(random), y(random));
            for (auto const& step : Corners{{0, 0}, {2, 0}, {2, 2}, {0, 2}, {0, 0}})
                text += std::to_string(corner.x() + step.x()) + "," +
                        std::to_string(corner.y() + step.y()) + "\n";
            text += "\n";
        }
        write(name, text);
        return corners;
    };
    for (auto const& size : Corners{{60, 3}, {3, 60}, {15, 15}}) {
        auto const first = some("first.csv", size.x(), size.y());
        auto const second = some("second.csv", size.x(), size.y());
        json expected = json::array();  // the outlines of equal squares meet where the squares do
        for (std::size_t a = 0; a < first.size(); ++a)
            for (std::size_t b = 0; b < second.size(); ++b)
                if (std::abs(first[a].x() - second[b].x()) < 2 &&
                    std::abs(first[a].y() - second[b].y()) < 2)
                    expected.push_back({"#" + std::to_string(a + 1), "#" + std::to_string(b + 1)});
        json found = json::array();
        auto const rows = json::parse(run("cross first.csv second.csv --json").out);
        for (auto const& p : rows["points"])
            if (found.empty() || found.back() != json({p["name"], p["otherName"]}))
                found.push_back({p["name"], p["otherName"]});
        EXPECT_TRUE(found == expected) << found.size() << " of " << expected.size();
    }
}

TEST_F(Command, ConvertsWithoutLossWhereTheFormatAllows)
{
    write("open.wkt", "LINESTRING (0 0, 0.1 1e-300)\n# 12\nPOLYGON ((0 0, 1 0, 1 1, 0 0))\n");
    std::string const original = file("open.wkt");
    ASSERT_EQ(run("convert open.wkt a.cntr").err, "");
    EXPECT_EQ(run("convert a.cntr -").out, original);
    ASSERT_EQ(run("convert open.wkt b.csv").status, 0);
    EXPECT_EQ(run("convert b.csv - --to wkt").out, original);

    EXPECT_TRUE(holds(run("convert square.wkt s.cntr").err, "no names"));
    EXPECT_EQ(run("measure s.cntr --columns area,areaWithHoles").out,
              "area  areaWithHoles\n  16             15\n");
    EXPECT_EQ(run("convert - t.cntr <s.cntr").status, 0);
    EXPECT_EQ(file("s.cntr"), file("t.cntr"));
    EXPECT_TRUE(holds(run("convert s.cntr s.csv").err, "CSV has no holes"));

    EXPECT_EQ(run("convert nothing.wkt t.cntr").status, 3);
    EXPECT_EQ(file("s.cntr"), file("t.cntr")) << "what cannot be read touches nothing";

    // A word is not labelled as the outline that a number names, nor as another word.
    std::string named, labels;
    for (std::string const name : {"foo", "bar", "1", "4", "baz", ""})
        named += "# " + name + "\nLINESTRING (0 0, 1 1)\n";
    write("named.wkt", named);
    run("convert named.wkt named.cntr");
    auto const outlines = json::parse(run("measure named.cntr --json").out)["outlines"];
    for (auto const& p : outlines)
        labels += p["name"].get<std::string>() + " ";
    EXPECT_EQ(labels, "2 3 1 4 5 #6 ");
}

// 40 regions, each twice the hole of the next, were copied by the million before a limit was met.
TEST_F(Command, RefusesSharedHolesThatMultiplyBeforeCopyingThem)
{
    qcPtrHandle<qcRegion> nested;
    for (double size = 1; size <= 40; ++size) {
        qcPtrHandle<qcRegion> const next(new qcRegion(
            std::vector<qcVector<2>>{{-size, -size}, {size, -size}, {size, size}, {-size, size}}));
        if (!nested.isNull())
            next->holes(std::vector<qcPtrHandle<qcRegion>>{nested, nested});
        nested = next;
    }
    qcMemoryArchive archive;
    qcPersistent* none = nullptr;
    qcPersistent::serializePointer(archive, nested.get(), none);
    write("nested.cntr", {archive.bytes().begin(), archive.bytes().end()});
    auto const peak = [] {
        struct rusage usage = {};
        ::getrusage(RUSAGE_CHILDREN, &usage);
        return usage.ru_maxrss;  // KiB
    };
    long const before = peak();
    auto const outcome = run("convert nested.cntr -");
    EXPECT_EQ(outcome.status, 5);
    EXPECT_TRUE(holds(outcome.err, "would exceed 50000000 points or 5000000 outlines"));
    EXPECT_LT(peak(), before + 300'000);
}

TEST_F(Command, DrawsWellFormedPicturesOfWhatItFound)
{
    struct {
        char const* arguments;
        long paths, circles;
    } const cases[] = {
        {"measure square.wkt line.csv", 3, 1},  // both, an ellipse and its centre
        {"locate square.wkt --point 3,3 9,9 --y-down", 3, 4},
        {"clean eight.csv --closed -o c.wkt", 2, 1},
        {"cross square.wkt moved.wkt", 2, 2},
        {"merge square.wkt moved.wkt --outer-hull -o c.wkt", 3, 0},
        {"hull line.csv -o c.wkt", 2, 0},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.arguments);
        ASSERT_EQ(run(std::string(c.arguments) + " --svg p.svg").status, 0);
        EXPECT_TRUE(qnTest::isWellFormed(file("p.svg"))) << file("p.svg");
        EXPECT_EQ(countOf(file("p.svg"), "<path "), c.paths);
        EXPECT_EQ(countOf(file("p.svg"), "<circle "), c.circles);
    }
    run("locate square.wkt --point 1.5,3.9 --svg up.svg");
    run("locate square.wkt --point 1.5,3.9 --svg down.svg --y-down");
    EXPECT_NE(file("up.svg"), file("down.svg"));
}

TEST_F(Command, ShowsArchivesWithoutLoadingThem)
{
    run("convert square.wkt s.cntr");
    std::string const good = file("s.cntr");
    EXPECT_EQ(run("archive s.cntr").out,
              "object 1, qcRegionSet [qcRegionSet 1], 1 region, " + std::to_string(good.size()) +
                  " bytes at 0\n"
                  "  region 1: object 2, qcRegion [qcRegion 1, qcContour 1], 4 points, 1 hole, 198 "
                  "bytes at 23\n"
                  "    hole 1: object 3, qcRegion [qcRegion 1, qcContour 1], 4 points, 0 holes, 99 "
                  "bytes at 122\n");
    EXPECT_EQ(json::parse(run("archive s.cntr --json").out)["records"][2]["counts"]["points"], 4);
    write("cut.cntr", good.substr(0, good.size() - 5));
    auto const cut = run("archive cut.cntr");
    EXPECT_TRUE(cut.status == 3 && holds(cut.out, "incomplete")) << cut.out;
    EXPECT_EQ(run("measure cut.cntr").status, 3);

    std::string deep;  // each region the hole of the one before
    std::string const region = good.substr(23, 122 - 23);
    while (deep.size() < 1100 * region.size())
        deep += region;
    write("deep.cntr", deep);
    EXPECT_EQ(run("archive deep.cntr").status, 5);
    EXPECT_EQ(run("measure deep.cntr").status, 5);
}

TEST(ArchiveTree, KnowsTheRecordOfEveryClass)
{
    std::set<std::string> met;
    auto const know = [&](std::vector<unsigned char> const& bytes, std::string const& what) {
        auto const tree = qnTool::readArchiveTree(bytes, 1000);
        EXPECT_EQ(tree.fault, "") << what;
        std::size_t end = 0;  // of the last root
        for (auto const& node : tree.nodes) {
            met.insert(node.className);
            if (node.depth > 0)
                continue;
            EXPECT_EQ(node.offset, end) << what;
            end += node.size;
        }
        EXPECT_EQ(end, bytes.size()) << what;
    };
    // Every version of what holds points, full and empty.
    for (auto const& entry : fs::directory_iterator(CNTR_TEST_DATA)) {
        auto const text = contentOf(entry.path());
        know({text.begin(), text.end()}, entry.path().string());
    }
    qcMemoryArchive all;
    auto const storeAll = [&](auto... objects) {
        qcPersistent* none = nullptr;
        (qcPersistent::serializePointer(all, &objects, none), ...);
    };
    storeAll(qcBadPointer(), qcMathError::Singular(), qcPel::BadWindow(), qcFitError::BadParams(),
             qcFitError::NotFinite(), qcFitError::TooFewPoints(), qcFitError::Degenerate(),
             qcFitError::NotAnEllipse(), qcFitError::ResidualTooLarge(), qcLine(), qcLineSeg(),
             qcRect(), qcCircle(), qc2XformLinear(), qc2Rigid());
    know(all.bytes(), "foundation");
    for (auto const& name : qcPersistent::registeredClasses())
        EXPECT_TRUE(met.count(name) || holds(name, "(anonymous namespace)")) << name;
}
