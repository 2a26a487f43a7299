// The library's own exceptions: numbers, rethrowing, and their archive records.
#include <cntr/contour_defs.h>

#include <qc/core/internal/exception_class.h>

namespace {

constexpr char kErrors[] = "qcContourDefs::Errors";
constexpr char kEmptyContour[] = "qcContourDefs::EmptyContour";
constexpr char kEmptyRegionSet[] = "qcContourDefs::EmptyRegionSet";
constexpr char kBadParams[] = "qcContourDefs::BadParams";
constexpr char kRegionCannotBeSetOpen[] = "qcContourDefs::RegionCannotBeSetOpen";

/// Every record here has only version 0.
void requireVersion(unsigned char version, char const* className)
{
    if (version != 0)
        throw qcArchive::UnknownVersion(className, 0);
}

/// The scheme of every record: once per archive, a version byte, then the fields of that version.
template <class Fields>
void streamOnce(qcArchive& archive, void* object, std::size_t size, Fields fields)
{
    if (qcPersistent::haveVisited(object, size))
        return;
    unsigned char version = 0;
    archive || version;
    fields(version);
    qcPersistent::setVisited(object, size);
}

}  // namespace

qcContourDefs::Errors::Errors(std::wstring const& message) : qcExceptionWithString(message.c_str())
{
}
qcContourDefs::Errors::Errors(Errors const&) = default;
qcContourDefs::Errors& qcContourDefs::Errors::operator=(Errors const&) = default;
qcContourDefs::Errors::~Errors() = default;

void qcContourDefs::Errors::dispatchSerialize(qcArchive& archive)
{
    streamOnce(archive, this, sizeof *this,
               [&](unsigned char version) { Errors::serialize_(archive, version); });
}

void qcContourDefs::Errors::serialize_(qcArchive& archive, unsigned char version)
{
    requireVersion(version, kErrors);
    qcException::dispatchSerialize(archive);
}

qcContourDefs::EmptyContour::EmptyContour(std::wstring const& message) : Errors(message) {}
QC_EXCEPTION_MEMBERS(qcContourDefs::EmptyContour, EmptyContour, 0x10004680)
qcContourDefs::EmptyContour& qcContourDefs::EmptyContour::operator=(EmptyContour const&) = default;

qcPersistent* qcContourDefs::EmptyContour::make()
{
    return new EmptyContour;
}

void qcContourDefs::EmptyContour::dispatchSerialize(qcArchive& archive)
{
    streamOnce(archive, this, sizeof *this,
               [&](unsigned char version) { EmptyContour::serialize_(archive, version); });
}

void qcContourDefs::EmptyContour::serialize_(qcArchive& archive, unsigned char version)
{
    requireVersion(version, kEmptyContour);
    Errors::dispatchSerialize(archive);
}

qcContourDefs::EmptyRegionSet::EmptyRegionSet(std::wstring const& message) : Errors(message) {}
QC_EXCEPTION_MEMBERS(qcContourDefs::EmptyRegionSet, EmptyRegionSet, 0x10004682)
qcContourDefs::EmptyRegionSet&
qcContourDefs::EmptyRegionSet::operator=(EmptyRegionSet const&) = default;

qcPersistent* qcContourDefs::EmptyRegionSet::make()
{
    return new EmptyRegionSet;
}

void qcContourDefs::EmptyRegionSet::dispatchSerialize(qcArchive& archive)
{
    streamOnce(archive, this, sizeof *this,
               [&](unsigned char version) { EmptyRegionSet::serialize_(archive, version); });
}

void qcContourDefs::EmptyRegionSet::serialize_(qcArchive& archive, unsigned char version)
{
    requireVersion(version, kEmptyRegionSet);
    Errors::dispatchSerialize(archive);
}

qcContourDefs::BadParams::BadParams(std::wstring const& message) : Errors(message) {}
QC_EXCEPTION_MEMBERS(qcContourDefs::BadParams, BadParams, 0x10004683)
qcContourDefs::BadParams& qcContourDefs::BadParams::operator=(BadParams const&) = default;

qcPersistent* qcContourDefs::BadParams::make()
{
    return new BadParams;
}

void qcContourDefs::BadParams::dispatchSerialize(qcArchive& archive)
{
    streamOnce(archive, this, sizeof *this,
               [&](unsigned char version) { BadParams::serialize_(archive, version); });
}

void qcContourDefs::BadParams::serialize_(qcArchive& archive, unsigned char version)
{
    requireVersion(version, kBadParams);
    Errors::dispatchSerialize(archive);
}

qcContourDefs::RegionCannotBeSetOpen::RegionCannotBeSetOpen(std::wstring const& message)
    : Errors(message)
{
}
QC_EXCEPTION_MEMBERS(qcContourDefs::RegionCannotBeSetOpen, RegionCannotBeSetOpen, 0x10004684)
qcContourDefs::RegionCannotBeSetOpen&
qcContourDefs::RegionCannotBeSetOpen::operator=(RegionCannotBeSetOpen const&) = default;

qcPersistent* qcContourDefs::RegionCannotBeSetOpen::make()
{
    return new RegionCannotBeSetOpen;
}

void qcContourDefs::RegionCannotBeSetOpen::dispatchSerialize(qcArchive& archive)
{
    streamOnce(archive, this, sizeof *this,
               [&](unsigned char version) { RegionCannotBeSetOpen::serialize_(archive, version); });
}

void qcContourDefs::RegionCannotBeSetOpen::serialize_(qcArchive& archive, unsigned char version)
{
    requireVersion(version, kRegionCannotBeSetOpen);
    Errors::dispatchSerialize(archive);
}
