/// \file
/// The drawing surface that writes SVG.
#include <qc/display/tablet.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <ostream>
#include <utility>

namespace {

constexpr double kMargin = 10.0;  // pixels around the picture

bool isFinite(qcVector<2> const& p)
{
    return std::isfinite(p.x()) && std::isfinite(p.y());
}

/// With three digits at most and a point, whatever the locale.
std::string number(double value)
{
    if (!std::isfinite(value))
        value = 0.0;
    value = std::min(std::max(value, -1e9), 1e9);
    char text[32];
    auto const end = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, 3);
    std::string result(text, end.ptr);
    result.erase(result.find_last_not_of('0') + 1);
    if (result.back() == '.')
        result.pop_back();
    return result == "-0" ? "0" : result;
}

std::string colour(qcColor const& c)
{
    char const digits[] = "0123456789abcdef";
    std::string result = "#";
    for (int const part : {int(c.r()), int(c.g()), int(c.b())}) {
        result += digits[part / 16];
        result += digits[part % 16];
    }
    return result;
}

/// The bytes of the UTF-8 character at `text[i]`, or 0 when there is none that XML may contain.
std::size_t characterLength(std::string const& text, std::size_t i)
{
    auto const byte = [&](std::size_t k) -> unsigned long {
        return k < text.size() ? static_cast<unsigned char>(text[k]) : 0UL;
    };
    unsigned long const first = byte(i);
    if (first < 0x80)
        return first >= 0x20 || first == 0x9 || first == 0xA || first == 0xD ? 1 : 0;
    std::size_t const length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    unsigned long code = first & (0xFFUL >> (length + 1));
    for (std::size_t k = 1; k < length; ++k) {
        if ((byte(i + k) & 0xC0) != 0x80)
            return 0;
        code = (code << 6) | (byte(i + k) & 0x3F);
    }
    unsigned long const smallest = length == 2 ? 0x80UL : length == 3 ? 0x800UL : 0x10000UL;
    bool const allowed = first >= 0xC0 && first < 0xF8 && code >= smallest && code <= 0x10FFFF &&
                         (code < 0xD800 || code > 0xDFFF) && code != 0xFFFE && code != 0xFFFF;
    return allowed ? length : 0;
}

/// `text` as XML may contain it, in an attribute as well; what is no character becomes U+FFFD.
std::string escaped(std::string const& text)
{
    std::string result;
    for (std::size_t i = 0; i < text.size();) {
        std::size_t const length = characterLength(text, i);
        switch (text[i]) {
        case '&':
            result += "&amp;";
            break;
        case '<':
            result += "&lt;";
            break;
        case '>':
            result += "&gt;";
            break;
        case '"':
            result += "&quot;";
            break;
        default:
            if (length == 0)
                result += "\xEF\xBF\xBD";
            else
                result.append(text, i, length);
        }
        i += std::max<std::size_t>(length, 1);
    }
    return result;
}

std::string attribute(char const* name, std::string const& value)
{
    return std::string(" ") + name + "=\"" + value + "\"";
}

}  // namespace

/// From places to pixels. Differences are taken of halves: they cannot overflow.
class qcSvgTablet::Mapping {
public:
    Mapping(qcVector<2> const& low, qcVector<2> const& high, double pixels, YAxis yAxis)
        : low_(low), high_(high), yAxis_(yAxis)
    {
        qcVector<2> const half = high * 0.5 - low * 0.5;
        double const longest = std::max(half.x(), half.y());
        scale_ = longest > 0.0 ? pixels / longest : 0.0;
        if (!std::isfinite(scale_))
            scale_ = 0.0;  // all in one place, as far as a picture can show
        width_ = scale_ > 0.0 ? half.x() * scale_ : pixels;
        height_ = scale_ > 0.0 ? half.y() * scale_ : pixels;
    }

    double width() const { return width_ + 2 * kMargin; }
    double height() const { return height_ + 2 * kMargin; }

    qcVector<2> operator()(qcVector<2> const& p) const
    {
        if (scale_ == 0.0)
            return {kMargin + width_ / 2, kMargin + height_ / 2};
        qcVector<2> const fromLow = p * 0.5 - low_ * 0.5;
        double const y = yAxis_ == eYUp ? high_.y() * 0.5 - p.y() * 0.5 : fromLow.y();
        return {kMargin + fromLow.x() * scale_, kMargin + y * scale_};
    }

private:
    qcVector<2> low_;
    qcVector<2> high_;
    YAxis yAxis_;
    double scale_;
    double width_;
    double height_;
};

qcSvgTablet::qcSvgTablet(YAxis yAxis, double pixels)
    : yAxis_(yAxis), pixels_(pixels >= 1.0 ? std::min(pixels, 1e6) : 1.0)
{
}

qcSvgTablet::~qcSvgTablet() = default;

void qcSvgTablet::add(Element element)
{
    for (auto const& outline : element.outlines) {
        if (!std::all_of(outline.begin(), outline.end(), isFinite))
            return;
    }
    elements_.push_back(std::move(element));
}

void qcSvgTablet::drawLineSeg(qcPair<double> const& from, qcPair<double> const& to,
                              qcColor const& color, Layers layer)
{
    Style style;
    style.color = color;
    style.layer = layer;
    polyline({{from.first(), from.second()}, {to.first(), to.second()}}, style);
}

void qcSvgTablet::polyline(std::vector<qcVector<2>> const& points, Style const& style)
{
    add({ePath, {points}, false, style, 0.0, {}});
}

void qcSvgTablet::polygon(std::vector<qcVector<2>> const& points, Style const& style)
{
    add({ePath, {points}, true, style, 0.0, {}});
}

void qcSvgTablet::polygon(std::vector<std::vector<qcVector<2>>> const& outlines, Style const& style)
{
    add({ePath, outlines, true, style, 0.0, {}});
}

void qcSvgTablet::marker(qcVector<2> const& center, double radius, qcColor const& color,
                         Layers layer)
{
    Style style;
    style.color = color;
    style.layer = layer;
    add({eMarker, {{center}}, false, style, radius, {}});
}

void qcSvgTablet::label(qcVector<2> const& place, std::string const& text, qcColor const& color,
                        double height, Layers layer)
{
    Style style;
    style.color = color;
    style.layer = layer;
    add({eLabel, {{place}}, false, style, height, text});
}

void qcSvgTablet::image(std::string const& href, qcVector<2> const& corner,
                        qcVector<2> const& oppositeCorner, Layers layer)
{
    Style style;
    style.layer = layer;
    add({eImage, {{corner, oppositeCorner}}, false, style, 0.0, href});
}

void qcSvgTablet::frame(qcVector<2> const& corner, qcVector<2> const& oppositeCorner)
{
    frame_.clear();
    if (isFinite(corner) && isFinite(oppositeCorner))
        frame_ = {corner, oppositeCorner};
}

void qcSvgTablet::title(std::string const& text)
{
    title_ = text;
}

qcSvgTablet::Mapping qcSvgTablet::mapping() const
{
    std::vector<qcVector<2>> shown = frame_;
    if (shown.empty()) {
        for (Element const& element : elements_) {
            for (auto const& outline : element.outlines)
                shown.insert(shown.end(), outline.begin(), outline.end());
        }
    }
    if (shown.empty())
        shown.emplace_back();
    qcVector<2> low = shown.front();
    qcVector<2> high = low;
    for (qcVector<2> const& p : shown) {
        low = qcVector<2>(std::min(low.x(), p.x()), std::min(low.y(), p.y()));
        high = qcVector<2>(std::max(high.x(), p.x()), std::max(high.y(), p.y()));
    }
    return Mapping(low, high, pixels_, yAxis_);
}

void qcSvgTablet::writeElement(std::ostream& out, Element const& element, Mapping const& mapping)
{
    Style const& style = element.style;
    if (element.kind == ePath) {
        out << "<path d=\"";
        for (auto const& outline : element.outlines) {
            char command = 'M';
            for (qcVector<2> const& p : outline) {
                qcVector<2> const at = mapping(p);
                out << std::exchange(command, 'L') << number(at.x()) << ' ' << number(at.y());
            }
            if (element.closed && !outline.empty())
                out << 'Z';
        }
        out << '"' << attribute("fill", style.filled ? colour(style.fillColor) : "none");
        if (style.filled)
            out << attribute("fill-opacity", number(style.fillOpacity));
        if (style.width > 0.0)
            out << attribute("stroke", colour(style.color))
                << attribute("stroke-width", number(style.width));
        out << "/>\n";
        return;
    }
    qcVector<2> const at = mapping(element.outlines[0][0]);
    if (element.kind == eMarker) {
        out << "<circle" << attribute("cx", number(at.x())) << attribute("cy", number(at.y()))
            << attribute("r", number(std::max(element.size, 0.0)))
            << attribute("fill", colour(style.color)) << "/>\n";
    } else if (element.kind == eLabel) {
        out << "<text" << attribute("x", number(at.x() + 4)) << attribute("y", number(at.y() - 4))
            << attribute("font-size", number(std::max(element.size, 0.0)))
            << attribute("fill", colour(style.color)) << ">" << escaped(element.text)
            << "</text>\n";
    } else {
        qcVector<2> const other = mapping(element.outlines[0][1]);
        std::string const href = escaped(element.text);
        out << "<image" << attribute("x", number(std::min(at.x(), other.x())))
            << attribute("y", number(std::min(at.y(), other.y())))
            << attribute("width", number(std::fabs(other.x() - at.x())))
            << attribute("height", number(std::fabs(other.y() - at.y())))
            << attribute("preserveAspectRatio", "none") << attribute("href", href)
            << attribute("xlink:href", href) << "/>\n";
    }
}

void qcSvgTablet::write(std::ostream& out) const
{
    Mapping const map = mapping();
    std::string const width = number(map.width());
    std::string const height = number(map.height());
    out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg"
        << attribute("xmlns", "http://www.w3.org/2000/svg")
        << attribute("xmlns:xlink", "http://www.w3.org/1999/xlink") << attribute("width", width)
        << attribute("height", height) << attribute("viewBox", "0 0 " + width + " " + height)
        << attribute("font-family", "sans-serif") << attribute("fill-rule", "evenodd")
        << attribute("stroke-linejoin", "round") << ">\n";
    if (!title_.empty())
        out << "<title>" << escaped(title_) << "</title>\n";
    out << "<rect width=\"100%\" height=\"100%\" fill=\"#ffffff\"/>\n";
    for (Layers const layer : {eImageLayer, eOverlayLayer}) {
        out << "<g>\n";
        for (Element const& element : elements_) {
            if (element.style.layer == layer)
                writeElement(out, element, map);
        }
        out << "</g>\n";
    }
    out << "</svg>\n";
}
