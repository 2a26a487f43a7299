// Aligns cells by their width in characters.
#include "report.h"

#include "write_outlines.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace qnTool {

namespace {

std::string cellText(Row const& value, std::optional<int> precision)
{
    if (value.is_null())
        return "-";
    if (value.is_boolean())
        return value.get<bool>() ? "yes" : "no";
    if (value.is_number_float())
        return numberText(value.get<double>(), precision);
    if (value.is_string())
        return value.get<std::string>();
    if (!value.is_array())
        return value.dump();
    std::string text;
    for (auto const& element : value)
        text += (text.empty() ? "" : ",") + cellText(element, precision);
    return text;
}

/// Characters, not bytes.
std::size_t widthOf(std::string const& text)
{
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xc0) != 0x80; }));
}

void appendAligned(std::string& line, std::string const& text, std::size_t width, bool right)
{
    std::string const blanks(width - std::min(width, widthOf(text)), ' ');
    line += (line.empty() ? "" : "  ") + (right ? blanks + text : text + blanks);
}

void roundNumbers(Row& value, int precision)
{
    if (value.is_number_float() && std::isfinite(value.get<double>()))
        value = std::strtod(numberText(value.get<double>(), precision).c_str(), nullptr);
    else if (value.is_structured())
        for (auto& element : value)
            roundNumbers(element, precision);
}

struct Column {
    std::string key;
    bool right = true;  // every cell but words
    std::size_t width = 0;
    std::vector<std::string> cells;
};

Column makeColumn(std::string const& key, std::vector<Row> const& rows,
                  std::optional<int> precision)
{
    Column column;
    column.key = key;
    column.width = widthOf(key);
    for (auto const& row : rows) {
        Row const value = row.value(key, Row());
        column.cells.push_back(cellText(value, precision));
        column.width = std::max(column.width, widthOf(column.cells.back()));
        column.right = column.right && !value.is_string();
    }
    return column;
}

}  // namespace

Row pair(qcVector<2> const& v)
{
    return Row::array({v.x(), v.y()});
}

std::string tableText(std::vector<Row> const& rows, std::vector<std::string> columns,
                      std::optional<int> precision)
{
    if (rows.empty())
        return {};
    if (columns.empty())
        for (auto const& item : rows.front().items())
            columns.push_back(item.key());
    std::vector<Column> table;
    table.reserve(columns.size());
    for (auto const& key : columns)
        table.push_back(makeColumn(key, rows, precision));

    std::string text;
    for (std::size_t i = 0; i <= rows.size(); ++i) {
        std::string line;
        for (auto const& column : table)
            appendAligned(line, i == 0 ? column.key : column.cells[i - 1], column.width,
                          column.right);
        line.erase(line.find_last_not_of(' ') + 1);
        text += line + '\n';
    }
    return text;
}

std::string jsonText(Row document, std::optional<int> precision)
{
    if (precision)
        roundNumbers(document, *precision);
    return document.dump(2, ' ', false, Row::error_handler_t::replace) + '\n';
}

std::string reportText(std::string const& key, std::vector<Row> const& rows,
                       ReportOptions const& options)
{
    if (!options.json)
        return tableText(rows, {}, options.precision);
    Row document = Row::object();
    document[key] = rows;
    return jsonText(std::move(document), options.precision);
}

}  // namespace qnTool
