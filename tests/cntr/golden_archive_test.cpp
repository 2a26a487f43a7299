// What was written once is read for ever, and today's records are written the same to the byte.
#include "tests/support/golden_archives.h"
#include "tests/support/rounds.h"

#include <cntr/cntrtmpl.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <random>

namespace {

using namespace qnTest;
using Handle = qcPtrHandle_const<qcRegion>;
using Typed = qcRegionT<qcEdgelet>;

TEST(GoldenArchive, FilesOfEveryVersionComeBack)
{
    for (auto const& golden : goldenArchives()) {
        SCOPED_TRACE(golden.name);
        auto const name = golden.name + ".archive";
        if (!std::filesystem::exists(CNTR_TEST_DATA "/" + name)) {
            // Files that are there are the promise to read what was written once.
            writeFile(name, golden.bytes);
            ADD_FAILURE() << "no such file: written here, to be moved to " CNTR_TEST_DATA;
            continue;
        }
        Bytes const file = readFile(CNTR_TEST_DATA "/" + name);
        EXPECT_EQ(file, golden.bytes);
        Root const loaded = load(file);
        EXPECT_EQ(describe(loaded.object, true), describe(golden.expected().object, true));
        EXPECT_EQ(askEverything(*loaded.object), "");
        Bytes const again = store(*loaded.object);
        EXPECT_EQ(again == file, golden.current);
        EXPECT_EQ(store(*load(again).object), again);
    }
}

TEST(GoldenArchive, FactoriesStandInTheirOrder)
{
    std::vector<std::string> const order{"qcContourDefs::EmptyContour",
                                         "qcContourDefs::EmptyRegionSet",
                                         "qcContourDefs::BadParams",
                                         "qcContourDefs::RegionCannotBeSetOpen",
                                         "qcContour",
                                         "qcRegion",
                                         "qcRegionSet",
                                         "qcContourT<qcEdgelet>",
                                         "qcRegionT<qcEdgelet>",
                                         "qcRegionSetT<qcEdgelet>"};
    auto const registered = qcPersistent::registeredClasses();
    auto const first = std::find(registered.begin(), registered.end(), order.front());
    ASSERT_GE(registered.end() - first, 10);
    EXPECT_EQ(std::vector<std::string>(first, first + 10), order);
}

/// Regions that share holes at random, some with edge points, gathered in a set with nulls.
Root randomGraph(std::mt19937& random)
{
    auto const upTo = [&](std::size_t n) { return std::size_t(random() % (n + 1)); };
    auto const coordinate = [&] { return double(random() % 2000) / 16 - 60; };
    std::vector<Handle> regions(1);
    std::vector<qcPtrHandle_const<Typed>> typed(1);
    auto const count = upTo(12);
    for (std::size_t i = 0; i < count; ++i) {
        std::vector<qcVector<2>> points(upTo(6));
        for (auto& p : points)
            p = {coordinate(), coordinate()};
        bool const withData = random() % 3 == 0;
        qcPtrHandle<qcRegion> const region(withData ? new Typed : new qcRegion);
        static_cast<qcRegion&>(*region) = qcRegion(points);
        region->label(random());
        region->cachedVectorSize(long(upTo(9)));
        std::vector<Handle> holes(upTo(3));
        for (auto& hole : holes)
            do
                hole = regions[upTo(regions.size() - 1)];
            while (hole.isNull() && regions.size() > 1);
        try {
            if (std::find(holes.begin(), holes.end(), Handle()) == holes.end())
                region->holes(holes);
        } catch (qcException const&) {  // they cross, have no edges, or there is no transform
        }
        regions.push_back(region);
        if (withData)
            typed.emplace_back(dynamic_cast<Typed*>(region.get()));
    }
    std::shuffle(regions.begin(), regions.end(), random);
    regions.insert(regions.end(), regions.begin(), regions.begin() + long(upTo(regions.size())));
    if (random() % 2)
        return rootOf(new qcRegionSet(regions));
    return rootOf(new qcRegionSetT<qcEdgelet>(typed));
}

TEST(ArchiveGraph, KeepsSharingCountsAndBytes)
{
    std::mt19937 random(11);
    for (int run = 0; run < rounds(300); ++run) {
        SCOPED_TRACE(run);
        Root const graph = randomGraph(random);
        Bytes const bytes = store(*graph.object);
        Root const loaded = load(bytes);
        EXPECT_EQ(store(*loaded.object), bytes);
        // Through a handle more on the side of what was built nothing could hide.
        EXPECT_EQ(describe(loaded.object, true), describe(graph.object, true));
    }
}

}  // namespace
