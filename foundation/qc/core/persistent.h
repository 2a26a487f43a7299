/// \file
/// Objects that can be written to and read from an archive, their factories, and the notification
/// of whoever follows their changes.
#pragma once

#include <qc/core/export.h>

#include <string>
#include <typeinfo>
#include <vector>

class qcArchive;
class qcPersistent;

/// Is told about changes of objects whose tracking flag is set.
class QC_EXPORT qcChangeListener {
public:
    virtual ~qcChangeListener();

    /// `object` is being changed, and queries from within this call may still be answered as before: note
    /// the object, and ask it later. When its destructor tells so it is going away: then only its
    /// address means anything any more. Called on the thread that makes the change, one call at a time
    /// in the whole process; the listener may itself change objects and add or remove listeners.
    virtual void changed(qcPersistent const& object) noexcept = 0;
};

/// Base of every class that can be written to an archive and read back.
///
/// A class streams itself in dispatchSerialize, which serves both directions. See qcArchive for
/// how `archive || object` and pointer records use it.
class QC_EXPORT qcPersistent {
public:
    qcPersistent() noexcept = default;

    /// The tracking flag belongs to the object, not to its value: a copy is not tracked, and
    /// assignment leaves the flag alone.
    qcPersistent(qcPersistent const&) noexcept {}
    qcPersistent& operator=(qcPersistent const&) noexcept { return *this; }

    /// Sends the change notification when the object is tracked.
    virtual ~qcPersistent();

protected:
    /// Streams the state of the persistent base: one version byte, 0. A derived class streams its
    /// own block and calls its bases. Throws qcArchive::UnknownVersion on another stored version.
    virtual void dispatchSerialize(qcArchive& archive);

public:
    /// Called by the archive after the object has been read in full, for classes that must rebuild
    /// what they do not store. The base does nothing.
    virtual void reInit();

    /// Replaces the state of this object by the record that comes next in `archive`, as
    /// `archive || *this` does, but refuses to write: throws qcArchive::WrongDirection when the
    /// archive is storing.
    virtual void loadSimple(qcArchive& archive);

    /// Whether somebody wants to hear about changes of this object.
    bool tracking() const noexcept { return tracking_; }
    /// Asks for change notifications, or ends them; this is no change itself.
    void tracking(bool on) noexcept { tracking_ = on; }

    /// Whether the block of `size` bytes at `address` has been streamed by the archive operation
    /// that is under way on the calling thread, or by an earlier operation of the same archive. A
    /// class asks this first in its dispatchSerialize and marks itself last, so that a base shared
    /// through virtual inheritance is streamed once. Outside an operation nothing is visited.
    static bool haveVisited(void* address, unsigned long long size);

    /// Marks that block as streamed; does nothing outside an archive operation.
    static void setVisited(void* address, unsigned long long size);

    /// Streams one pointer record. Storing: writes `object`, which may be null, or a reference to
    /// it when the archive already holds it, and leaves `loaded` alone. Loading: ignores `object`
    /// and sets `loaded` to null, to a new object of the stored class, or to the object that the
    /// same archive loaded before.
    ///
    /// The archive keeps each object it creates until it closes, and drops those that nobody took:
    /// a counted object (qcRepBase) is taken by a handle, any other by qcArchive::claim. An object
    /// stored by pointer must stay alive until the archive closes; one held by a handle does, since
    /// the archive shares it.
    ///
    /// Throws qcArchive::UnknownClass when the class has no factory, qcArchive::BadReference for
    /// a reference to no object and for an object that was stored in place (`archive || object`),
    /// qcArchive::NestingTooDeep, and what reading the object throws. `loaded` is set only by a
    /// call that returns, except that the object's own record may refer to the object itself
    /// (qcArchive::isBeingLoaded).
    static void serializePointer(qcArchive& archive, qcPersistent* object, qcPersistent*& loaded);

    /// The classes that have a factory now, by their plain C++ names, in the order in which they
    /// were registered.
    static std::vector<std::string> registeredClasses();

    /// Tells `listener` of every change of a tracked object from now on. A listener added twice is
    /// told twice.
    static void addListener(qcChangeListener& listener);

    /// Ends one addListener. When it returns, no call to that listener is running in another
    /// thread; so a listener must not wait for a thread that is in here.
    static void removeListener(qcChangeListener& listener) noexcept;

protected:
    /// To be called after each change of the object; costs one look at the flag when nobody follows.
    void notifyChange() const noexcept
    {
        if (tracking_)
            mutating_();
    }

private:
    friend class qcArchive;

    void mutating_() const noexcept;

    bool tracking_ = false;
};

/// Registers a factory for a class while it lives. Made as a static member of the class, so the
/// class can be loaded by pointer for as long as its library is there.
class QC_EXPORT qc_Instantiator {
public:
    /// Makes a new default object.
    using Factory = qcPersistent* (*)();

    /// `make` returns a new default object of the class `type`. Where two factories carry the same
    /// class name the earlier one serves.
    qc_Instantiator(std::type_info const& type, Factory make);
    ~qc_Instantiator();

    qc_Instantiator(qc_Instantiator const&) = delete;
    qc_Instantiator& operator=(qc_Instantiator const&) = delete;
};
