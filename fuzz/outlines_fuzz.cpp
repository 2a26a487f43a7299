// Reads any bytes as outlines, guessed and in both formats. What was read is finite and within the
// limits, and reads back the same after it was written, in either format.
#include <cntr/read_outlines.h>
#include <cntr/write_outlines.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <sstream>

namespace {

using namespace qnTool;

void require(bool holds, char const* what)
{
    if (holds)
        return;
    std::fprintf(stderr, "outlines_fuzz: %s\n", what);
    std::abort();
}

bool isSound(std::vector<qcVector<2>> const& points)
{
    for (auto const& p : points)
        if (!std::isfinite(p.x()) || !std::isfinite(p.y()))
            return false;
    return !points.empty();
}

/// An open outline that ends where it begins is read as a closed one.
bool endsWhereItBegins(Outline const& outline)
{
    return !outline.closed && outline.points.size() > 1 &&
           outline.points.front() == outline.points.back();
}

void writeAndReadAgain(std::vector<Outline> const& outlines, OutlineFormat format)
{
    std::stringstream text;
    writeOutlines(text, outlines, {format, std::nullopt});
    ReadOptions options;
    options.format = format;
    auto const again = readOutlines(text, "again", options);
    require(again.errors.empty(), "what was written has errors");
    if (format == OutlineFormat::eCsv)
        return;  // holes have become outlines
    require(again.outlines.size() == outlines.size(), "another number of outlines");
    for (std::size_t i = 0; i < outlines.size(); ++i) {
        require(again.outlines[i].points == outlines[i].points, "other points");
        require(again.outlines[i].closed == outlines[i].closed, "closed and open mixed up");
        require(again.outlines[i].holes == outlines[i].holes, "other holes");
        require(again.outlines[i].name == outlines[i].name, "another name");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    for (auto const format : {OutlineFormat::eGuess, OutlineFormat::eWkt, OutlineFormat::eCsv})
        for (bool const closed : {false, true}) {
            std::istringstream in(std::string(data, data + size));
            ReadOptions options;
            options.format = format;
            options.closed = closed;
            options.maxPoints = 1000;
            options.maxOutlines = 100;
            auto const result = readOutlines(in, "input", options);
            require(!result.outlines.empty() || !result.errors.empty(),
                    "neither outlines nor errors");
            require(result.outlines.size() <= options.maxOutlines, "too many outlines");
            std::vector<Outline> stable;
            for (auto const& outline : result.outlines) {
                require(isSound(outline.points), "an outline without points or not finite");
                for (auto const& hole : outline.holes)
                    require(isSound(hole), "a hole without points or not finite");
                if (!endsWhereItBegins(outline))
                    stable.push_back(outline);
            }
            if (stable.empty())
                continue;
            writeAndReadAgain(stable, OutlineFormat::eWkt);
            writeAndReadAgain(stable, OutlineFormat::eCsv);
        }
    return 0;
}
