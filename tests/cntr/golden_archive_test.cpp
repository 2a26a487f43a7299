// What was written once is read for ever, and today's records are written the same to the byte.
#include "tests/support/golden_archives.h"
#include "tests/support/rounds.h"

#include <cntr/cntrtmpl.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <random>

namespace {

using namespace qnTest;

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
    std::string registered;
    for (auto const& name : qcPersistent::registeredClasses())
        registered += name + ' ';
    EXPECT_NE(registered.find("qcContourDefs::EmptyContour qcContourDefs::EmptyRegionSet "
                              "qcContourDefs::BadParams qcContourDefs::RegionCannotBeSetOpen "
                              "qcContour qcRegion qcRegionSet qcContourT<qcEdgelet> "
                              "qcRegionT<qcEdgelet> qcRegionSetT<qcEdgelet> "),
              std::string::npos)
        << registered;
}

/// A region with holes, some of them regions that are complete by now, once more.
void addRegion(Composer& record, std::mt19937& random, unsigned long& objects,
               std::vector<unsigned long>& complete, int depth = 0)
{
    unsigned long const number = ++objects, holes = depth < 5 ? random() % 4 : 0;
    record.newRegion(holes, {{double(random() % 99), -0.5}, {0, double(number)}});
    for (unsigned long i = 0; i < holes; ++i)
        if (!complete.empty() && random() % 2)
            record.reference(complete[random() % complete.size()]);
        else
            addRegion(record, random, objects, complete, depth + 1);
    complete.push_back(number);
}

TEST(ArchiveGraph, KeepsSharingCountsAndBytes)
{
    std::mt19937 random(11);
    for (int run = 0; run < rounds(300); ++run) {
        SCOPED_TRACE(run);
        Composer record;
        unsigned long objects = 0;
        std::vector<unsigned long> complete;
        addRegion(record, random, objects, complete);
        Root const graph = load(record.bytes());
        EXPECT_EQ(store(*graph.object), record.bytes());
        EXPECT_EQ(describe(load(store(*graph.object)).object, true), describe(graph.object, true));
    }
}

}  // namespace
