// Formats a result in memory, then writes it in one go.
#include "save.h"

#include "files.h"
#include "write_outlines.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <map>
#include <set>
#include <sstream>

namespace qnTool {

namespace {

bool endsWith(std::string const& text, std::string const& end)
{
    return text.size() >= end.size() &&
           text.compare(text.size() - end.size(), end.size(), end) == 0;
}

/// The label that a name is, if it is one.
std::optional<std::uint32_t> labelIn(std::string const& name)
{
    std::uint32_t label = 0;
    char const* const end = name.data() + name.size();
    auto const parsed = std::from_chars(name.data(), end, label);
    bool const number = parsed.ec == std::errc() && parsed.ptr == end;
    return number ? std::optional<std::uint32_t>(label) : std::nullopt;
}

/// A label for every shape in turn, no two names sharing one unless they are one number.
class Labels {
public:
    explicit Labels(std::vector<Shape> const& shapes)
    {
        for (auto const& shape : shapes)
            if (auto const label = labelIn(shape.name))
                numbers_.insert(*label);
    }

    unsigned long next(std::string const& name)
    {
        ++position_;
        if (name.empty())
            return 0;
        if (auto const label = labelIn(name))
            return *label;
        last_ = std::max(last_ + 1, position_);
        while (numbers_.count(last_) > 0)
            ++last_;
        return last_;
    }

private:
    std::set<unsigned long> numbers_;  // that are names
    unsigned long position_ = 0;
    unsigned long last_ = 0;  // that stood for a word
};

/// Plain copies with their labels; a shape that stands several times is one object.
class Labelled {
public:
    explicit Labelled(std::vector<Shape> const& shapes) : labels_(shapes) {}

    qcPtrHandle<qcRegion> region(Shape const& shape)
    {
        auto& copy = regions_[shape.contour.get()];
        if (copy.isNull()) {
            copy = qcPtrHandle<qcRegion>(new qcRegion(*shape.region));
            copy->label(labels_.next(shape.name));
        }
        return copy;
    }

    qcPtrHandle<qcContour> contour(Shape const& shape)
    {
        if (!shape.region.isNull())
            return region(shape);
        qcPtrHandle<qcContour> copy(new qcContour(*shape.contour));
        copy->label(labels_.next(shape.name));
        return copy;
    }

private:
    std::map<qcContour const*, qcPtrHandle<qcRegion>> regions_;
    Labels labels_;
};

void storeSet(qcArchive& archive, std::vector<Shape> const& shapes)
{
    Labelled labelled(shapes);
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
    Labelled labelled(shapes);
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
        names = names || (!shape.name.empty() &&
                          shape.name != std::to_string(labelIn(shape.name).value_or(0)));
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

void saveShapes(Session& session, std::vector<Shape> const& shapes,
                std::vector<std::string> const& inputs, OutputOptions const& options)
{
    if (session.status() != eDone && isAmong(options.file, inputs)) {
        session.fail(session.status(), options.file + ": not written, for it is an input of which "
                                                      "not everything came through");
        return;
    }
    auto const format = outputFormat(options);
    writeWhole(options.file, format == InputOptions::eArchive
                                 ? archiveBytes(session, shapes)
                                 : textBytes(session, shapes, format, options.precision));
}

}  // namespace qnTool
