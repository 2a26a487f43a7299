// cntr hull: the convex hull of every outline.
#include "commands.h"
#include "options.h"
#include "session.h"

#include <algorithm>
#include <cmath>
#include <memory>

namespace qnTool {

namespace {

struct Options {
    InputOptions input;
    OutputOptions output;
    PictureOptions picture;
};

/// The hull of points on one line is the line from end to end; of one place there is none.
void addHullOf(Session& session, Shape const& shape, std::vector<Shape>& hulls, Picture& picture)
{
    qcRegion region;
    shape.contour->convexHull(region);
    auto const& all = shape.contour->points();
    auto const lost = std::count_if(all.begin(), all.end(), [](qcVector<2> const& point) {
        return !std::isfinite(point.x()) || !std::isfinite(point.y());
    });
    if (lost > 0)
        session.note("warning: " + shape.place() + ": " +
                     counted(static_cast<std::size_t>(lost), "point") +
                     " left out: coordinates that are not finite");
    auto const count = region.points().size();
    if (count < 2) {
        session.fail(eGeometry, shape.place() + ": no hull of fewer than two different points");
        return;
    }
    hulls.push_back(shapeOf(region, shape));
    if (count == 2) {
        hulls.back().region = {};
        hulls.back().contour = qcPtrHandle_const<qcContour>(new qcContour(region.points(), false));
    }
    picture.result(region);
}

void hull(Session& session, Options const& options)
{
    checkFiles(options.input.files, options.output.file, options.picture);
    outputFormat(options.output);
    std::vector<Shape> hulls;
    Picture picture(options.picture, "Convex hulls");
    for (auto const& shape : loadShapes(session, options.input)) {
        session.attempt(shape.place(), [&] { addHullOf(session, shape, hulls, picture); });
        picture.shape(shape);
    }
    saveShapes(session, hulls, options.input.files, options.output);
    picture.save();
}

}  // namespace

void addHull(CLI::App& app, Session& session)
{
    auto const options = std::make_shared<Options>();
    auto& command = *app.add_subcommand("hull", "Write the convex hull of every outline");
    addInput(command, options->input, eAnyFiles);
    addOutput(command, options->output);
    addPicture(command, options->picture);
    whenChosen(command, session, [options, &session] { hull(session, *options); });
}

}  // namespace qnTool
