// cntr merge: all closed outlines as one set, in which those that overlap become one.
#include "changes.h"
#include "commands.h"
#include "options.h"

#include <algorithm>
#include <functional>
#include <unordered_map>

namespace qnTool {

namespace {

struct Options {
    InputOptions input;
    OutputOptions output;
    PictureOptions picture;
    bool outerHull = false;
};

void noteChange(Session& session, qcRegionSet const& before, qcRegionSet const& after)
{
    auto const figures = figuresOf(before), left = figuresOf(after);
    session.note(counted(before.regions().size(), "region") + " -> " +
                 std::to_string(after.regions().size()) + ", " + changeText(figures, left));
    warnOfLosses(session, "the set", figures, left);
    if (after.isSelfIntersecting())
        session.note("warning: some regions of the result still overlap");
}

using Points = std::vector<qcVector<2>>;

/// The same points for every outline that runs through them, wherever it begins and whichever way
/// it goes.
Points fromLowest(Points points)
{
    auto const less = [](qcVector<2> const& a, qcVector<2> const& b) {
        return a.x() < b.x() || (a.x() == b.x() && a.y() < b.y());
    };
    std::rotate(points.begin(), std::min_element(points.begin(), points.end(), less), points.end());
    if (points.size() > 2 && less(points.back(), points[1]))
        std::reverse(points.begin() + 1, points.end());
    return points;
}

struct PointsHash {
    std::size_t operator()(Points const& points) const
    {
        std::size_t hash = 0;
        for (auto const& point : points)
            for (double const coordinate : {point.x(), point.y()})
                hash = 31 * hash + std::hash<double>()(coordinate);
        return hash;
    }
};

/// The outlines that went in, by their points.
using Originals = std::unordered_map<Points, Shape const*, PointsHash>;

/// Warns of those that repeat another.
Originals originalsOf(Session& session, std::vector<Shape> const& shapes)
{
    Originals originals;
    for (auto const& shape : shapes) {
        auto const place = originals.emplace(fromLowest(shape.region->points()), &shape);
        if (!place.second)
            session.note("warning: " + shape.place() + ": the same outline as " +
                         place.first->second->place() +
                         ": they are joined where they cross, which makes it run twice");
    }
    return originals;
}

/// The shapes of the result; those that came through as they were keep their names.
std::vector<Shape> shapesOf(qcRegionSet const& set, Originals const& originals)
{
    std::vector<Shape> shapes;
    for (auto const& region : set.regions()) {
        Shape shape;
        auto const original = originals.find(fromLowest(region->points()));
        if (original != originals.end())
            shape.name = original->second->name;
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
    auto const originals = originalsOf(session, shapes);
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
        saveShapes(session, shapesOf(after, originals), options.input.files, options.output);
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
