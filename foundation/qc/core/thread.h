/// \file
/// Per-thread pointers, the identity of threads, and callbacks at a thread's end.
#pragma once

#include <qc/core/exception.h>

#include <pthread.h>

/// One pointer for each thread. The pointers are the user's: destroying the slot, or the end of a
/// thread, frees nothing that they point to.
class QC_EXPORT qc_ThreadLocal {
public:
    /// Throws std::system_error when the system has no slot left (about a thousand a process).
    qc_ThreadLocal();
    ~qc_ThreadLocal();

    qc_ThreadLocal(qc_ThreadLocal const&) = delete;
    qc_ThreadLocal& operator=(qc_ThreadLocal const&) = delete;

    /// The calling thread's pointer; null until it is set.
    void* OSValue() const noexcept;

    /// Sets the calling thread's pointer. Throws std::system_error when there is no memory for it.
    void OSValue(void* value);

private:
    pthread_key_t key_;
};

/// The identity of a thread, never given to another one in the same process.
class QC_EXPORT qcThreadID {
public:
    class Ended;
    /// What runs at a thread's end: the thread's identity, and the data of the registration.
    using ExitCallback = void (*)(qcThreadID const&, void*);

    /// The identity of no thread.
    constexpr qcThreadID() noexcept = default;

    /// Runs `callback` with this identity and `data` when this thread ends, in that thread; the
    /// last one registered runs first, and a callback may register more. The callback must not
    /// throw. Threads that the end of the process cuts off, the main thread among them, run none.
    ///
    /// A library that can be unloaded withdraws its callbacks before (withdraw): a thread may live
    /// longer than the library does.
    ///
    /// Throws Ended when this thread has ended, or is no thread.
    void atexit(ExitCallback callback, void* data) const;

    /// What becomes of callbacks that have not run.
    enum Pending { eForget, eRunNow };

    /// Forgets every registration of `callback`, whichever thread it is for; with eRunNow, runs each
    /// first, on the calling thread, with the identity and data of its registration. When it
    /// returns, `callback` is not running in any other thread and will not be called again, so its
    /// code may go.
    static void withdraw(ExitCallback callback, Pending pending);

    friend constexpr bool operator==(qcThreadID a, qcThreadID b) noexcept
    {
        return a.number_ == b.number_;
    }
    friend constexpr bool operator!=(qcThreadID a, qcThreadID b) noexcept { return !(a == b); }
    friend constexpr bool operator<(qcThreadID a, qcThreadID b) noexcept
    {
        return a.number_ < b.number_;
    }

private:
    friend QC_EXPORT qcThreadID qfGetCurrentThreadID();
    constexpr explicit qcThreadID(unsigned long long number) noexcept : number_(number) {}

    unsigned long long number_ = 0;
};

/// The identity of the calling thread. A thread's first call throws std::bad_alloc where there is no
/// memory for it, and the first of all, here or in qcThreadID, std::system_error where the system has no
/// slot left.
QC_EXPORT qcThreadID qfGetCurrentThreadID();

/// A thread has ended, or an identity is that of no thread.
class QC_EXPORT qcThreadID::Ended : public qcException {
public:
    Ended();
    Ended(Ended const& other);
    ~Ended() override;
    long errorNumber() const override;
    void suicideAndRethrow() override;
};
