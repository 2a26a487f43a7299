// cntr cross: where the outlines of one file meet those of another.
#include "commands.h"
#include "edges.h"
#include "options.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

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
    std::array<double, 2> low, high;  // of the box around it
};

Ring ringOf(Shape const& shape, std::size_t number, qcContour const& contour)
{
    auto const box = contour.encloseRect(qcXform<2>::I);
    auto const low = box.origin().position(), high = box.lr().position();
    return {&shape, number, EdgeQueries(contour), {low.x(), low.y()}, {high.x(), high.y()}};
}

using Rings = std::vector<Ring>;

Rings ringsOf(Session& session, std::vector<Shape> const& shapes)
{
    Rings rings;
    auto const add = [&](Shape const& shape, std::size_t number, qcContour const& contour) {
        session.attempt(shape.place(), [&] { rings.push_back(ringOf(shape, number, contour)); });
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

/// Farther apart than this, edges never meet, the tolerance of the query included.
constexpr double kReach = 1e-5;

/// False only where no edges can meet.
bool mayMeet(Ring const& a, Ring const& b)
{
    return !(a.low[0] > b.high[0] + kReach || b.low[0] > a.high[0] + kReach ||
             a.low[1] > b.high[1] + kReach || b.low[1] > a.high[1] + kReach);
}

/// The axis, 0 or 1, along which fewer boxes lie side by side with each other.
std::size_t sparseAxis(Rings const (&lists)[2])
{
    double crowding[2];
    for (std::size_t axis = 0; axis < 2; ++axis) {
        double low = HUGE_VAL, high = -HUGE_VAL, sum = 0.0;
        for (auto const& rings : lists) {
            for (auto const& ring : rings) {
                low = std::min(low, ring.low[axis]);
                high = std::max(high, ring.high[axis]);
                sum += ring.high[axis] - ring.low[axis] + kReach;
            }
        }
        crowding[axis] = sum / (high - low + kReach);
    }
    return crowding[1] < crowding[0] ? 1 : 0;
}

/// Where the box of a ring begins.
struct Begin {
    double at;
    std::size_t list, ring;
};

std::vector<Begin> beginsOf(Rings const (&lists)[2], std::size_t axis)
{
    std::vector<Begin> begins;
    for (std::size_t list = 0; list < 2; ++list) {
        for (std::size_t i = 0; i < lists[list].size(); ++i) {
            double const low = lists[list][i].low[axis];
            begins.push_back({std::isnan(low) ? -HUGE_VAL : low, list, i});
        }
    }
    std::sort(begins.begin(), begins.end(),
              [](Begin const& a, Begin const& b) { return a.at < b.at; });
    return begins;
}

/// A ring of the first list and one of the second.
using Pair = std::pair<std::size_t, std::size_t>;

/// The pairs that may meet, in order, found on a way along one axis.
std::vector<Pair> nearPairs(Rings const (&lists)[2])
{
    std::size_t const axis = sparseAxis(lists);
    std::vector<Pair> pairs;
    std::vector<std::size_t> open[2];  // not known to end before the place on the way
    for (auto const& begin : beginsOf(lists, axis)) {
        auto const& others = lists[1 - begin.list];
        auto& near = open[1 - begin.list];
        auto const isPassed = [&](std::size_t other) {
            return others[other].high[axis] + kReach < begin.at;
        };
        near.erase(std::remove_if(near.begin(), near.end(), isPassed), near.end());
        for (std::size_t const other : near)
            if (mayMeet(lists[begin.list][begin.ring], others[other]))
                pairs.push_back(begin.list == 0 ? Pair(begin.ring, other)
                                                : Pair(other, begin.ring));
        open[begin.list].push_back(begin.ring);
    }
    std::sort(pairs.begin(), pairs.end());
    return pairs;
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
    Rings const rings[2] = {ringsOf(session, shapes[0]), ringsOf(session, shapes[1])};
    std::vector<Row> rows;
    for (auto const& pair : nearPairs(rings)) {
        auto const& ring = rings[0][pair.first];
        session.attempt(ring.shape->place(),
                        [&] { crossRings(ring, rings[1][pair.second], rows, picture); });
    }
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
