// Formats a result in memory, then writes it in one go.
#include "save.h"

#include "write_outlines.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <climits>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <map>
#include <sstream>

namespace qnTool {

namespace {

[[noreturn]] void failWriting(std::string const& file, int error)
{
    throw CommandError(eOutputLost, file + ": cannot be written: " + std::strerror(error));
}

/// 0, or the error number.
int writeAll(int descriptor, std::string const& bytes)
{
    std::size_t done = 0;
    while (done < bytes.size()) {
        ssize_t const written = ::write(descriptor, bytes.data() + done, bytes.size() - done);
        if (written < 0 && errno != EINTR)
            return errno;
        done += written > 0 ? static_cast<std::size_t>(written) : 0;
    }
    return 0;
}

/// Where a name leads, links followed, so that a link is not replaced by a file.
std::string behindLinks(std::string const& file)
{
    char* const real = ::realpath(file.c_str(), nullptr);
    std::string result = real ? real : file;
    std::free(real);
    return result;
}

/// A device or a pipe cannot be replaced: it is written to.
void writeInPlace(std::string const& file, std::string const& bytes)
{
    int const descriptor = ::open(file.c_str(), O_WRONLY | O_CLOEXEC);
    if (descriptor < 0)
        failWriting(file, errno);
    int error = writeAll(descriptor, bytes);
    if (::close(descriptor) != 0 && error == 0)
        error = errno;
    if (error != 0)
        failWriting(file, error);
}

void replaceFile(std::string const& file, std::string const& bytes, mode_t const* mode)
{
    std::string const target = behindLinks(file);
    std::string const beside = target + ".part-" + std::to_string(::getpid());
    int const descriptor = ::open(beside.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (descriptor < 0)
        failWriting(file, errno);
    if (mode)
        (void)::fchmod(descriptor, *mode & 0777U);  // else the mode of a new file serves
    int error = writeAll(descriptor, bytes);
    if (error == 0 && ::fsync(descriptor) != 0)
        error = errno;
    if (::close(descriptor) != 0 && error == 0)
        error = errno;
    if (error == 0 && ::rename(beside.c_str(), target.c_str()) != 0)
        error = errno;
    if (error != 0) {
        ::unlink(beside.c_str());
        failWriting(file, error);
    }
}

void writeStandardOutput(std::string const& bytes)
{
    int const error = writeAll(STDOUT_FILENO, bytes);
    if (error != 0)
        failWriting("standard output", error);
}

bool endsWith(std::string const& text, std::string const& end)
{
    return text.size() >= end.size() &&
           text.compare(text.size() - end.size(), end.size(), end) == 0;
}

/// The label that stands for a name.
unsigned long labelOf(Shape const& shape, std::size_t position)
{
    std::uint32_t label = 0;
    char const* const end = shape.name.data() + shape.name.size();
    auto const parsed = std::from_chars(shape.name.data(), end, label);
    bool const number = parsed.ec == std::errc() && parsed.ptr == end;
    return number || shape.name.empty() ? label : static_cast<unsigned long>(position);
}

/// Plain copies with their labels; a shape that stands several times is one object.
class Labelled {
public:
    qcPtrHandle<qcRegion> region(Shape const& shape)
    {
        auto& copy = regions_[shape.contour.get()];
        if (copy.isNull()) {
            copy = qcPtrHandle<qcRegion>(new qcRegion(*shape.region));
            copy->label(labelOf(shape, ++position_));
        }
        return copy;
    }

    qcPtrHandle<qcContour> contour(Shape const& shape)
    {
        if (!shape.region.isNull())
            return region(shape);
        qcPtrHandle<qcContour> copy(new qcContour(*shape.contour));
        copy->label(labelOf(shape, ++position_));
        return copy;
    }

private:
    std::map<qcContour const*, qcPtrHandle<qcRegion>> regions_;
    std::size_t position_ = 0;
};

void storeSet(qcArchive& archive, std::vector<Shape> const& shapes)
{
    Labelled labelled;
    std::vector<qcPtrHandle<qcRegion>> regions;
    regions.reserve(shapes.size());
    for (auto const& shape : shapes)
        regions.push_back(labelled.region(shape));
    qcPtrHandle<qcRegionSet> const set(new qcRegionSet(regions));
    qcPersistent* none = nullptr;
    qcPersistent::serializePointer(archive, set.get(), none);
}

void storeEach(qcArchive& archive, std::vector<Shape> const& shapes)
{
    Labelled labelled;
    for (auto const& shape : shapes) {
        auto const object = labelled.contour(shape);
        qcPersistent* none = nullptr;
        qcPersistent::serializePointer(archive, object.get(), none);
    }
}

/// What is about to be lost.
void noteLosses(Session& session, std::vector<Shape> const& shapes)
{
    bool names = false;
    bool data = false;
    for (auto const& shape : shapes) {
        names = names || (!shape.name.empty() && shape.name != std::to_string(labelOf(shape, 0)));
        data = data || shape.carriesData;
    }
    if (names)
        session.note("an archive has no names: the outlines are labelled by their numbers");
    if (data)
        session.note("edge points are not carried over, only the outlines");
}

std::string archiveBytes(Session& session, std::vector<Shape> const& shapes)
{
    noteLosses(session, shapes);
    bool const anyOpen = std::any_of(shapes.begin(), shapes.end(),
                                     [](Shape const& shape) { return shape.region.isNull(); });
    qcMemoryArchive archive;
    try {
        (anyOpen ? storeEach : storeSet)(archive, shapes);
    } catch (qcArchive::NestingTooDeep const& error) {
        throw CommandError(eOverLimit, errorText(error));
    }
    archive.close();
    return {archive.bytes().begin(), archive.bytes().end()};
}

std::string textBytes(Session& session, std::vector<Shape> const& shapes,
                      InputOptions::Format format, std::optional<int> precision)
{
    WriteOptions options;
    options.format = format == InputOptions::eCsv ? OutlineFormat::eCsv : OutlineFormat::eWkt;
    options.precision = precision;
    auto const outlines = outlinesOf(shapes);
    std::size_t holes = 0;
    for (auto const& outline : outlines)
        holes += outline.holes.size();
    if (holes > 0 && options.format == OutlineFormat::eCsv)
        session.note("CSV has no holes: they become outlines of their own");
    std::ostringstream out;
    try {
        writeOutlines(out, outlines, options);
    } catch (std::invalid_argument const& error) {
        throw CommandError(eBadInput, std::string("nothing was written: ") + error.what());
    }
    return out.str();
}

}  // namespace

void writeWhole(std::string const& file, std::string const& bytes)
{
    if (file == "-") {
        writeStandardOutput(bytes);
        return;
    }
    struct stat status = {};
    bool const exists = ::stat(file.c_str(), &status) == 0;
    if (exists && !S_ISREG(status.st_mode))
        writeInPlace(file, bytes);
    else
        replaceFile(file, bytes, exists ? &status.st_mode : nullptr);
}

InputOptions::Format outputFormat(OutputOptions const& options)
{
    if (options.format != InputOptions::eAuto)
        return options.format;
    if (options.file == "-" || endsWith(options.file, ".wkt"))
        return InputOptions::eWkt;
    if (endsWith(options.file, ".csv"))
        return InputOptions::eCsv;
    if (endsWith(options.file, ".cntr"))
        return InputOptions::eArchive;
    throw CommandError(eUsage, options.file + ": which format? Names end in .wkt, .csv or .cntr; "
                                              "for others say --to");
}

void saveShapes(Session& session, std::vector<Shape> const& shapes, OutputOptions const& options)
{
    auto const format = outputFormat(options);
    writeWhole(options.file, format == InputOptions::eArchive
                                 ? archiveBytes(session, shapes)
                                 : textBytes(session, shapes, format, options.precision));
}

}  // namespace qnTool
