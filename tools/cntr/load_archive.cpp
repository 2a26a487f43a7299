// Shapes from an archive of the library.
#include "shapes.h"

namespace qnTool {

namespace {

/// Puts what the records hold at the end of the shapes.
class ArchiveShapes {
public:
    ArchiveShapes(Session& session, std::string const& file, std::vector<Shape>& shapes)
        : session_(session), file_(file), shapes_(shapes)
    {
    }

    /// `place` is where its record stands, for messages.
    void add(qcPersistent* object, std::string const& place)
    {
        if (auto* const set = dynamic_cast<qcRegionSet*>(object)) {
            qcPtrHandle_const<qcRegionSet> const held(set);
            for (auto const& region : held->regions())
                addRegion(region, place);
        } else if (auto* const region = dynamic_cast<qcRegion*>(object)) {
            addRegion(qcPtrHandle_const<qcRegion>(region), place);
        } else if (auto* const contour = dynamic_cast<qcContour*>(object)) {
            addContour(qcPtrHandle_const<qcContour>(contour));
        } else {
            session_.fail(eBadInput, place + ": no contour, region or set");
        }
    }

private:
    Shape next(qcContour const& contour)
    {
        if (shapes_.size() >= Limits::kShapes)
            throw CommandError(eOverLimit, file_ + ": more than " +
                                               std::to_string(Limits::kShapes) + " outlines");
        Shape shape;
        shape.file = file_;
        shape.number = ++number_;
        shape.carriesData = dynamic_cast<qcContourT<qcEdgelet> const*>(&contour) != nullptr;
        shape.name = contour.label() > 0 ? std::to_string(contour.label()) : "";
        return shape;
    }

    void addRegion(qcPtrHandle_const<qcRegion> const& region, std::string const& place)
    {
        if (region.isNull()) {
            session_.fail(eBadInput, place + ": a null region in a set");
            return;
        }
        for (auto const& hole : region->holes()) {
            if (hole.isNull()) {
                session_.fail(eBadInput, place + ": a region with a null hole");
                return;
            }
        }
        Shape shape = next(*region);
        shape.region = region;
        shape.contour = region;
        shapes_.push_back(std::move(shape));
    }

    void addContour(qcPtrHandle_const<qcContour> const& contour)
    {
        Shape shape = next(*contour);
        shape.contour = contour;
        if (contour->isClosed()) {
            shape.region =
                qcPtrHandle_const<qcRegion>(new qcRegion(*contour, qcContourDefs::eIgnore));
            shape.contour = shape.region;
        }
        shapes_.push_back(std::move(shape));
    }

    Session& session_;
    std::string const& file_;
    std::vector<Shape>& shapes_;
    std::size_t number_ = 0;
};

}  // namespace

void loadArchive(Session& session, std::string const& file, std::vector<unsigned char> bytes,
                 std::vector<Shape>& shapes)
{
    qcMemoryArchive archive(std::move(bytes));
    unsigned long long const size = archive.remaining();
    auto const place = [&](unsigned long long start) {
        return file + ": record at byte " + std::to_string(start);
    };
    ArchiveShapes sink(session, file, shapes);
    while (archive.remaining() > 0) {
        unsigned long long const start = size - archive.remaining();
        try {
            qcPersistent* loaded = nullptr;
            qcPersistent::serializePointer(archive, nullptr, loaded);
            sink.add(loaded, place(start));
        } catch (qcArchive::NestingTooDeep const& error) {
            session.fail(eOverLimit, place(start) + ": " + errorText(error));
            return;
        } catch (qcException const& error) {
            session.fail(eBadInput, place(start) + ": " + errorText(error));
            return;
        }
    }
    if (size == 0)
        session.fail(eBadInput, file + ": an archive without records");
}

}  // namespace qnTool
