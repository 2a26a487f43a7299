/// Results to files and to standard output.
#pragma once

#include "session.h"
#include "shapes.h"

#include <optional>
#include <string>
#include <vector>

namespace qnTool {

/// Writes all of `bytes` to the file, or to standard output for `-`.
///
/// A regular file is replaced in one step, after everything has been written beside it: until then,
/// and when anything fails, it is as it was. Throws CommandError eOutputLost.
void writeWhole(std::string const& file, std::string const& bytes);

struct OutputOptions {
    std::string file = "-";
    InputOptions::Format format = InputOptions::eAuto;  ///< eAuto: by the file's name
    std::optional<int> precision;                       ///< digits after the point, of text
};

/// The format that the options ask for; standard output gets WKT. Throws CommandError eUsage where
/// the name of the file does not tell.
InputOptions::Format outputFormat(OutputOptions const& options);

/// Writes the shapes as WKT, CSV or an archive. What a format cannot carry is noted.
///
/// An archive holds one pointer record: a qcRegionSet of all shapes; where some are open, a pointer
/// record for each shape instead. Labels: a name that is a number is the label, another name becomes
/// the shape's place in the output, no name is 0.
void saveShapes(Session& session, std::vector<Shape> const& shapes, OutputOptions const& options);

}  // namespace qnTool
