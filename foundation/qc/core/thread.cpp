/// \file
/// Thread slots, thread identities and exit callbacks.
#include <qc/core/internal/exception_class.h>
#include <qc/core/thread.h>

#include <algorithm>
#include <condition_variable>
#include <map>
#include <mutex>
#include <new>
#include <system_error>
#include <utility>
#include <vector>

// --- qc_ThreadLocal -------------------------------------------------------------------------------

qc_ThreadLocal::qc_ThreadLocal() : key_()
{
    if (int const error = pthread_key_create(&key_, nullptr))
        throw std::system_error(error, std::generic_category(), "qc_ThreadLocal");
}

qc_ThreadLocal::~qc_ThreadLocal()
{
    pthread_key_delete(key_);
}

void* qc_ThreadLocal::OSValue() const noexcept
{
    return pthread_getspecific(key_);
}

void qc_ThreadLocal::OSValue(void* value)
{
    if (int const error = pthread_setspecific(key_, value))
        throw std::system_error(error, std::generic_category(), "qc_ThreadLocal");
}

// --- threads and their callbacks ------------------------------------------------------------------

namespace {

struct Registration {
    qcThreadID::ExitCallback callback;
    void* data;
};

/// A living thread that has asked for its identity.
struct Thread {
    qcThreadID id;
    std::vector<Registration> pending;
};

struct Running {
    qcThreadID::ExitCallback callback;  // null: the thread is ending, between callbacks
    pthread_t thread;
};

struct Threads {
    std::mutex mutex;
    std::condition_variable runningChanged;
    std::map<qcThreadID, Thread> living;
    std::vector<Running> running;
    unsigned long long lastNumber = 0;
    pthread_key_t key = 0;  // holds the thread's Thread
    bool gone = false;      // the library is being unloaded, or the process ends
};

extern "C" void qc_threadEnds(void* thread) noexcept;

Threads* madeThreads = nullptr;

// Never destroyed: at the end of the process other threads may still be here. Unloading takes the
// memory along, and what it owns is given back by Unloading below.
Threads& threads()
{
    alignas(Threads) static unsigned char memory[sizeof(Threads)];
    static Threads* const all = [] {
        auto* const made = new (memory) Threads;
        if (int const error = pthread_key_create(&made->key, qc_threadEnds))
            throw std::system_error(error, std::generic_category(), "qfGetCurrentThreadID");
        madeThreads = made;
        return made;
    }();
    return *all;
}

bool runsElsewhere(Threads const& all, qcThreadID::ExitCallback callback, bool any)
{
    auto const matches = [&](Running const& one) {
        return (any || one.callback == callback) && !pthread_equal(one.thread, pthread_self());
    };
    return std::any_of(all.running.begin(), all.running.end(), matches);
}

void endRunning(Threads& all)
{
    auto const mine = [](Running const& one) { return pthread_equal(one.thread, pthread_self()); };
    auto const last = std::find_if(all.running.rbegin(), all.running.rend(), mine);
    all.running.erase(std::next(last).base());
    all.runningChanged.notify_all();
}

// Called by the system in the ending thread. No C++ thread_local with a destructor does this: it
// would keep the library in memory for as long as the thread lives.
extern "C" void qc_threadEnds(void* thread) noexcept
{
    Threads& all = threads();
    auto* const ending = static_cast<Thread*>(thread);
    std::unique_lock<std::mutex> lock(all.mutex);
    if (all.gone)
        return;
    pthread_setspecific(all.key, thread);  // the system has cleared it; callbacks may ask who ends
    all.running.push_back({nullptr, pthread_self()});
    while (!ending->pending.empty()) {
        Registration const next = ending->pending.back();
        ending->pending.pop_back();
        all.running.push_back({next.callback, pthread_self()});
        lock.unlock();
        next.callback(ending->id, next.data);
        lock.lock();
        endRunning(all);
    }
    pthread_setspecific(all.key, nullptr);
    qcThreadID const id = ending->id;
    all.living.erase(id);
    endRunning(all);
}

/// Made at start-up, so destroyed after the users of this library.
struct Unloading {
    ~Unloading()
    {
        if (!madeThreads)
            return;
        Threads& all = *madeThreads;
        std::unique_lock<std::mutex> lock(all.mutex);
        all.runningChanged.wait(lock, [&] { return !runsElsewhere(all, nullptr, true); });
        all.gone = true;
        pthread_key_delete(all.key);
        std::exchange(all.living, {}).clear();
        std::vector<Running>().swap(all.running);
    }
} unloading;

}  // namespace

qcThreadID qfGetCurrentThreadID()
{
    Threads& all = threads();
    std::lock_guard<std::mutex> const lock(all.mutex);
    if (all.gone)
        return {};
    if (auto* const known = static_cast<Thread*>(pthread_getspecific(all.key)))
        return known->id;
    qcThreadID const id(all.lastNumber + 1);
    Thread& made = all.living[id];
    made.id = id;
    if (pthread_setspecific(all.key, &made) != 0) {
        all.living.erase(id);
        throw std::bad_alloc();
    }
    ++all.lastNumber;
    return id;
}

void qcThreadID::atexit(ExitCallback callback, void* data) const
{
    Threads& all = threads();
    std::lock_guard<std::mutex> const lock(all.mutex);
    auto const thread = all.living.find(*this);
    if (thread == all.living.end())
        throw Ended();
    thread->second.pending.push_back({callback, data});
}

void qcThreadID::withdraw(ExitCallback callback, Pending pending)
{
    Threads& all = threads();
    std::unique_lock<std::mutex> lock(all.mutex);
    for (;;) {
        auto const matches = [&](Registration const& one) { return one.callback == callback; };
        auto const hasOne = [&](std::pair<qcThreadID const, Thread> const& thread) {
            auto const& list = thread.second.pending;
            return std::any_of(list.begin(), list.end(), matches);
        };
        auto const thread = std::find_if(all.living.begin(), all.living.end(), hasOne);
        if (thread == all.living.end())
            break;
        auto& list = thread->second.pending;
        auto const one = std::find_if(list.rbegin(), list.rend(), matches);
        void* const data = one->data;
        qcThreadID const id = thread->first;
        list.erase(std::next(one).base());
        if (pending == eRunNow) {
            all.running.push_back({callback, pthread_self()});
            lock.unlock();
            callback(id, data);
            lock.lock();
            endRunning(all);
        }
    }
    all.runningChanged.wait(lock, [&] { return !runsElsewhere(all, callback, false); });
}

qcThreadID::Ended::Ended()
{
    describe("qcThreadID::Ended: the thread has ended");
}

QC_EXCEPTION_MEMBERS(qcThreadID::Ended, Ended, 0x10001401)
