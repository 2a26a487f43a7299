// Archive records of a contour, of every version.
#include <cntr/contour.h>

#include "cntr/internal/archive_blocks.h"

namespace {

constexpr char kFile[] = "cntr/contour";
constexpr int kLegacyBaseLine = 890;
constexpr int kVersionLine = 900;
constexpr unsigned char kVersion = 1;

/// The base that contours of version 0 had.
class qcContourBase : public qnInternal::LegacyBase {};

}  // namespace

qcPersistent* qcContour::make()
{
    return new qcContour;
}

void qcContour::dispatchSerialize(qcArchive& archive)
{
    if (haveVisited(this, sizeof *this))
        return;
    unsigned char version = kVersion;
    archive || version;
    qcContour::serialize_(archive, version);
    setVisited(this, sizeof *this);
}

void qcContour::serialize_(qcArchive& archive, unsigned char version)
{
    if (version > kVersion)
        throw qcArchive::UnknownVersion(kFile, kVersionLine);
    if (!archive.isStoring())
        dropCaches();  // silently: a throw below must not leave caches of points that are gone
    if (version == 0) {
        serializeLegacy(archive);
    } else {
        qcPersistent::dispatchSerialize(archive);
        archive || label_ || closed_;
        qnInternal::streamPoints(archive, points_);
        archive || cachedVectorSize_;
    }
    if (!archive.isStoring())
        cleanCacheInfo();
}

void qcContour::serializeLegacy(qcArchive& archive)
{
    static qcContourBase legacyBase;
    legacyBase.streamOnce(archive, kFile, kLegacyBaseLine);
    qnInternal::streamPoints(archive, points_);
    unsigned char obsolete = 0;
    archive || obsolete || cachedVectorSize_ || closed_;
    label_ = 0;
}
