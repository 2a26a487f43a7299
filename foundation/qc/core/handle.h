/// \file
/// Counted ownership: the base of counted objects and the handles that share them.
#pragma once

#include <qc/core/export.h>

#include <atomic>
#include <cstdint>
#include <type_traits>
#include <utility>

/// Adds one to `*counter` atomically and returns the new value.
inline std::uint32_t qfInterlockedIncrement(std::atomic<std::uint32_t>* counter) noexcept
{
    return counter->fetch_add(1, std::memory_order_relaxed) + 1;
}

/// Takes one from `*counter` atomically and returns the new value. What other threads did before
/// their own decrement is visible to the one that reaches 0.
inline std::uint32_t qfInterlockedDecrement(std::atomic<std::uint32_t>* counter) noexcept
{
    return counter->fetch_sub(1, std::memory_order_acq_rel) - 1;
}

/// Base of everything held by counted handles. A handle deletes the object with its last release,
/// so such an object is made by `new`; one that no handle ever touches may live anywhere.
///
/// The count belongs to the object, never to its value: a copy begins at 0 and assignment leaves
/// the count alone.
class QC_EXPORT qcRepBase {
public:
    qcRepBase() noexcept = default;
    qcRepBase(qcRepBase const&) noexcept {}
    qcRepBase& operator=(qcRepBase const&) noexcept { return *this; }
    virtual ~qcRepBase();

    /// The number of handles that hold this object at the moment.
    std::uint32_t refCount() const noexcept { return count_.load(std::memory_order_relaxed); }

private:
    friend class qc_PtrHandleBase_RepAccessor;

    mutable std::atomic<std::uint32_t> count_{0};
    mutable qcRepBase const* nextToDelete_ = nullptr;
};

/// What the handles do to the count of an object.
class QC_EXPORT qc_PtrHandleBase_RepAccessor {
public:
    /// Counts one more handle; nothing for null.
    static void retain(qcRepBase const* rep) noexcept
    {
        if (rep)
            qfInterlockedIncrement(&rep->count_);
    }

    /// Counts one handle less; the last one deletes the object. Objects that lose their last handle
    /// inside a destructor run by this function wait until that destructor has ended, so a chain of
    /// objects of any length needs no more stack than one.
    static void release(qcRepBase const* rep) noexcept
    {
        if (rep && qfInterlockedDecrement(&rep->count_) == 0)
            destroy(rep);
    }

    /// Throws qcBadPointer.
    [[noreturn]] static void throwBadPointer();

private:
    static void destroy(qcRepBase const* rep) noexcept;
};

/// The common part of both kinds of handle: an object and, beside it, its counted base, so that
/// handles are copied, moved, assigned and destroyed where T is only declared.
///
/// Handles to one object may be used by different threads at once; one handle belongs to one thread.
template <class T>
class qcPtrHandleBase {
public:
    qcPtrHandleBase() noexcept = default;

    qcPtrHandleBase(qcPtrHandleBase const& other) noexcept
        : object_(other.object_), rep_(other.rep_)
    {
        qc_PtrHandleBase_RepAccessor::retain(rep_);
    }

    /// Takes the object over; `other` is null afterwards.
    qcPtrHandleBase(qcPtrHandleBase&& other) noexcept
        : object_(std::exchange(other.object_, nullptr)), rep_(std::exchange(other.rep_, nullptr))
    {
    }

    qcPtrHandleBase& operator=(qcPtrHandleBase other) noexcept
    {
        std::swap(object_, other.object_);
        std::swap(rep_, other.rep_);
        return *this;
    }

    ~qcPtrHandleBase() { qc_PtrHandleBase_RepAccessor::release(rep_); }

    /// True when the handle holds no object.
    bool isNull() const noexcept { return object_ == nullptr; }

    /// The object, or null. The handle keeps it.
    T* get() const noexcept { return object_; }

    /// The object. Throws qcBadPointer when the handle is null.
    T& operator*() const { return *checked(); }
    /// As operator*.
    T* operator->() const { return checked(); }

protected:
    /// Shares `object`, which may be null.
    explicit qcPtrHandleBase(T* object) noexcept : object_(object), rep_(object)
    {
        qc_PtrHandleBase_RepAccessor::retain(rep_);
    }

    /// Shares what a handle to a derived class holds.
    template <class U>
    explicit qcPtrHandleBase(qcPtrHandleBase<U> const& other) noexcept
        : object_(other.object_), rep_(other.rep_)
    {
        qc_PtrHandleBase_RepAccessor::retain(rep_);
    }

private:
    template <class U>
    friend class qcPtrHandleBase;

    T* checked() const
    {
        if (!object_)
            qc_PtrHandleBase_RepAccessor::throwBadPointer();
        return object_;
    }

    T* object_ = nullptr;
    qcRepBase const* rep_ = nullptr;
};

/// The common part of handles to constant objects.
template <class T>
class qcPtrHandleBase_const : public qcPtrHandleBase<T const> {
public:
    qcPtrHandleBase_const() noexcept = default;

protected:
    using qcPtrHandleBase<T const>::qcPtrHandleBase;
};

/// A counted handle to an object of class T or of a class derived from it. Null by default.
///
/// Construction from a pointer, and conversion between handles of different classes, need T
/// complete; everything else needs it only declared.
template <class T>
class qcPtrHandle : public qcPtrHandleBase<T> {
public:
    qcPtrHandle() noexcept = default;

    /// Shares `object`, which may be null.
    explicit qcPtrHandle(T* object) noexcept : qcPtrHandleBase<T>(object) {}

    /// A handle to a derived object is a handle to its base.
    template <class U, std::enable_if_t<std::is_convertible<U*, T*>::value, int> = 0>
    qcPtrHandle(qcPtrHandle<U> const& other) noexcept : qcPtrHandleBase<T>(other)
    {
    }
};

/// A counted handle to a constant object. Null by default; otherwise as qcPtrHandle.
template <class T>
class qcPtrHandle_const : public qcPtrHandleBase_const<T> {
public:
    qcPtrHandle_const() noexcept = default;

    /// Shares `object`, which may be null.
    explicit qcPtrHandle_const(T const* object) noexcept : qcPtrHandleBase_const<T>(object) {}

    /// Any handle to T, or to a class derived from it, is a handle to a constant T.
    template <class U, std::enable_if_t<std::is_convertible<U*, T const*>::value, int> = 0>
    qcPtrHandle_const(qcPtrHandle<U> const& other) noexcept : qcPtrHandleBase_const<T>(other)
    {
    }

    template <class U, std::enable_if_t<std::is_convertible<U const*, T const*>::value, int> = 0>
    qcPtrHandle_const(qcPtrHandle_const<U> const& other) noexcept : qcPtrHandleBase_const<T>(other)
    {
    }
};

/// Handles are equal when they hold the same object, or both none.
template <class T, class U>
bool operator==(qcPtrHandleBase<T> const& a, qcPtrHandleBase<U> const& b) noexcept
{
    return a.get() == b.get();
}

template <class T, class U>
bool operator!=(qcPtrHandleBase<T> const& a, qcPtrHandleBase<U> const& b) noexcept
{
    return a.get() != b.get();
}
