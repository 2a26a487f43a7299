/// What the command works on: contours and regions, from text or from an archive.
#pragma once

#include "read_outlines.h"
#include "session.h"

#include <cntr/cntr.h>

#include <iosfwd>
#include <string>
#include <vector>

namespace qnTool {

/// One outline of an input.
struct Shape {
    std::string name;        ///< given in the text, or the label in an archive; may be empty
    std::string file;        ///< `-` for standard input
    int line = 0;            ///< where its text begins; 0 in an archive
    std::size_t number = 0;  ///< its place in the file, from 1
    qcPtrHandle_const<qcContour> contour;  ///< never null
    qcPtrHandle_const<qcRegion> region;    ///< the same object; null for an open outline

    bool carriesData = false;  ///< the archive holds edge points for it

    /// The name, or `#number` where there is none.
    std::string title() const { return name.empty() ? "#" + std::to_string(number) : name; }
    /// File, line and title, for messages.
    std::string place() const;
};

struct InputOptions {
    enum Format { eAuto, eWkt, eCsv, eArchive };

    std::vector<std::string> files;
    Format format = eAuto;
    bool closed = false;
};

/// The most that one run takes in or puts out, whatever the input says.
struct Limits {
    static constexpr std::size_t kBytes = std::size_t(1) << 30;
    static constexpr std::size_t kShapes = 5'000'000;
    static constexpr std::size_t kPoints = 50'000'000;
    static constexpr std::size_t kRecords = 200'000;
};

/// The outlines of all files in order. Faults are reported to `session` and what is good is kept.
/// Inner rings become holes; an outline that meets one of its holes is left out.
std::vector<Shape> loadShapes(Session& session, InputOptions const& options);

/// The closed ones; the others are reported as of no use to `what`.
std::vector<Shape> closedOnly(Session& session, std::vector<Shape> shapes, char const* what);

/// The content of a file or of standard input. Throws CommandError.
std::vector<unsigned char> readBytes(std::string const& file);

/// The shapes of an archive: a row of pointer records of contours, regions and sets of regions.
/// Faults are reported; what was read before them is kept.
void loadArchive(Session& session, std::string const& file, std::vector<unsigned char> bytes,
                 std::vector<Shape>& shapes);

/// All of the closed shapes as one figure.
qcRegionSet setOf(std::vector<Shape> const& shapes);

/// Outlines and holes as the text formats take them; holes of holes follow as outlines of their own.
/// Throws CommandError where shared holes would multiply beyond the limits.
std::vector<Outline> outlinesOf(std::vector<Shape> const& shapes);

/// The opposite direction, for a plain result of the library.
Shape shapeOf(qcRegion const& region, Shape const& origin);

}  // namespace qnTool
