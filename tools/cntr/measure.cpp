// cntr measure: what is to be known of every outline, or of all closed ones as one figure.
#include "commands.h"
#include "edges.h"
#include "options.h"

#include <algorithm>

namespace qnTool {

namespace {

struct Options {
    InputOptions input;
    ReportOptions report;
    PictureOptions picture;
    std::vector<std::string> columns;
    bool set = false;
};

// The table of regions comes below that of outlines: a line of both would be too long to read.
std::vector<std::string> const kOutlineColumns{
    "name", "vertices", "closed",   "length",        "area",       "centroid", "mean",
    "low",  "high",     "diameter", "firstDiameter", "medianEdge", "crosses"};
std::vector<std::string> const kRegionColumns{
    "name",         "holes",           "areaWithHoles", "centroidWithHoles", "inertia",
    "ellipseRadii", "ellipseRotation", "fitCenter",     "fitRadii",          "fitRotation",
    "fitResidual",  "hullArea",        "solidity"};

std::vector<std::string> const kSetColumns{
    "regions", "holes", "area",    "areaWithHoles", "centroid",     "centroidWithHoles",
    "low",     "high",  "crosses", "inertia",       "ellipseRadii", "ellipseRotation"};

void checkColumns(Options const& options)
{
    auto const has = [](std::vector<std::string> const& known, std::string const& column) {
        return std::find(known.begin(), known.end(), column) != known.end();
    };
    for (auto const& column : options.columns) {
        bool const known = options.set
                               ? has(kSetColumns, column)
                               : has(kOutlineColumns, column) || has(kRegionColumns, column);
        if (!known)
            throw CommandError(eUsage, "measure: there is no column '" + column + "'");
    }
}

double degrees(qcEllipse const& ellipse)
{
    return qcDegree(ellipse.rotation()).toDouble();
}

void addMoments(Row& row, qc_InertiaData const& figure)
{
    auto const& m = figure.inertiaMatrix();
    row["inertia"] = Row::array({m.element(0, 0), m.element(0, 1), m.element(1, 1)});
    row["ellipseRadii"] = Row();
    row["ellipseRotation"] = Row();
    try {
        auto const ellipse = qf_EllipseFromInertiaData(figure);
        row["ellipseRadii"] = pair(ellipse.radii());
        row["ellipseRotation"] = degrees(ellipse);
    } catch (qcMathError::Singular const&) {
        // a figure as thin as a line has none
    }
}

void addFit(Row& row, qcContour const& contour)
{
    qcEllipse ellipse;
    double residual = -1.0;
    contour.fitEllipse(ellipse, residual);
    bool const fitted = residual >= 0.0;
    row["fitCenter"] = fitted ? pair(ellipse.center()) : Row();
    row["fitRadii"] = fitted ? pair(ellipse.radii()) : Row();
    row["fitRotation"] = fitted ? Row(degrees(ellipse)) : Row();
    row["fitResidual"] = fitted ? Row(residual) : Row();
}

void addRegion(Row& row, qcRegion& region)
{
    double const area = region.area(true);
    row["holes"] = region.holes().size();
    row["areaWithHoles"] = area;
    row["centroidWithHoles"] = pair(region.centerOfMass(true));
    addMoments(row, figureWithHoles(region));
    addFit(row, region);
    qcRegion hull;
    region.convexHull(hull);
    double const hullArea = hull.points().size() < 3 ? 0.0 : hull.area(false);
    row["hullArea"] = hullArea;
    row["solidity"] = hullArea > 0.0 ? Row(area / hullArea) : Row();
}

Row outlineRow(Shape const& shape)
{
    EdgeQueries const contour(*shape.contour);
    std::unique_ptr<qcRegion> const region(shape.region.isNull() ? nullptr
                                                                 : new qcRegion(*shape.region));
    auto const box = contour.encloseRect(qcXform<2>::I);
    Row row;
    row["name"] = shape.title();
    row["vertices"] = contour.points().size();
    row["closed"] = contour.isClosed();
    row["length"] = contour.length();
    row["area"] = region ? Row(region->area(false)) : Row();
    row["centroid"] = region ? pair(region->centerOfMass(false)) : Row();
    row["mean"] = pair(contour.meanPosition());
    row["low"] = pair(box.origin().position());
    row["high"] = pair(box.lr().position());
    row["diameter"] = contour.diameter(qcContourDefs::eFarthestPair);
    row["firstDiameter"] = contour.diameter(qcContourDefs::eFromFirstPoint);
    row["medianEdge"] = contour.medianFeatureSize();
    row["crosses"] = contour.isSelfIntersecting();
    if (region)
        addRegion(row, *region);
    return row;
}

Row setRow(qcRegionSet const& set)
{
    auto const box = set.encloseRect(qcXform<2>::I);
    qc_InertiaData figure;
    std::size_t holes = 0;
    for (auto const& region : set.regions()) {
        figure = figure + figureWithHoles(*region);
        holes += region->holes().size();
    }
    Row row;
    row["regions"] = set.regions().size();
    row["holes"] = holes;
    row["area"] = set.area(false);
    row["areaWithHoles"] = set.area(true);
    row["centroid"] = pair(set.centerOfMass(false));
    row["centroidWithHoles"] = pair(set.centerOfMass(true));
    row["low"] = pair(box.origin().position());
    row["high"] = pair(box.lr().position());
    row["crosses"] = set.isSelfIntersecting();
    addMoments(row, figure);
    return row;
}

void drawRow(Picture& picture, Shape const& shape, Row const& row)
{
    picture.shape(shape);
    if (shape.region.isNull())
        return;
    auto const& center = row["centroidWithHoles"];
    picture.center({center[0].get<double>(), center[1].get<double>()});
    if (row["ellipseRadii"].is_array())
        picture.ellipse(qf_EllipseFromInertiaData(figureWithHoles(*shape.region)));
}

/// The values of these columns alone; of all, if none is named.
std::vector<Row> chosen(std::vector<Row> rows, std::vector<std::string> const& columns)
{
    if (columns.empty())
        return rows;
    for (auto& row : rows) {
        Row some = Row::object();
        for (auto const& column : columns)
            some[column] = row.value(column, Row());
        row = std::move(some);
    }
    return rows;
}

std::string tables(std::vector<Row> const& rows, Options const& options)
{
    auto const precision = options.report.precision;
    if (!options.columns.empty())
        return tableText(rows, {}, precision);
    std::vector<Row> regions;
    for (auto const& row : rows)
        if (row.contains("holes"))
            regions.push_back(row);
    std::string const below = tableText(regions, kRegionColumns, precision);
    return tableText(rows, kOutlineColumns, precision) + (below.empty() ? "" : "\n" + below);
}

void measureSet(Session& session, Options const& options)
{
    auto const shapes = closedOnly(session, loadShapes(session, options.input), "a set");
    if (shapes.empty() && session.status() != eDone)
        return;
    std::vector<Row> rows;
    Picture picture(options.picture, "A set of regions");
    session.attempt("the set", [&] { rows.push_back(setRow(setOf(shapes))); });
    for (auto const& shape : shapes)
        picture.shape(shape);
    auto const& columns = options.columns.empty() ? kSetColumns : options.columns;
    writeWhole("-", reportText("sets", chosen(std::move(rows), columns), options.report));
    picture.save();
}

void measureEach(Session& session, Options const& options)
{
    std::vector<Row> rows;
    Picture picture(options.picture, "Measured outlines");
    for (auto const& shape : loadShapes(session, options.input)) {
        session.attempt(shape.place(), [&] {
            rows.push_back(outlineRow(shape));
            drawRow(picture, shape, rows.back());
        });
    }
    rows = chosen(std::move(rows), options.columns);
    writeWhole("-", options.report.json ? reportText("outlines", rows, options.report)
                                        : tables(rows, options));
    picture.save();
}

}  // namespace

void addMeasure(CLI::App& app, Session& session)
{
    auto const options = std::make_shared<Options>();
    auto& command = *app.add_subcommand("measure", "Measure every outline");
    addInput(command, options->input, eAnyFiles);
    addReport(command, options->report);
    addPicture(command, options->picture);
    auto const split = [options](std::string const& text) {
        options->columns = CLI::detail::split(text, ',');
    };
    command.add_option_function<std::string>("--columns", split, "Only these, in one table")
        ->type_name("A,B,...");
    command.add_flag("--set", options->set, "Measure all closed outlines as one figure");
    whenChosen(command, session, [options, &session] {
        checkFiles(options->input.files, "-", options->picture);
        checkColumns(*options);
        options->set ? measureSet(session, *options) : measureEach(session, *options);
    });
}

}  // namespace qnTool
