// cntr clean: outlines that cross themselves, regularised or replaced by their outer hull.
#include "changes.h"
#include "commands.h"
#include "edges.h"
#include "options.h"

namespace qnTool {

namespace {

struct Options {
    InputOptions input;
    OutputOptions output;
    PictureOptions picture;
    bool outerHull = false;
};

/// What became of one outline.
void noteChange(Session& session, Shape const& shape, qcRegion const& cleaned,
                std::size_t crossings)
{
    auto const before = figuresOf(*shape.region), after = figuresOf(cleaned);
    auto const left = EdgeQueries(cleaned).selfMeetings().size();
    std::string text = shape.place() + ": " + changeText(before, after) + ", " +
                       counted(crossings, "crossing") + " resolved";
    if (left > 0)
        text += ", " + std::to_string(left) + " remain";
    session.note(text);
    warnOfLosses(session, shape.place(), before, after);
}

Shape cleanOne(Session& session, Shape const& shape, bool outerHull, Picture& picture)
{
    auto const crossings = EdgeQueries(*shape.contour).selfMeetings();
    qcRegion cleaned;
    if (outerHull)
        shape.region->outerHull(cleaned);
    else
        shape.region->regularize(cleaned);
    noteChange(session, shape, cleaned, crossings.size());
    picture.result(cleaned);
    picture.original(shape);
    for (auto const& crossing : crossings)
        picture.crossing(crossing.point);
    return shapeOf(cleaned, shape);
}

void clean(Session& session, Options const& options)
{
    checkFiles(options.input.files, options.output.file, options.picture);
    outputFormat(options.output);  // a name that tells no format is refused before the work
    std::vector<Shape> cleaned;
    Picture picture(options.picture, "Cleaned outlines over the original ones");
    for (auto const& shape : closedOnly(session, loadShapes(session, options.input), "clean")) {
        bool const done = session.attempt(shape.place(), [&] {
            cleaned.push_back(cleanOne(session, shape, options.outerHull, picture));
        });
        if (!done)
            picture.original(shape);
    }
    saveShapes(session, cleaned, options.input.files, options.output);
    picture.save();
}

}  // namespace

void addClean(CLI::App& app, Session& session)
{
    auto const options = std::make_shared<Options>();
    auto& command = *app.add_subcommand("clean", "Clean outlines that cross themselves");
    addInput(command, options->input, eAnyFiles);
    command.add_flag("--outer-hull", options->outerHull, "Keep the outer hull alone");
    addOutput(command, options->output);
    addPicture(command, options->picture);
    whenChosen(command, session, [options, &session] { clean(session, *options); });
}

}  // namespace qnTool
