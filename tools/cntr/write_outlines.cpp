// Formats outlines a piece at a time; what cannot be written is refused before the first byte.
#include "write_outlines.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <stdexcept>

namespace qnTool {

namespace {

using Points = std::vector<qcVector<2>>;

void checkPoints(Points const& points, std::string const& name)
{
    auto const of = name.empty() ? std::string("an outline") : "the outline " + name;
    if (points.empty())
        throw std::invalid_argument(of + " has a ring without points, which cannot be written");
    for (auto const& p : points)
        if (!std::isfinite(p.x()) || !std::isfinite(p.y()))
            throw std::invalid_argument(of + " has a coordinate that is not finite");
}

/// Writes one outline's worth of points after the other.
class PointWriter {
public:
    PointWriter(std::ostream& out, std::optional<int> precision) : out_(out), precision_(precision)
    {
    }

    /// With `xySeparator` within and `separator` between the points, the first one again at the end
    /// of a closed run.
    void write(Points const& points, bool closed, char const* xySeparator, char const* separator)
    {
        for (std::size_t i = 0; i < points.size() + (closed ? 1U : 0U); ++i) {
            auto const& p = points[i < points.size() ? i : 0];
            out_ << (i > 0 ? separator : "") << numberText(p.x(), precision_) << xySeparator
                 << numberText(p.y(), precision_);
        }
    }

    void writeWkt(Points const& points, bool closed)
    {
        out_ << '(';
        write(points, closed, " ", ", ");
        out_ << ')';
    }

private:
    std::ostream& out_;
    std::optional<int> precision_;
};

/// A comment line with the name, if there is one to write.
void writeName(std::ostream& out, std::string name)
{
    std::replace(name.begin(), name.end(), '\n', ' ');
    if (!name.empty())
        out << "# " << name << '\n';
}

void writeWkt(std::ostream& out, Outline const& outline, std::optional<int> precision)
{
    PointWriter points(out, precision);
    writeName(out, outline.name);
    bool const polygon = outline.closed || !outline.holes.empty();
    out << (polygon ? "POLYGON (" : "LINESTRING ");
    points.writeWkt(outline.points, polygon);
    for (auto const& hole : outline.holes) {
        out << ", ";
        points.writeWkt(hole, true);
    }
    out << (polygon ? ")\n" : "\n");
}

void writeCsv(std::ostream& out, Outline const& outline, std::optional<int> precision, bool first)
{
    PointWriter points(out, precision);
    out << (first ? "" : "\n");
    writeName(out, outline.name);
    points.write(outline.points, outline.closed, ",", "\n");
    out << '\n';
    for (std::size_t i = 0; i < outline.holes.size(); ++i) {
        out << '\n';
        writeName(out, (outline.name.empty() ? "" : outline.name + " ") + "hole " +
                           std::to_string(i + 1));
        points.write(outline.holes[i], true, ",", "\n");
        out << '\n';
    }
}

}  // namespace

std::string numberText(double value, std::optional<int> precision)
{
    std::array<char, 512> text;  // 309 digits before the point, 100 after it
    if (!precision) {
        auto const end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
        return {text.data(), end};
    }
    auto const end = std::to_chars(text.data(), text.data() + text.size(), value,
                                   std::chars_format::fixed, std::clamp(*precision, 0, 100))
                         .ptr;
    std::string result(text.data(), end);
    if (result.find_first_not_of("-0.") == std::string::npos && result[0] == '-')
        result.erase(0, 1);
    return result;
}

void writeOutlines(std::ostream& out, std::vector<Outline> const& outlines,
                   WriteOptions const& options)
{
    for (auto const& outline : outlines) {
        checkPoints(outline.points, outline.name);
        for (auto const& hole : outline.holes)
            checkPoints(hole, outline.name);
    }
    for (auto const& outline : outlines) {
        if (options.format == OutlineFormat::eCsv)
            writeCsv(out, outline, options.precision, &outline == &outlines.front());
        else
            writeWkt(out, outline, options.precision);
    }
}

}  // namespace qnTool
