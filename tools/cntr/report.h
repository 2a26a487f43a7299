/// Rows of findings as an aligned table or as JSON.
#pragma once

#include <nlohmann/json.hpp>

#include <qc/core/vector.h>

#include <optional>
#include <string>
#include <vector>

namespace qnTool {

/// One row: values by name, in order. What does not apply is null.
using Row = nlohmann::ordered_json;

struct ReportOptions {
    bool json = false;
    std::optional<int> precision;
};

/// `[x, y]`
Row pair(qcVector<2> const& v);

/// A table of the named columns (all that the first row has, if none is named) with a line of heads;
/// empty for no rows. Numbers stand right, in shortest form that reads back the same or with the
/// precision; points are `x,y`, what is null is `-`.
std::string tableText(std::vector<Row> const& rows, std::vector<std::string> columns,
                      std::optional<int> precision);

/// The document, two blanks an indent; numbers that are not finite are null. With a precision
/// numbers are rounded to so many digits.
std::string jsonText(Row document, std::optional<int> precision);

/// The rows as table or as `{"<key>": [...]}`.
std::string reportText(std::string const& key, std::vector<Row> const& rows,
                       ReportOptions const& options);

}  // namespace qnTool
