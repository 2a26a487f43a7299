// Per-thread pointers and callbacks at the end of threads.
#include <qc/core/thread.h>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

namespace {

TEST(ThreadLocal, GivesEachThreadItsOwnPointer)
{
    qc_ThreadLocal slot;
    qc_ThreadLocal other;
    int here = 0;
    slot.OSValue(&here);
    std::thread([&] {
        EXPECT_EQ(slot.OSValue(), nullptr);
        slot.OSValue(&slot);
    }).join();
    EXPECT_EQ(slot.OSValue(), &here);
    EXPECT_EQ(other.OSValue(), nullptr);
}

std::vector<int> order;
void note(qcThreadID const& thread, void* data)
{
    EXPECT_EQ(thread, qfGetCurrentThreadID()) << "runs in the ending thread";
    int const value = *static_cast<int*>(data);
    order.push_back(value);
    static int four = 4;
    if (value == 3)
        thread.atexit(note, &four);
}

TEST(ThreadExit, RunsCallbacksInTheEndingThreadLastFirst)
{
    int numbers[] = {1, 2, 3};
    qcThreadID ended;
    order.clear();
    std::thread([&] {
        ended = qfGetCurrentThreadID();
        for (int& number : numbers)
            ended.atexit(note, &number);
    }).join();
    EXPECT_EQ(order, (std::vector<int>{3, 4, 2, 1}));
    EXPECT_THROW(ended.atexit(note, nullptr), qcThreadID::Ended);
    EXPECT_THROW(qcThreadID().atexit(note, nullptr), qcThreadID::Ended);
    EXPECT_NE(ended, qfGetCurrentThreadID());
    EXPECT_EQ(qfGetCurrentThreadID(), qfGetCurrentThreadID());
}

std::atomic<int> calls{0};
std::atomic<bool> inCallback{false};
void count(qcThreadID const&, void*)
{
    inCallback = true;
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    ++calls;
}

TEST(ThreadExit, WithdrawnCallbacksAreOverWhenWithdrawReturns)
{
    struct {
        qcThreadID::Pending pending;
        bool threadEndsFirst;  // with the callback already running
        int calls;
    } const cases[] = {{qcThreadID::eForget, false, 0},
                       {qcThreadID::eRunNow, false, 2},
                       {qcThreadID::eForget, true, 1}};
    for (auto const& c : cases) {
        SCOPED_TRACE(&c - cases);
        calls = 0;
        inCallback = false;
        std::atomic<bool> registered{false};
        std::atomic<bool> end{false};
        std::thread thread([&] {
            qfGetCurrentThreadID().atexit(count, nullptr);
            if (!c.threadEndsFirst)
                qfGetCurrentThreadID().atexit(count, nullptr);
            registered = true;
            while (!end)
                std::this_thread::yield();
        });
        while (!registered)
            std::this_thread::yield();
        end = c.threadEndsFirst;
        while (c.threadEndsFirst && !inCallback)
            std::this_thread::yield();
        qcThreadID::withdraw(count, c.pending);
        EXPECT_EQ(calls, c.calls);
        end = true;
        thread.join();
        EXPECT_EQ(calls, c.calls);
    }
}

}  // namespace
