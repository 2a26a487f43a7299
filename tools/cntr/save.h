/// Outlines as text or archives, to files and to standard output.
#pragma once

#include "session.h"
#include "shapes.h"

#include <optional>
#include <string>
#include <vector>

namespace qnTool {

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
/// the shape's place in the output or the next number that is free, no name is 0.
///
/// One of the inputs is not replaced where anything failed before: what was rejected stands there
/// alone. That is reported.
void saveShapes(Session& session, std::vector<Shape> const& shapes,
                std::vector<std::string> const& inputs, OutputOptions const& options);

}  // namespace qnTool
