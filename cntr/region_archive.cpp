// Archive records of a region, of every version.
#include <cntr/region.h>

#include "cntr/internal/archive_blocks.h"

namespace {

constexpr char kFile[] = "cntr/region";
constexpr int kLegacyBaseLine = 812;
constexpr int kVersionLine = 822;
constexpr unsigned char kVersion = 1;

/// The base that regions of version 0 had.
class qcContourBase2 : public qnInternal::LegacyBase {};

}  // namespace

void qcRegion::dispatchSerialize(qcArchive& archive)
{
    if (haveVisited(this, sizeof *this))
        return;
    unsigned char version = kVersion;
    archive || version;
    qcRegion::serialize_(archive, version);
    setVisited(this, sizeof *this);
}

void qcRegion::serialize_(qcArchive& archive, unsigned char version)
{
    if (version > kVersion)
        throw qcArchive::UnknownVersion(kFile, kVersionLine);
    if (!archive.isStoring()) {
        qcContour::dropCaches();  // silently: a throw below must not leave answers about points
        dropRegionCaches();       // and holes that are gone
    }
    if (version == 0) {
        serializeLegacy(archive);
    } else {
        qcContour::dispatchSerialize(archive);
        qnInternal::streamHandles(archive, holes_);
    }
    if (!archive.isStoring())
        cleanCacheInfo();
}

void qcRegion::serializeLegacy(qcArchive& archive)
{
    static qcContourBase2 legacyBase;
    legacyBase.streamOnce(archive, kFile, kLegacyBaseLine);
    qnInternal::streamPoints(archive, points_);
    unsigned char obsolete = 0;
    archive || obsolete || cachedVectorSize_;
    label_ = 0;
    closed_ = false;
}
