// The colours and widths of pictures; everything is drawn by the foundation's surface.
#include "picture.h"

#include "files.h"

#include <sstream>

namespace qnTool {

namespace {

constexpr qcColor kInk(31, 41, 55);
constexpr qcColor kPaper(191, 219, 254);
constexpr qcColor kFormer(220, 38, 38);
constexpr qcColor kResult(21, 94, 117);
constexpr qcColor kResultFill(134, 239, 172);
constexpr qcColor kOther(180, 83, 9);
constexpr qcColor kInside(22, 101, 52);
constexpr qcColor kOutside(190, 24, 93);
constexpr qcColor kCurve(124, 58, 237);

qcSvgTablet::Style line(qcColor const& color, double width)
{
    qcSvgTablet::Style style;
    style.color = color;
    style.width = width;
    return style;
}

qcSvgTablet::Style filled(qcColor const& color, double width, qcColor const& fill, double opacity)
{
    auto style = line(color, width);
    style.filled = true;
    style.fillColor = fill;
    style.fillOpacity = opacity;
    return style;
}

std::vector<std::vector<qcVector<2>>> ringsOf(qcRegion const& region)
{
    std::vector<std::vector<qcVector<2>>> rings{region.points()};
    for (auto const& hole : region.holes())
        rings.push_back(hole->points());
    return rings;
}

}  // namespace

Picture::Picture(PictureOptions const& options, std::string const& title)
    : file_(options.file), tablet_(options.yDown ? qcSvgTablet::eYDown : qcSvgTablet::eYUp)
{
    tablet_.title(title);
}

void Picture::draw(Shape const& shape, qcSvgTablet::Style const& style)
{
    if (!wanted())
        return;
    if (shape.region.isNull())
        tablet_.polyline(shape.contour->points(), line(style.color, style.width));
    else
        tablet_.polygon(ringsOf(*shape.region), style);
}

void Picture::shape(Shape const& shape)
{
    draw(shape, filled(kInk, 1.2, kPaper, 0.8));
}

void Picture::original(Shape const& shape)
{
    auto style = line(kFormer, 1.0);
    style.layer = qcUITablet::eOverlayLayer;
    draw(shape, style);
}

void Picture::result(qcRegion const& region)
{
    if (!wanted())
        return;
    auto style = filled(kResult, 2.5, kResultFill, 0.5);
    style.layer = qcUITablet::eImageLayer;  // the former outline stays visible over it
    tablet_.polygon(ringsOf(region), style);
}

void Picture::other(Shape const& shape)
{
    draw(shape, line(kOther, 1.2));
}

void Picture::query(qcVector<2> const& point, qcVector<2> const& closest, bool inside)
{
    if (!wanted())
        return;
    qcColor const color = inside ? kInside : kOutside;
    tablet_.polyline({point, closest}, line(color, 1.0));
    tablet_.marker(closest, 2.5, color);
    tablet_.marker(point, 4.5, color);
}

void Picture::crossing(qcVector<2> const& point)
{
    if (wanted())
        tablet_.marker(point, 3.0, kFormer);
}

void Picture::ellipse(qcEllipse const& ellipse)
{
    constexpr int kSteps = 128;
    if (!wanted())
        return;
    std::vector<qcVector<2>> points;
    points.reserve(kSteps);
    for (int i = 0; i < kSteps; ++i)
        points.push_back(ellipse.pointAt(qcRadian(i * 2.0 * qnAngle::kPi / kSteps)));
    tablet_.polygon(points, line(kCurve, 0.8));
}

void Picture::center(qcVector<2> const& point)
{
    if (wanted())
        tablet_.marker(point, 2.5, kCurve);
}

void Picture::save() const
{
    if (!wanted())
        return;
    std::ostringstream out;
    tablet_.write(out);
    writeWhole(file_, out.str());
}

}  // namespace qnTool
