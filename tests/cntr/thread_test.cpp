// What threads may do at once: copy and release handles to the same regions, use objects that share
// nothing, load old files.
#include "tests/support/golden_archives.h"
#include "tests/support/regions.h"

#include <cntr/cntrtmpl.h>

#include <gtest/gtest.h>

#include <functional>
#include <thread>

namespace {

using namespace qnTest;

constexpr int kThreads = 8;

void inEveryThread(std::function<void(int)> const& work)
{
    std::vector<std::thread> threads;
    for (int number = 0; number < kThreads; ++number)
        threads.emplace_back(work, number);
    for (auto& thread : threads)
        thread.join();
}

TEST(ThreadedRegions, HandlesToTheSameRegionsAreCopiedAndReleased)
{
    std::vector<Hole> shared;
    for (int k = 0; k < 5; ++k)
        shared.push_back(holeOf(square(9 * k, 0, 3)));
    inEveryThread([&](int number) {
        for (int round = 0; round < 500; ++round) {
            qcRegionSet set(shared);
            set.add(holeOf(square(number, round, 1)), qcContourDefs::eIgnore);
            qcRegionSet const copy(set);
            auto const list = copy.regions();
            set.regions(std::vector<Hole>(list.begin() + 2, list.end()), qcContourDefs::eIgnore);
        }
    });
    for (auto const& region : shared)
        EXPECT_EQ(region->refCount(), 1U);
    // The last handles are released by different threads.
    std::vector<std::vector<Hole>> parts(kThreads, shared);
    shared.clear();
    inEveryThread([&](int number) { parts[static_cast<std::size_t>(number)].clear(); });
}

TEST(ThreadedRegions, SeparateObjectsAnswerAlikeEverywhere)
{
    std::vector<std::string> answers(kThreads);
    inEveryThread([&](int number) {
        qcRegionSet set(
            {holeOf(square(0, 0, 3)), holeOf(square(2, 1, 3)), holeOf(square(9, 9, 1))});
        for (int k = 0; k < 50; ++k)  // more transforms than are kept: draws random numbers
            set.encloseRect(qcXform<2>(qcMatrix<2>(), {double(k % 9), 0}));
        EXPECT_EQ(askEverything(set), "");
        qcRegionSet clean;
        set.regularize(clean);
        answers[static_cast<std::size_t>(number)] = describe(&clean) + describe(&set);
    });
    for (auto const& answer : answers)
        EXPECT_EQ(answer, answers.front());
}

TEST(ThreadedRegions, OldFilesAreLoadedAtOnce)
{
    auto const goldens = goldenArchives();
    std::vector<std::string> wanted;
    for (auto const& golden : goldens)
        wanted.push_back(describe(golden.expected().object, true));
    inEveryThread([&](int number) {
        for (std::size_t k = 0; k < 20 * goldens.size(); ++k) {
            std::size_t const which = (k + static_cast<std::size_t>(number)) % goldens.size();
            auto const& bytes = goldens[which].bytes;
            Root const loaded = load(bytes);
            EXPECT_EQ(describe(loaded.object, true), wanted[which]);
            // A failure here is none of the other threads' business.
            EXPECT_THROW(load(Bytes(bytes.begin(), bytes.end() - 1)), qcArchive::Errors);
        }
    });
}

}  // namespace
