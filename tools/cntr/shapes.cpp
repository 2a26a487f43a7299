// Contours and regions from outlines of text, and back.
#include "shapes.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iostream>

namespace qnTool {

namespace {

/// An archive begins with the tag of a pointer record, which no text does.
bool looksLikeArchive(std::istream& in)
{
    int const first = in.peek();
    return first == 0 || first == 1 || first == 2;
}

OutlineFormat textFormat(InputOptions::Format format)
{
    return format == InputOptions::eWkt   ? OutlineFormat::eWkt
           : format == InputOptions::eCsv ? OutlineFormat::eCsv
                                          : OutlineFormat::eGuess;
}

std::vector<qcPtrHandle<qcRegion>> holesOf(Outline const& outline)
{
    std::vector<qcPtrHandle<qcRegion>> holes;
    for (auto const& points : outline.holes)
        holes.emplace_back(new qcRegion(points));
    return holes;
}

/// Says which rings the outline meets.
void reportHoles(Session& session, Outline const& outline, std::string const& place)
{
    auto const holes = holesOf(outline);
    for (std::size_t i = 0; i < holes.size(); ++i) {
        std::string const ring = place + ": ring " + std::to_string(i + 2);
        std::vector<qcPtrHandle<qcRegion>> const alone{holes[i]};
        session.attempt(ring, [&] { qcRegion(outline.points).holes(alone); });
    }
}

/// False where a hole meets the outline; that is reported.
bool makeShape(Session& session, Outline const& outline, Shape& shape)
{
    if (!outline.closed) {
        shape.contour = qcPtrHandle_const<qcContour>(new qcContour(outline.points, outline.closed));
        return true;
    }
    qcPtrHandle<qcRegion> const region(new qcRegion(outline.points));
    try {
        region->holes(holesOf(outline));
    } catch (qcException const&) {
        reportHoles(session, outline, shape.place());
        return false;
    }
    shape.region = region;
    shape.contour = shape.region;
    return true;
}

ExitStatus statusOf(ReadError const& error)
{
    return error.kind == ReadError::eLimit ? eOverLimit : eBadInput;
}

void loadText(Session& session, std::istream& in, std::string const& file,
              InputOptions const& options, std::vector<Shape>& shapes)
{
    ReadOptions reading;
    reading.format = textFormat(options.format);
    reading.closed = options.closed;
    auto const result = readOutlines(in, file, reading);
    for (auto const& error : result.errors)
        session.fail(statusOf(error), error.text());
    std::size_t number = 0;
    for (auto const& outline : result.outlines) {
        Shape shape;
        shape.name = outline.name;
        shape.file = file;
        shape.line = outline.line;
        shape.number = ++number;
        if (makeShape(session, outline, shape))
            shapes.push_back(std::move(shape));
    }
}

std::vector<unsigned char> takeAll(std::istream& in, std::string const& file)
{
    std::vector<unsigned char> bytes;
    char buffer[65536];
    while (in.read(buffer, sizeof buffer), in.gcount() > 0) {
        bytes.insert(bytes.end(), buffer, buffer + in.gcount());
        if (bytes.size() > Limits::kBytes)
            throw CommandError(eOverLimit,
                               file + ": more than " + std::to_string(Limits::kBytes) + " bytes");
    }
    if (in.bad())
        throw CommandError(eBadInput, file + ": reading failed");
    return bytes;
}

/// Calls `use` with the stream of a file or with standard input.
template <class Use>
void withStream(std::string const& file, Use use)
{
    if (file == "-") {
        use(std::cin);
        return;
    }
    std::ifstream in(file, std::ios::binary);
    if (!in)
        throw CommandError(eBadInput, file + ": cannot be opened: " + std::strerror(errno));
    use(in);
}

/// Counts what would be written out, a shared hole as often as it is met, before any is copied.
class WrittenSize {
public:
    void add(qcContour const& contour)
    {
        points_ += contour.points().size();
        if (points_ > Limits::kPoints || ++outlines_ > Limits::kShapes)
            throw CommandError(eOverLimit, "the outlines written out would exceed " +
                                               std::to_string(Limits::kPoints) + " points or " +
                                               std::to_string(Limits::kShapes) +
                                               " outlines and holes");
    }

    void addAll(qcRegion const& region)
    {
        add(region);
        for (auto const& hole : region.holes())
            addAll(*hole);
    }

private:
    std::size_t points_ = 0;
    std::size_t outlines_ = 0;
};

Outline outlineOf(qcContour const& contour, std::string const& name)
{
    Outline outline;
    outline.name = name;
    outline.points = contour.points();
    outline.closed = contour.isClosed();
    return outline;
}

}  // namespace

std::string Shape::place() const
{
    return file + (line > 0 ? ":" + std::to_string(line) : "") + ": " + title();
}

std::vector<unsigned char> readBytes(std::string const& file)
{
    std::vector<unsigned char> bytes;
    withStream(file, [&](std::istream& in) { bytes = takeAll(in, file); });
    return bytes;
}

std::vector<Shape> loadShapes(Session& session, InputOptions const& options)
{
    std::vector<Shape> shapes;
    for (auto const& file : options.files) {
        try {
            withStream(file, [&](std::istream& in) {
                bool const archive =
                    options.format == InputOptions::eArchive ||
                    (options.format == InputOptions::eAuto && looksLikeArchive(in));
                if (archive)
                    loadArchive(session, file, takeAll(in, file), shapes);
                else
                    loadText(session, in, file, options, shapes);
            });
        } catch (CommandError const& error) {
            session.fail(error.status(), error.what());
        }
    }
    return shapes;
}

std::vector<Shape> closedOnly(Session& session, std::vector<Shape> shapes, char const* what)
{
    std::vector<Shape> closed;
    for (auto& shape : shapes) {
        if (shape.region.isNull())
            session.fail(eBadInput, shape.place() + ": an open outline is of no use to " + what +
                                        " (--closed closes it)");
        else
            closed.push_back(std::move(shape));
    }
    return closed;
}

qcRegionSet setOf(std::vector<Shape> const& shapes)
{
    std::vector<qcPtrHandle_const<qcRegion>> regions;
    for (auto const& shape : shapes)
        if (!shape.region.isNull())
            regions.push_back(shape.region);
    return qcRegionSet(regions);
}

std::vector<Outline> outlinesOf(std::vector<Shape> const& shapes)
{
    WrittenSize size;
    for (auto const& shape : shapes)
        shape.region.isNull() ? size.add(*shape.contour) : size.addAll(*shape.region);
    std::vector<Outline> outlines;
    for (auto const& shape : shapes) {
        if (shape.region.isNull()) {
            outlines.push_back(outlineOf(*shape.contour, shape.name));
            continue;
        }
        std::vector<qcRegion const*> islands{shape.region.get()};
        std::vector<qcRegion const*> next;
        for (; !islands.empty(); islands = std::move(next), next.clear()) {
            for (auto const* island : islands) {
                outlines.push_back(outlineOf(*island, shape.name));
                for (auto const& hole : island->holes()) {
                    outlines.back().holes.push_back(hole->points());
                    for (auto const& inner : hole->holes())
                        next.push_back(&*inner);
                }
            }
        }
    }
    return outlines;
}

Shape shapeOf(qcRegion const& region, Shape const& origin)
{
    Shape shape = origin;
    shape.region = qcPtrHandle_const<qcRegion>(new qcRegion(region));
    shape.contour = shape.region;
    return shape;
}

}  // namespace qnTool
