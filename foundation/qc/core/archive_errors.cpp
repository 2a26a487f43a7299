/// \file
/// The exceptions of the archive.
#include <qc/core/archive.h>
#include <qc/core/internal/exception_class.h>

qcArchive::Errors::Errors(std::string const& text)
{
    describe(text);
}

qcArchive::Errors::Errors(Errors const& other) = default;
qcArchive::Errors::~Errors() = default;

qcArchive::UnknownVersion::UnknownVersion(char const* file, int line)
    : Errors(std::string(
                 "qcArchive::UnknownVersion: the archive holds a version that cannot be read") +
             (file ? std::string(" (") + file + ":" + std::to_string(line) + ")" : std::string())),
      file_(file), line_(line)
{
}

QC_EXCEPTION_MEMBERS(qcArchive::UnknownVersion, UnknownVersion, 0x10001301)

#define QC_ARCHIVE_ERROR(Name, number)                                                             \
    qcArchive::Name::Name(std::string const& text) : Errors("qcArchive::" #Name ": " + text) {}    \
    QC_EXCEPTION_MEMBERS(qcArchive::Name, Name, number)

QC_ARCHIVE_ERROR(EndOfData, 0x10001302)
QC_ARCHIVE_ERROR(UnknownClass, 0x10001303)
QC_ARCHIVE_ERROR(BadReference, 0x10001304)
QC_ARCHIVE_ERROR(ValueOutOfRange, 0x10001305)
QC_ARCHIVE_ERROR(BadCount, 0x10001306)
QC_ARCHIVE_ERROR(NestingTooDeep, 0x10001307)
QC_ARCHIVE_ERROR(AlreadyStreamed, 0x10001308)
QC_ARCHIVE_ERROR(WrongDirection, 0x10001309)
QC_ARCHIVE_ERROR(Unusable, 0x1000130A)
QC_ARCHIVE_ERROR(FileError, 0x1000130B)
