// cntr locate: where points lie with regard to every outline, or to all closed ones as one figure.
#include "commands.h"
#include "options.h"

#include "read_outlines.h"

#include <limits>
#include <memory>
#include <sstream>

namespace qnTool {

namespace {

using Points = std::vector<qcVector<2>>;

struct Options {
    InputOptions input;
    ReportOptions report;
    PictureOptions picture;
    std::vector<std::string> points;
    std::string pointsFile;
    bool set = false;
};

/// All points of a text of columns. Faults are reported with the status; `what` is said to hold no
/// point where it does not.
Points readPoints(Session& session, std::istream& in, std::string const& name,
                  std::string const& what, ExitStatus status)
{
    ReadOptions reading;
    reading.format = OutlineFormat::eCsv;
    auto const result = readOutlines(in, name, reading);
    Points points;
    std::string const nothing = name + ": no point in " + what;
    for (auto const& error : result.errors)
        session.fail(status, error.kind == ReadError::eNothing ? nothing : error.text());
    for (auto const& outline : result.outlines) {
        points.insert(points.end(), outline.points.begin(), outline.points.end());
        if (outline.closed)  // the reader dropped a repeat
            points.push_back(outline.points.front());
    }
    return points;
}

Points pointsAsked(Session& session, Options const& options)
{
    Points points;
    for (auto const& text : options.points) {
        std::istringstream in(text);
        auto const one = readPoints(session, in, "--point", "'" + text + "'", eUsage);
        points.insert(points.end(), one.begin(), one.end());
    }
    if (!options.pointsFile.empty()) {
        auto const bytes = readBytes(options.pointsFile);
        std::istringstream in(std::string(bytes.begin(), bytes.end()));
        auto const more = readPoints(session, in, options.pointsFile, "this input", eBadInput);
        points.insert(points.end(), more.begin(), more.end());
    }
    return points;
}

Row regionRow(qcRegion& region, qcVector<2> const& point, Row row)
{
    long hole = -1;
    long const vertex = region.closestVertexIndex(point, true, hole);
    row["inside"] = region.inside(point, false);
    row["insideWithHoles"] = region.inside(point, true);
    row["distance"] = region.distToPoint(point, false, true, false);
    row["closest"] = pair(region.closestPoint(point, false, true));
    row["vertexRing"] = hole + 2;
    row["vertex"] = vertex;
    row["vertexAt"] = pair(region.closestPoint(point, true, true));
    return row;
}

Row lineRow(qcContour const& contour, qcVector<2> const& point, Row row)
{
    row["inside"] = row["insideWithHoles"] = Row();
    row["distance"] = contour.distToPoint(point, false);
    row["closest"] = pair(contour.closestPoint(point, false));
    row["vertexRing"] = 1;
    row["vertex"] = contour.closestVertexIndex(point);
    row["vertexAt"] = pair(contour.closestPoint(point, true));
    return row;
}

/// What the picture shows of a point: the closest of all outlines, and whether any contains it.
struct Nearest {
    double distance = std::numeric_limits<double>::infinity();
    qcVector<2> closest;
    bool inside = false;
};

void locateIn(Shape const& shape, Points const& points, std::vector<Row>& rows,
              std::vector<Nearest>& nearest)
{
    std::unique_ptr<qcRegion> const region(shape.region.isNull() ? nullptr
                                                                 : new qcRegion(*shape.region));
    for (std::size_t i = 0; i < points.size(); ++i) {
        Row row;
        row["name"] = shape.title();
        row["point"] = pair(points[i]);
        row = region ? regionRow(*region, points[i], row) : lineRow(*shape.contour, points[i], row);
        auto& best = nearest[i];
        double const distance = row["distance"];
        if (distance < best.distance) {
            best.distance = distance;
            best.closest = {row["closest"][0], row["closest"][1]};
        }
        best.inside = best.inside || (region && row["insideWithHoles"]);
        rows.push_back(std::move(row));
    }
}

void locateInSet(qcRegionSet const& set, Points const& points, std::vector<Row>& rows,
                 std::vector<Nearest>& nearest)
{
    for (std::size_t i = 0; i < points.size(); ++i) {
        Row row;
        row["point"] = pair(points[i]);
        row["inside"] = set.inside(points[i], false);
        row["insideWithHoles"] = set.inside(points[i], true);
        row["distance"] = set.distToPoint(points[i], false, true, false);
        nearest[i] = {0.0, points[i], row["insideWithHoles"]};
        rows.push_back(std::move(row));
    }
}

void locate(Session& session, Options const& options)
{
    auto inputs = options.input.files;
    if (!options.pointsFile.empty())
        inputs.push_back(options.pointsFile);
    checkFiles(inputs, "-", options.picture);
    auto const points = pointsAsked(session, options);
    auto shapes = loadShapes(session, options.input);
    if (options.set)
        shapes = closedOnly(session, std::move(shapes), "a set");
    std::vector<Row> rows;
    std::vector<Nearest> nearest(points.size());
    if (options.set && !shapes.empty())
        session.attempt("the set", [&] { locateInSet(setOf(shapes), points, rows, nearest); });
    else
        for (auto const& shape : shapes)
            session.attempt(shape.place(), [&] { locateIn(shape, points, rows, nearest); });
    Picture picture(options.picture, "Points and what is closest to them");
    for (auto const& shape : shapes)
        picture.shape(shape);
    for (std::size_t i = 0; i < points.size(); ++i) {
        bool const found = nearest[i].distance < std::numeric_limits<double>::infinity();
        picture.query(points[i], found ? nearest[i].closest : points[i], nearest[i].inside);
    }
    writeWhole("-", reportText("points", rows, options.report));
    picture.save();
}

}  // namespace

void addLocate(CLI::App& app, Session& session)
{
    auto const options = std::make_shared<Options>();
    auto& command = *app.add_subcommand("locate", "Say where points lie");
    addInput(command, options->input, eOneFile);
    auto* const some = command.add_option("--point", options->points, "Points to locate");
    some->type_name("X,Y...");
    auto* const file = command.add_option("--points", options->pointsFile, "Points from a table");
    file->type_name("CSV");
    command.add_flag("--set", options->set, "Take all closed outlines as one figure");
    addReport(command, options->report);
    addPicture(command, options->picture);
    whenChosen(command, session, [options, &session] {
        if (options->points.empty() && options->pointsFile.empty())
            throw CommandError(eUsage, "locate: which points? Say --point X,Y or --points CSV");
        locate(session, *options);
    });
}

}  // namespace qnTool
