// cntr hull: the convex hull of every outline.
#include "commands.h"
#include "options.h"

#include <memory>

namespace qnTool {

namespace {

struct Options {
    InputOptions input;
    OutputOptions output;
    PictureOptions picture;
};

void hull(Session& session, Options const& options)
{
    checkFiles(options.input.files, options.output.file, options.picture);
    outputFormat(options.output);
    std::vector<Shape> hulls;
    Picture picture(options.picture, "Convex hulls");
    for (auto const& shape : loadShapes(session, options.input)) {
        session.attempt(shape.place(), [&] {
            qcRegion region;
            shape.contour->convexHull(region);
            hulls.push_back(shapeOf(region, shape));
            picture.result(region);
        });
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
