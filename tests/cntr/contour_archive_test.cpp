// Contours loaded in place.
#include "tests/support/contour_answers.h"
#include "tests/support/golden_archives.h"

#include <gtest/gtest.h>

using namespace qnOutlines;
using qnTest::Composer;

namespace {

std::vector<qcVector<2>> const kPoints{{1, -2}, {0.5, 3}};

Questions const& questions()
{
    static std::mt19937 random(9);
    static auto const about = questionsAbout({"", kPoints, true}, random);
    return about;
}

TEST(ContourArchive, LoadingReplacesValuesAndCachesButNotTracking)
{
    OpenContour contour(kPoints, false, 0xFFFFFFFEu);
    contour.cachedVectorSize(9);
    qcMemoryArchive out;
    out || contour;
    Composer versionZero;
    versionZero.byte(0, 0, 0).pointList({{1, -2}, {0.5, 3}}).byte(77).number(9).byte(0);
    for (bool const old : {false, true}) {
        OpenContour loaded({{9, 9}, {8, 1}, {-3, 4}, {0, 0}}, true, 4);
        ask(loaded, questions());
        loaded.tracking(true);
        qcMemoryArchive in(old ? versionZero.bytes() : out.bytes());
        in || loaded;
        EXPECT_EQ(in.remaining(), 0u);
        EXPECT_EQ(loaded, contour);
        EXPECT_EQ(loaded.label(), old ? 0 : 0xFFFFFFFEu);
        EXPECT_TRUE(loaded.tracking());
        EXPECT_EQ(difference(ask(loaded, questions()), ask(contour, questions())), "");
    }
}

TEST(ContourArchive, ALoadedNegativeBoundIsKeptAndServes)
{
    OpenContour contour;
    Composer record;
    record.byte(1, 0).number(0).byte(1).pointList({{1, -2}, {0.5, 3}}).number(0xFFFFFFFDu);
    qcMemoryArchive in(record.bytes());
    in || contour;
    EXPECT_EQ(contour.cachedVectorSize(), -3);
    OpenContour const usual(kPoints);
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ(difference(ask(contour, questions()), ask(usual, questions())), "");
    EXPECT_EQ(OpenContour(contour), contour);
    contour.cachedVectorSize(3);
    EXPECT_EQ(contour, usual);
}

}  // namespace
