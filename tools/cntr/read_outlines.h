/// Outlines from text: WKT geometries or columns of x,y, with every fault reported by line.
#pragma once

#include <qc/core/vector.h>

#include <cstddef>
#include <cstdint>
#include <istream>
#include <string>
#include <vector>

namespace qnTool {

/// One outline as the command works on it.
struct Outline {
    std::string name;                 ///< empty where the text gives none
    std::vector<qcVector<2>> points;  ///< a closed outline does not repeat its first point
    bool closed = false;
    std::vector<std::vector<qcVector<2>>> holes;  ///< inner rings of a POLYGON, likewise closed
    int line = 0;                                 ///< where its text begins, from 1
};

enum class OutlineFormat {
    eGuess,  ///< by the first word that is no comment: a WKT geometry name, or else CSV
    eWkt,
    eCsv
};

struct ReadOptions {
    OutlineFormat format = OutlineFormat::eGuess;
    bool closed = false;  ///< every outline is closed, also where the first point does not return
    std::uint64_t maxBytes = std::uint64_t(1) << 30;
    std::size_t maxPoints = 50'000'000;   ///< in one call, holes included
    std::size_t maxOutlines = 5'000'000;  ///< in one call, holes included
};

struct ReadError {
    enum Kind {
        eMalformed,   ///< the text is not what the format asks for
        eUnreadable,  ///< the stream failed
        eNothing,     ///< there is neither an outline nor a fault
        eLimit        ///< one of the limits of ReadOptions; the rest was left out
    };
    Kind kind = eMalformed;
    std::string file;
    int line = 0;
    std::string message;

    /// `file:line: message`
    std::string text() const;
};

struct ReadResult {
    OutlineFormat format = OutlineFormat::eGuess;  ///< what was read; eGuess of an empty input
    std::vector<Outline> outlines;                 ///< the good ones, in order
    std::vector<ReadError> errors;                 ///< in order; empty where all is well
};

/// Reads outlines to the end of the stream. `file` only stands in the errors.
///
/// In both formats a line that begins with # names the outline after it (the last such line counts;
/// names are cut at 1000 bytes), and an outline is closed where its first point stands again at its
/// end: the repeat is dropped. A byte order mark is skipped.
///
/// WKT: LINESTRING, POLYGON, MULTILINESTRING and MULTIPOLYGON, one after the other, with any blanks
/// and at most semicolons between them. Rings are closed with or without the repeat. The parts of a
/// MULTI form become outlines of their own, `name 1`, `name 2` and so on where there are several.
/// Every other geometry, EMPTY, and the Z and M forms are refused.
///
/// CSV: a line for a point, x and y apart by a comma, a semicolon, a tab or blanks. A blank line
/// ends an outline, and so does a comment line. The first line may be a header of words.
///
/// Numbers are decimal with a point, whatever the locale; those that are not finite are refused.
/// An outline with a fault is left out whole and reported once. Reading goes on: in CSV after the
/// next blank or comment line, in WKT at the next line that begins with a letter or #. It stops at
/// a limit and after 1000 errors, and says so. An input without outline is an error.
///
/// Linear in the input; memory is that of the outlines. Throws nothing but std::bad_alloc.
ReadResult readOutlines(std::istream& in, std::string const& file, ReadOptions const& options = {});

}  // namespace qnTool
