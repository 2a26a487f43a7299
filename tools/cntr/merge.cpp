// cntr merge: all closed outlines as one set, in which those that overlap become one.
#include "commands.h"
#include "options.h"

#include <cstdio>

namespace qnTool {

namespace {

struct Options {
    InputOptions input;
    OutputOptions output;
    PictureOptions picture;
    bool outerHull = false;
};

double lengthOf(qcRegionSet const& set)
{
    double length = 0.0;
    for (auto const& region : set.regions())
        length += region->length();
    return length;
}

std::size_t holesOf(qcRegionSet const& set)
{
    std::size_t holes = 0;
    for (auto const& region : set.regions())
        holes += region->holes().size();
    return holes;
}

void noteChange(Session& session, qcRegionSet const& before, qcRegionSet const& after)
{
    char text[200];
    std::snprintf(text, sizeof text, "%zu regions -> %zu, area %.7g -> %.7g, length %.7g -> %.7g",
                  before.regions().size(), after.regions().size(), before.area(false),
                  after.area(false), lengthOf(before), lengthOf(after));
    session.note(text);
    constexpr double kRounding = 1e-9;  // of the length; less than that is no loss
    double const lost = 1.0 - lengthOf(after) / lengthOf(before);
    if (lost > kRounding) {
        std::snprintf(text, sizeof text,
                      "warning: %.3g %% of the outlines' length did not come back", 100.0 * lost);
        session.note(text);
    }
    if (holesOf(after) < holesOf(before))
        session.note("warning: of " + std::to_string(holesOf(before)) + " holes " +
                     std::to_string(holesOf(after)) + " came back");
    if (after.isSelfIntersecting())
        session.note("warning: some regions of the result still overlap");
}

/// The shapes of the result; those that came through as they were keep their names.
std::vector<Shape> shapesOf(qcRegionSet const& set, std::vector<Shape> const& origins)
{
    std::vector<Shape> shapes;
    for (auto const& region : set.regions()) {
        Shape shape;
        for (auto const& origin : origins)
            if (*origin.region == *region)
                shape.name = origin.name;
        shape.number = shapes.size() + 1;
        shape.file = "merged";
        shape.region = region;
        shape.contour = region;
        shapes.push_back(std::move(shape));
    }
    return shapes;
}

void merge(Session& session, Options const& options)
{
    checkFiles(options.input.files, options.output.file, options.picture);
    outputFormat(options.output);
    auto const shapes = closedOnly(session, loadShapes(session, options.input), "merge");
    if (shapes.empty())
        return;
    Picture picture(options.picture, "Merged regions over the original ones");
    bool const done = session.attempt("the set", [&] {
        auto const before = setOf(shapes);
        qcRegionSet after;
        if (options.outerHull)
            before.outerHull(after);
        else
            before.regularize(after);
        noteChange(session, before, after);
        for (auto const& region : after.regions())
            picture.result(*region);
        saveShapes(session, shapesOf(after, shapes), options.input.files, options.output);
    });
    if (!done)
        return;
    for (auto const& shape : shapes)
        picture.original(shape);
    picture.save();
}

}  // namespace

void addMerge(CLI::App& app, Session& session)
{
    auto const options = std::make_shared<Options>();
    auto& command = *app.add_subcommand("merge", "Merge outlines that overlap");
    addInput(command, options->input, eAnyFiles);
    command.add_flag("--outer-hull", options->outerHull, "Keep the outer hulls alone");
    addOutput(command, options->output);
    addPicture(command, options->picture);
    whenChosen(command, session, [options, &session] { merge(session, *options); });
}

}  // namespace qnTool
