// Archive record of a set of regions, and its drawing.
#include <cntr/regionst.h>

#include "cntr/internal/archive_blocks.h"

namespace {

constexpr char kFile[] = "cntr/regionst";
constexpr int kVersionLine = 480;
constexpr unsigned char kVersion = 1;

}  // namespace

void qcRegionSet::dispatchSerialize(qcArchive& archive)
{
    if (haveVisited(this, sizeof *this))
        return;
    unsigned char version = kVersion;
    archive || version;
    qcRegionSet::serialize_(archive, version);
    setVisited(this, sizeof *this);
}

void qcRegionSet::serialize_(qcArchive& archive, unsigned char version)
{
    if (version > kVersion)
        throw qcArchive::UnknownVersion(kFile, kVersionLine);
    qcPersistent::dispatchSerialize(archive);
    qnInternal::streamHandles(archive, regions_);
    if (version == 1)
        archive || cachedVectorSize_;
    if (!archive.isStoring())
        cleanCacheInfo();
}

void qcRegionSet::draw(qcUITablet& tablet, qcColor const& color,
                       qcUITablet::Layers const& layer) const
{
    for (auto const& region : regions_)
        region->draw(tablet, color, layer);
}
