/// \file
/// How the persistent classes of the foundation stream themselves.
#pragma once

#include <qc/core/archive.h>
#include <qc/core/persistent.h>

namespace qnInternal {

/// Streams the block of `object` unless its archive has done so: a version byte, 0, then what
/// `stream(version)` streams. Throws qcArchive::UnknownVersion, naming `source` and `line`, on
/// another stored version.
template <class T, class Stream>
void streamOnce(qcArchive& archive, T& object, char const* source, int line, Stream stream)
{
    if (qcPersistent::haveVisited(&object, sizeof(T)))
        return;
    unsigned char version = 0;
    archive || version;
    if (version != 0)
        throw qcArchive::UnknownVersion(source, line);
    stream(version);
    qcPersistent::setVisited(&object, sizeof(T));
}

}  // namespace qnInternal
