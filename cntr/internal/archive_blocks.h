/// The blocks that archive records are made of: versions, point lists, lists of handles.
#pragma once

#include <qc/core/archive.h>
#include <qc/core/handle.h>
#include <qc/core/persistent.h>
#include <qc/core/vector.h>

#include <cstddef>
#include <type_traits>
#include <vector>

namespace qnInternal {

/// Streams the version byte of a block that has only version 0.
inline void streamBlockVersion(qcArchive& archive)
{
    unsigned char version = 0;
    archive || version;
    if (version != 0)
        throw qcArchive::UnknownVersion(nullptr, 0);
}

/// Streams the length of a list; when loading, resizes the list to it. A length that the remaining
/// data cannot hold is refused before anything is allocated.
template <class Item>
void streamCount(qcArchive& archive, std::vector<Item>& list, std::size_t bytesPerItem)
{
    auto const count = archive.count(
        static_cast<unsigned long>(archive.isStoring() ? list.size() : 0), bytesPerItem);
    if (!archive.isStoring())
        list.resize(count);
}

/// Streams a point list: block version, count, the points. When loading, points are read in place.
inline void streamPoints(qcArchive& archive, std::vector<qcVector<2>>& points)
{
    streamBlockVersion(archive);
    streamCount(archive, points, 2 * sizeof(double));
    archive.vectors(points.data(), points.size());
}

/// Streams the object of a handle as a pointer record. When loading, an object of another class
/// leaves the handle null.
template <class Handle>
void streamHandle(qcArchive& archive, Handle& handle)
{
    using Object = std::remove_const_t<std::remove_pointer_t<decltype(handle.get())>>;
    qcPersistent* loaded = nullptr;
    if (archive.isStoring()) {
        // One operation serves both directions, so it cannot be const; storing changes nothing.
        qcPersistent::serializePointer(archive, const_cast<Object*>(handle.get()), loaded);
        return;
    }
    handle = Handle();
    qcPersistent::serializePointer(archive, nullptr, loaded);
    handle = Handle(dynamic_cast<Object*>(loaded));
}

/// Streams a list of handles: block version, count, a pointer record for each. When loading, an
/// object whose own record is still being read is refused: the chain of lists would lead back to
/// its beginning, and queries that follow it would not end.
template <class T>
void streamHandles(qcArchive& archive, std::vector<qcPtrHandle_const<T>>& handles)
{
    streamBlockVersion(archive);
    streamCount(archive, handles, 1);  // a null pointer is a single byte
    qcArchive::Promise rest(archive, handles.size());
    for (auto& handle : handles) {
        rest.keepOne();
        streamHandle(archive, handle);
        if (!archive.isStoring() && archive.isBeingLoaded(handle.get())) {
            handle = qcPtrHandle_const<T>();
            throw qcArchive::BadReference("a chain of objects leads back to its beginning");
        }
    }
}

/// A class of a former version that had a block of its own in the records of its descendants. The
/// block carries nothing; it is read into one object for all, once per archive.
class LegacyBase : public virtual qcPersistent, public virtual qcRepBase {
public:
    /// Streams the block unless this archive has had it. Throws qcArchive::UnknownVersion with
    /// `file` and `line` for a version other than 0. Changes nothing of this object, so threads
    /// that load at once may share it.
    void streamOnce(qcArchive& archive, char const* file, int line)
    {
        if (haveVisited(this, sizeof *this))
            return;
        unsigned char version = 0;
        archive || version;
        if (version != 0)
            throw qcArchive::UnknownVersion(file, line);
        qcPersistent::dispatchSerialize(archive);
        setVisited(this, sizeof *this);
    }
};

}  // namespace qnInternal
