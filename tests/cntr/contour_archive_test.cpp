// The records of a contour, of every version, and what stands after a load that failed.
#include "tests/support/contour_answers.h"
#include "tests/support/golden_archives.h"

#include <gtest/gtest.h>

using namespace qnOutlines;
using qnTest::Bytes;
using qnTest::Composer;

namespace {

std::vector<std::pair<double, double>> const kPairs{{1, -2}, {0.5, 3}};
std::vector<qcVector<2>> const kPoints{{1, -2}, {0.5, 3}};

Bytes versionOne()
{
    return Composer()
        .byte(1)
        .byte(0)
        .number(0xFFFFFFFEu)
        .byte(0)
        .pointList(kPairs)
        .number(9)
        .bytes();
}

Bytes versionZero()
{
    return Composer().byte(0).byte(0).byte(0).pointList(kPairs).byte(77).number(5).byte(0).bytes();
}

Questions const& questions()
{
    static std::mt19937 random(9);
    static auto const about = questionsAbout({"", kPoints, true}, random);
    return about;
}

/// A contour with other values and every cache filled.
OpenContour used()
{
    OpenContour contour({{9, 9}, {8, 1}, {-3, 4}, {0, 0}}, true, 4);
    ask(contour, questions());
    return contour;
}

TEST(ContourArchive, WritesVersionOneByteByByte)
{
    OpenContour contour(kPoints, false, 0xFFFFFFFEu);
    contour.cachedVectorSize(9);
    ask(contour, questions());
    qcMemoryArchive out;
    out || contour;
    EXPECT_EQ(out.bytes(), versionOne());
    OpenContour loaded = used();
    loaded.tracking(true);
    qcMemoryArchive in(out.bytes());
    in || loaded;
    EXPECT_EQ(loaded, contour);
    EXPECT_EQ(loaded.label(), 0xFFFFFFFEu);
    EXPECT_EQ(in.remaining(), 0u);
    EXPECT_TRUE(loaded.tracking());
    EXPECT_EQ(difference(ask(loaded, questions()), ask(contour, questions())), "");
}

TEST(ContourArchive, ReadsVersionZero)
{
    OpenContour loaded = used(), second = used();
    Bytes both = versionZero();
    Bytes next = versionZero();
    next.erase(next.begin() + 1, next.begin() + 3);  // the old base stands once in an archive
    both.insert(both.end(), next.begin(), next.end());
    qcMemoryArchive in(both);
    in || loaded;
    in || second;
    EXPECT_EQ(in.remaining(), 0u);
    for (auto const* contour : {&loaded, &second}) {
        EXPECT_EQ(contour->points(), kPoints);
        EXPECT_EQ(contour->label(), 0u);
        EXPECT_EQ(contour->cachedVectorSize(), 5);
        EXPECT_FALSE(contour->isClosed());
    }
    qcMemoryArchive another(versionZero());
    OpenContour third;
    another || third;
    EXPECT_EQ(third, loaded) << "another archive has an old base of its own";
}

TEST(ContourArchive, NamesTheVersionItCannotRead)
{
    struct {
        char const* name;
        Bytes bytes;
        std::size_t at;
        char const* file;
        int line;
    } const cases[] = {
        {"class", versionOne(), 0, "cntr/contour", 900},
        {"old base", versionZero(), 1, "cntr/contour", 890},
        {"point list", versionOne(), 7, nullptr, 0},
        {"old point list", versionZero(), 3, nullptr, 0},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        auto bytes = c.bytes;
        bytes[c.at] = 2;
        OpenContour target = used();
        qcMemoryArchive in(bytes);
        try {
            in || target;
            ADD_FAILURE() << "loaded";
        } catch (qcArchive::UnknownVersion const& e) {
            EXPECT_STREQ(e.file(), c.file);
            EXPECT_EQ(e.line(), c.line);
        }
        if (c.at == 0) {
            EXPECT_TRUE(target == used() && target.label() == 4) << "nothing was read";
        }
    }
}

TEST(ContourArchive, CutOffAnywhereItThrowsAndTheContourServesOn)
{
    for (auto const& record : {versionOne(), versionZero()})
        for (std::size_t size = 0; size < record.size(); ++size) {
            SCOPED_TRACE(size);
            OpenContour target = used();
            qcMemoryArchive in(Bytes(record.begin(), record.begin() + static_cast<long>(size)));
            EXPECT_THROW(in || target, qcArchive::Errors);
            OpenContour const same(target.points(), target.isClosed());
            EXPECT_EQ(difference(ask(target, questions()), ask(same, questions())), "");
            OpenContour const copy(target);
            target = used();
            EXPECT_EQ(target, used());
        }
}

TEST(ContourArchive, ALoadedNegativeBoundIsKeptAndServes)
{
    OpenContour contour;
    qcMemoryArchive in(
        Composer().byte(1).byte(0).number(0).byte(1).pointList(kPairs).number(0xFFFFFFFDu).bytes());
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
