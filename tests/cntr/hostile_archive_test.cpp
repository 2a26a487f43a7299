// Archives that are cut off, altered or made up. Reading them ends in an exception of the archive or
// in a sound object: one that answers every query and can be stored again.
#include "tests/support/allocations.h"
#include "tests/support/golden_archives.h"

#include <cntr/cntrtmpl.h>
#include <tools/cntr/archive_tree.h>

#include <gtest/gtest.h>

namespace {

using namespace qnTest;

constexpr long long kMemoryFloor = 1 << 20;
constexpr long long kMemoryPerByte = 64;  // an object of many members may take few bytes to say

/// Reads the bytes and does everything with what comes out. True when they were refused.
::testing::AssertionResult survives(Bytes const& bytes, bool* refused = nullptr)
{
    if (refused)
        *refused = false;
    Root loaded;
    Allocations allocations;
    try {
        loaded = load(bytes);
    } catch (qcArchive::Errors const&) {
        if (refused)
            *refused = true;
    } catch (std::exception const& error) {
        return ::testing::AssertionFailure() << "reading threw " << error.what();
    }
    auto const peak = allocations.peakBytes();
    if (peak > kMemoryFloor + kMemoryPerByte * static_cast<long long>(bytes.size()))
        return ::testing::AssertionFailure() << "reading took " << peak << " bytes";
    if (!loaded.object)
        return ::testing::AssertionSuccess();
    auto const failure = askEverything(*loaded.object);
    if (!failure.empty())
        return ::testing::AssertionFailure() << failure;
    Bytes const again = store(*loaded.object);
    if (store(*load(again).object) != again)
        return ::testing::AssertionFailure() << "stored again it reads differently";
    return ::testing::AssertionSuccess();
}

/// The bytes of a set in place, as another program would go on reading after a failure.
void expectNextLoadUnaffected()
{
    static Bytes const good = goldenArchives().back().bytes;
    EXPECT_EQ(store(*load(good).object), good);
    EXPECT_FALSE(qcPersistent::haveVisited(nullptr, 0));
}

/// Whether records can be read up to the last byte.
bool loadsWhole(Bytes const& bytes)
try {
    qcMemoryArchive archive(bytes);
    while (archive.remaining() > 0) {
        qcPersistent* loaded = nullptr;
        qcPersistent::serializePointer(archive, nullptr, loaded);
    }
    return true;
} catch (qcArchive::Errors const&) {
    return false;
}

TEST(HostileArchive, CutOffAtEveryByte)
{
    for (auto const& golden : goldenArchives()) {
        SCOPED_TRACE(golden.name);
        for (std::size_t size = 0; size < golden.bytes.size(); ++size) {
            SCOPED_TRACE(size);
            Bytes const cut(golden.bytes.begin(), golden.bytes.begin() + long(size));
            bool refused = false;
            EXPECT_TRUE(survives(cut, &refused));
            EXPECT_TRUE(refused);
            EXPECT_NE(qnTool::readArchiveTree(cut, 100).fault, "");
        }
        expectNextLoadUnaffected();
    }
}

TEST(HostileArchive, EveryByteChanged)
{
    for (auto const& golden : goldenArchives()) {
        SCOPED_TRACE(golden.name);
        for (std::size_t i = 0; i < golden.bytes.size(); ++i)
            for (int const change : {0x00, 0x01, 0x02, 0x7F, 0x80, 0xFF, -1, -2}) {
                Bytes bytes = golden.bytes;
                bytes[i] = static_cast<unsigned char>(change >= 0    ? change
                                                      : change == -1 ? bytes[i] ^ 0x10
                                                                     : bytes[i] + 1);
                SCOPED_TRACE(testing::Message() << "byte " << i << " is " << int(bytes[i]));
                EXPECT_TRUE(survives(bytes));
                EXPECT_TRUE(!loadsWhole(bytes) ||
                            qnTool::readArchiveTree(bytes, 100).fault.empty());
            }
        expectNextLoadUnaffected();
    }
}

TEST(HostileArchive, VersionsThatAreNotKnownAreNamed)
{
    auto const object = [](char const* name) { return Composer().newObject(name); };
    auto const typedContour = object("qcContourT<qcEdgelet>");
    struct {
        Composer upToVersion;
        int newest;
        char const* file;
        int line;
    } const cases[] = {
        {object("qcContour"), 1, "cntr/contour", 900},
        {object("qcContour").byte(0), 0, "cntr/contour", 890},  // legacy base
        {object("qcContour").byte(0, 0, 0), 0, nullptr, 0},     // point list
        {object("qcRegion"), 1, "cntr/region", 822},
        {object("qcRegion").byte(0), 0, "cntr/region", 812},  // legacy base
        {object("qcRegion").byte(1).contour(0, {}), 0, nullptr, 0},
        {object("qcRegionSet"), 1, "cntr/regionst", 480},
        {object("qcRegionSet").byte(1, 0), 0, nullptr, 0},
        {typedContour, 1, "ch_core/cntrtmpl", 98},
        {Composer(typedContour).byte(1).contour(0, {}), 0, nullptr, 0},
        {object("qcRegionT<qcEdgelet>"), 0, "ch_core/cntrtmpl", 186},
        {object("qcRegionSetT<qcEdgelet>"), 0, "ch_core/cntrtmpl", 286},
        {object("qcContourDefs::EmptyContour"), 0, "qcContourDefs::EmptyContour", 0},
        {object("qcContourDefs::EmptyRegionSet"), 0, "qcContourDefs::EmptyRegionSet", 0},
        {object("qcContourDefs::BadParams"), 0, "qcContourDefs::BadParams", 0},
        {object("qcContourDefs::BadParams").byte(0), 0, "qcContourDefs::Errors", 0},
        {object("qcContourDefs::RegionCannotBeSetOpen"), 0, "qcContourDefs::RegionCannotBeSetOpen",
         0},
    };
    for (auto const& c : cases)
        for (int version = c.newest + 1; version < 256; ++version) {
            SCOPED_TRACE(testing::Message() << "case " << &c - cases << ", version " << version);
            try {
                load(Composer(c.upToVersion).byte(version, 0, 0).bytes());
                ADD_FAILURE() << "was read";
            } catch (qcArchive::UnknownVersion const& error) {
                EXPECT_STREQ(error.file(), c.file);
                EXPECT_EQ(error.line(), c.line);
            }
        }
}

TEST(HostileArchive, CountsWithNothingBehindThemAreRefused)
{
    struct {
        char const* name;
        Composer upToCount;
    } const cases[] = {
        {"class name", Composer().byte(1)},
        {"points", Composer().newObject("qcContour").byte(1, 0).number(0).byte(1, 0)},
        {"holes", Composer().newObject("qcRegion").byte(1).contour(0, {}).byte(0)},
        {"regions", Composer().newObject("qcRegionSet").byte(1, 0, 0)},
        {"typed regions", Composer()
                              .newObject("qcRegionSetT<qcEdgelet>")
                              .byte(0, 1, 0, 0)
                              .number(0)
                              .number(3)
                              .byte(0)},
        {"data", Composer().newObject("qcContourT<qcEdgelet>").byte(1).contour(0, {}).byte(0)},
        {"message", Composer().newObject("qcContourDefs::BadParams").byte(0, 0, 0, 0)},
    };
    for (auto const& c : cases)
        for (unsigned long const count : {5UL, 0x7FFFFFFFUL, 0x80000000UL, 0xFFFFFFFFUL}) {
            SCOPED_TRACE(c.name);
            Composer whole = c.upToCount;
            Allocations const allocations;
            EXPECT_THROW(load(whole.number(count).byte(0).byte(0).bytes()), qcArchive::BadCount);
            EXPECT_LT(allocations.peakBytes(), kMemoryFloor);
        }
}

TEST(HostileArchive, ListsWithinListsCannotClaimTheSameBytes)
{
    Bytes const filler(1 << 20, 0);
    Composer c;
    for (int level = 0; level < 900; ++level)
        c.newRegion(filler.size() - 64);
    Bytes bytes = c.bytes();
    bytes.insert(bytes.end(), filler.begin(), filler.end());
    bool refused = false;
    EXPECT_TRUE(survives(bytes, &refused));
    EXPECT_TRUE(refused);
}

TEST(HostileArchive, MadeUpObjects)
{
    auto const region = [] { return Composer().newRegion(1, {{0, 0}, {4, 0}, {0, 4}}); };
    auto const object = [](char const* name) { return Composer().newObject(name); };
    auto const set = [&](unsigned long regions) {
        return object("qcRegionSet").byte(1, 0, 0).number(regions);
    };
    auto exception = set(2), transform = object("qcContourT<qcEdgelet>");
    exception.newObject("qcContourDefs::EmptyContour").byte(0, 0, 0, 0).number(0);
    transform.byte(1).contour(0, {{1, 1}}).byte(0).number(0).newObject("qcRegionSet");
    struct {
        char const* name;
        Bytes bytes;
        bool refused;
    } const cases[] = {
        {"a hole that is the region", region().reference(1).bytes(), true},
        {"a reference forward", region().reference(2).bytes(), true},
        {"a chain of two that closes", region().newRegion(1).reference(1).bytes(), true},
        {"a set in itself", set(1).reference(1).number(3).bytes(), false},
        {"a contour as a hole", region().newContour(1, {}).bytes(), false},
        {"an exception as a region, and again", exception.reference(2).number(3).bytes(), false},
        {"a set as the transform", transform.byte(1, 0, 0).number(0).number(1).bytes(), false},
        {"an unknown class", object("qcTriangle").byte(1).bytes(), true},
        {"a class without a name", object("").bytes(), true},
        {"an abstract class", object("qcContourDefs::Errors").bytes(), true},
        {"bound < 0", Composer().newContour(1, {{1, 2}, {3, 4}}, 0x80000000UL).bytes(), false},
        {"closed that is neither", Composer().newContour(2, {}).bytes(), true},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        bool refused = false;
        EXPECT_TRUE(survives(c.bytes, &refused));
        EXPECT_EQ(refused, c.refused);
        expectNextLoadUnaffected();
    }
}

TEST(HostileArchive, HolesSharedLevelUponLevelAreAskedOnce)
{
    // Every region has the next one twice: the ways through double with each of 300 levels.
    Composer c;
    unsigned long const levels = 300;
    for (unsigned long level = 0; level < levels; ++level)
        c.newRegion(2, {{0, 0}, {4, 0}, {0, 4}});
    c.null().null();
    for (unsigned long level = levels; level > 1; --level)
        c.reference(level);
    auto const loaded = load(c.bytes());
    auto& region = dynamic_cast<qcRegion&>(*loaded.object);
    EXPECT_THROW(region.inside({1, 1}, true), qcBadPointer);

    Bytes noNulls = c.bytes();
    Composer leaf;
    leaf.newRegion(0, {{0, 0}, {4, 0}, {0, 4}}).reference(levels + 1);
    auto const nulls = noNulls.end() - long(2 + 5 * (levels - 1));
    noNulls.insert(noNulls.erase(nulls, nulls + 2), leaf.bytes().begin(), leaf.bytes().end());
    EXPECT_TRUE(survives(noNulls));
    EXPECT_TRUE(dynamic_cast<qcRegion&>(*load(noNulls).object).inside({1, 1}, true));
}

TEST(HostileArchive, AFailedLoadInPlaceLeavesAnObjectThatServes)
{
    for (auto const& golden : goldenArchives()) {
        if (!golden.current)
            continue;
        SCOPED_TRACE(golden.name);
        qcMemoryArchive out;
        Root const model = golden.expected();
        out || *model.object;
        for (std::size_t size = 0; size < out.bytes().size(); ++size) {
            Root const filled = golden.expected();
            askEverything(*filled.object);  // fills the caches
            qcMemoryArchive in(out.bytes().data(), size);
            EXPECT_THROW(in || *filled.object, qcArchive::Errors);
            EXPECT_THROW(in || *filled.object, qcArchive::Errors);  // spoiled, and says so
            EXPECT_EQ(askEverything(*filled.object), "") << size;
            qcMemoryArchive whole(out.bytes());
            whole || *filled.object;
            EXPECT_EQ(describe(filled.object), describe(model.object)) << size;
        }
    }
}

}  // namespace
