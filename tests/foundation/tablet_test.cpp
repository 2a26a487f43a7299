// The recording tablet and the SVG that browsers have to read.
#include "tests/support/xml.h"

#include <qc/display/tablet.h>

#include <gtest/gtest.h>

#include <limits>
#include <regex>
#include <sstream>

using qnTest::isWellFormed;

namespace {

std::string written(qcSvgTablet const& tablet)
{
    std::ostringstream out;
    tablet.write(out);
    return out.str();
}

/// The names of the elements in the order in which they begin.
std::string elements(std::string const& xml)
{
    std::string names;
    std::regex const tag("<([a-z]+)");
    for (std::sregex_iterator it(xml.begin(), xml.end(), tag), last; it != last; ++it)
        names += (*it)[1].str() + ' ';
    return names;
}

TEST(SvgTablet, WritesWellFormedXmlWhateverItIsGiven)
{
    double const inf = std::numeric_limits<double>::infinity();
    double const huge = std::numeric_limits<double>::max();
    qcSvgTablet tablet;
    EXPECT_EQ(elements(written(tablet)), "svg rect g g ");
    qcSvgTablet::Style filled;
    filled.filled = true;
    tablet.title("a < b && \"c\"");
    tablet.label({0, 0}, "bad \xFF\xC0\x80 bytes \x01 <&> \xE2\x82\xAC \xED\xA0\x80", {});
    tablet.marker({1, 1}, -3.0, qcColor(255, 0, 16));
    tablet.polygon({{{0, 0}, {4, 0}, {4, 4}}, {{1, 1}, {2, 1}, {2, 2}}}, filled);
    tablet.polygon(std::vector<qcVector<2>>{}, filled);
    tablet.polyline({{0, 0}, {inf, 0}}, filled);
    tablet.image("a\"b&.png", {0, 0}, {4, 4});
    std::string const svg = written(tablet);
    EXPECT_TRUE(isWellFormed(svg));
    EXPECT_EQ(elements(svg), "svg title rect g image g text circle path path ");
    EXPECT_NE(svg.find("bad \xEF\xBF\xBD"), std::string::npos);
    EXPECT_NE(svg.find("\xE2\x82\xAC"), std::string::npos);
    EXPECT_NE(svg.find("#ff0010"), std::string::npos);
    tablet.polyline({{-huge, -huge}, {huge, huge}}, filled);
    EXPECT_TRUE(isWellFormed(written(tablet)));
    EXPECT_EQ(written(tablet).find("nan"), std::string::npos);
}

TEST(SvgTablet, FitsThePictureWithYWhereAsked)
{
    struct {
        char const* name;
        qcSvgTablet::YAxis axis;
        bool framed;
        char const* path;
    } const cases[] = {{"up", qcSvgTablet::eYUp, false, "M10 60L110 10\""},
                       {"down", qcSvgTablet::eYDown, false, "M10 10L110 60\""},
                       {"framed", qcSvgTablet::eYUp, true, "M10 110L60 85\""}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        qcSvgTablet tablet(c.axis, 100.0);
        tablet.drawLineSeg({-3.0, 2.0}, {1.0, 4.0}, qcColor(1, 2, 3), qcUITablet::eImageLayer);
        if (c.framed)
            tablet.frame({5, 10}, {-3, 2});
        EXPECT_NE(written(tablet).find(c.path), std::string::npos) << written(tablet);
    }
}

}  // namespace
