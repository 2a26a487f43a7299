// cntr clean: outlines that cross themselves, regularised or replaced by their outer hull.
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

/// Figures in messages: enough digits to compare by eye.
std::string shortNumber(double value)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.7g", value);
    return text;
}

std::string change(char const* what, double before, double after)
{
    return std::string(what) + " " + shortNumber(before) + " -> " + shortNumber(after);
}

/// What became of one outline.
void noteChange(Session& session, Shape const& shape, qcRegion const& cleaned,
                std::size_t crossings)
{
    qcRegion const& before = *shape.region;
    auto const left = EdgeQueries(cleaned).selfMeetings().size();
    std::string text = shape.place() + ": " +
                       change("area", before.area(false), cleaned.area(false)) + ", " +
                       change("length", before.length(), cleaned.length()) + ", " +
                       std::to_string(crossings) + " crossings resolved";
    if (left > 0)
        text += ", " + std::to_string(left) + " remain";
    session.note(text);
    constexpr double kRounding = 1e-9;  // of the length; less than that is no loss
    double const lost = 1.0 - cleaned.length() / before.length();
    if (lost > kRounding)
        session.note("warning: " + shape.place() + ": " + shortNumber(100.0 * lost) +
                     " % of the outline's length did not come back");
    if (cleaned.holes().size() < before.holes().size())
        session.note("warning: " + shape.place() + ": its " +
                     std::to_string(before.holes().size()) + " holes did not come back");
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
