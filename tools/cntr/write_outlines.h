/// Outlines as text that readOutlines takes back.
#pragma once

#include "read_outlines.h"

#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace qnTool {

/// The shortest decimal that reads back as the same double; with a precision, so many digits after
/// the point (0 to 100) and no minus before a zero. Independent of the locale.
std::string numberText(double value, std::optional<int> precision = std::nullopt);

struct WriteOptions {
    OutlineFormat format = OutlineFormat::eWkt;  ///< eGuess counts as eWkt
    std::optional<int> precision;
};

/// Writes the outlines, names as comment lines before them, closed ones with the first point again
/// at the end.
///
/// WKT: a closed outline, or one with holes, is a POLYGON, another a LINESTRING. CSV has no holes:
/// they follow as outlines of their own, named `name hole 1` and so on. Without a precision, reading
/// gives the same outlines, save that an open one which ends where it begins comes back closed.
///
/// Throws std::invalid_argument, before anything is written, for an outline or hole without points
/// or with coordinates that are not finite: the formats cannot carry them. Whether the stream took
/// it all is for the caller to ask of the stream.
void writeOutlines(std::ostream& out, std::vector<Outline> const& outlines,
                   WriteOptions const& options = {});

}  // namespace qnTool
