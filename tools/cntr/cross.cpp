// cntr cross: where the outlines of one file meet those of another.
#include "commands.h"
#include "edges.h"
#include "options.h"

namespace qnTool {

namespace {

struct Options {
    InputOptions input;
    ReportOptions report;
    PictureOptions picture;
};

/// An outline or a hole of one.
struct Ring {
    Shape const* shape;
    std::size_t number;  // 1 for the outline
    EdgeQueries contour;
    qcRect box;
};

std::vector<Ring> ringsOf(Session& session, std::vector<Shape> const& shapes)
{
    std::vector<Ring> rings;
    auto const add = [&](Shape const& shape, std::size_t number, qcContour const& contour) {
        session.attempt(shape.place(), [&] {
            rings.push_back(
                {&shape, number, EdgeQueries(contour), contour.encloseRect(qcXform<2>::I)});
        });
    };
    for (auto const& shape : shapes) {
        add(shape, 1, *shape.contour);
        if (shape.region.isNull())
            continue;
        std::size_t number = 1;
        for (auto const& hole : shape.region->holes())
            add(shape, ++number, *hole);
    }
    return rings;
}

/// False only where no edges can meet, the tolerance of the query included.
bool mayMeet(qcRect const& a, qcRect const& b)
{
    constexpr double kReach = 1e-5;
    auto const lowA = a.origin().position(), highA = a.lr().position();
    auto const lowB = b.origin().position(), highB = b.lr().position();
    return !(lowA.x() > highB.x() + kReach || lowB.x() > highA.x() + kReach ||
             lowA.y() > highB.y() + kReach || lowB.y() > highA.y() + kReach);
}

void crossRings(Ring const& a, Ring const& b, std::vector<Row>& rows, Picture& picture)
{
    for (auto const& meeting : a.contour.meetings(b.contour)) {
        Row row;
        row["name"] = a.shape->title();
        row["ring"] = a.number;
        row["edge"] = meeting.edge;
        row["otherName"] = b.shape->title();
        row["otherRing"] = b.number;
        row["otherEdge"] = meeting.otherEdge;
        row["point"] = pair(meeting.point);
        rows.push_back(std::move(row));
        picture.crossing(meeting.point);
    }
}

void cross(Session& session, Options const& options)
{
    checkFiles(options.input.files, "-", options.picture);
    std::vector<Shape> shapes[2];
    Picture picture(options.picture, "Where outlines meet");
    for (std::size_t i = 0; i < 2; ++i) {
        InputOptions one = options.input;
        one.files = {options.input.files[i]};
        shapes[i] = loadShapes(session, one);
        for (auto const& shape : shapes[i])
            i == 0 ? picture.shape(shape) : picture.other(shape);
    }
    auto const rings = ringsOf(session, shapes[0]);
    auto const others = ringsOf(session, shapes[1]);
    std::vector<Row> rows;
    for (auto const& a : rings)
        for (auto const& b : others)
            if (mayMeet(a.box, b.box))
                session.attempt(a.shape->place(), [&] { crossRings(a, b, rows, picture); });
    writeWhole("-", reportText("points", rows, options.report));
    picture.save();
}

}  // namespace

void addCross(CLI::App& app, Session& session)
{
    auto const options = std::make_shared<Options>();
    auto& command = *app.add_subcommand("cross", "List where outlines of two files meet");
    addInput(command, options->input, eAnyFiles);
    command.get_option("FILE")->expected(2);
    addReport(command, options->report);
    addPicture(command, options->picture);
    whenChosen(command, session, [options, &session] { cross(session, *options); });
}

}  // namespace qnTool
