// Draws the pictures of the guides: outlines that cross themselves, each beside its regularised
// outline and its outer hull, and a containment ray that ends too soon. Takes the folder to write to.
#include <cntr/cntr.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Points = std::vector<qcVector<2>>;
using Style = qcSvgTablet::Style;

constexpr double kPi = 3.14159265358979323846;

constexpr qcColor kInk(60, 60, 60), kPale(205, 205, 205), kBlue(30, 90, 170),
    kBlueFill(190, 215, 245), kGreen(30, 120, 60), kGreenFill(195, 230, 200), kRed(200, 30, 30),
    kOrange(230, 130, 0);

Style line(qcColor const& color, double width)
{
    Style style;
    style.color = color;
    style.width = width;
    return style;
}

Style filled(qcColor const& color, qcColor const& fill)
{
    Style style = line(color, 2.5);
    style.filled = true;
    style.fillColor = fill;
    return style;
}

Points shifted(Points points, qcVector<2> const& by)
{
    for (auto& p : points)
        p += by;
    return points;
}

bool isVertex(Points const& outline, qcVector<2> const& p)
{
    return std::find(outline.begin(), outline.end(), p) != outline.end();
}

/// The outline with its corners cut at points that `original` lacks, its crossings, so that one sees
/// it turn there.
Points openedAtCrossings(Points const& outline, Points const& original, double cut)
{
    Points opened;
    std::size_t const n = outline.size();
    for (std::size_t i = 0; i < n; ++i) {
        qcVector<2> const& p = outline[i];
        if (isVertex(original, p)) {
            opened.push_back(p);
            continue;
        }
        for (qcVector<2> const& neighbour : {outline[(i + n - 1) % n], outline[(i + 1) % n]}) {
            double const length = std::min(cut, p.distance(neighbour) / 3);
            opened.push_back(p + (neighbour - p).unit() * length);
        }
    }
    return opened;
}

/// One picture: the outline, what regularize() makes of it and what outerHull() makes of it.
class Picture {
public:
    explicit Picture(Points const& outline) : outline_(outline)
    {
        qcRect const box = qcContour(outline).encloseRect(qcXform<2>());
        corner_ = box.origin().position();
        size_ = box.size();
        step_ = qcVector<2>(1.3 * std::max(size_.x(), 0.9 * size_.y()), 0);
    }

    void write(std::string const& path)
    {
        qcRegion const region(outline_, qcContourDefs::eIgnore);
        Style vertices = line(kInk, 1.5);
        tablet_.polygon(outline_, vertices);
        for (auto const& p : outline_)
            if (outline_.size() < 30)
                tablet_.marker(p, 3, kInk);
        caption("outline", 0, kInk);
        result(1, "regularised", filled(kBlue, kBlueFill),
               [&](qcRegion& to) { region.regularize(to); });
        result(2, "outer hull", filled(kGreen, kGreenFill),
               [&](qcRegion& to) { region.outerHull(to); });
        double const margin = 0.06 * step_.x();
        tablet_.frame(corner_ - qcVector<2>(margin, 0.22 * step_.x()),
                      corner_ + step_ * 2 +
                          qcVector<2>(std::max(size_.x(), 0.75 * step_.x()), size_.y()) +
                          qcVector<2>(margin, margin));
        std::ofstream file(path);
        tablet_.write(file);
        if (!file.flush())
            throw std::runtime_error(path + " cannot be written");
    }

private:
    void caption(std::string const& text, int panel, qcColor const& color)
    {
        qcVector<2> const below(0, -0.17 * step_.x());
        tablet_.label(corner_ + step_ * panel + below, text, color, 17);
    }

    template <class Make>
    void result(int panel, std::string const& name, Style const& style, Make const& make)
    {
        tablet_.polygon(shifted(outline_, step_ * panel), line(kPale, 1.5));
        qcRegion made(Points{}, qcContourDefs::eIgnore);
        try {
            make(made);
        } catch (qcContourDefs::BadParams const& error) {
            caption(name + ": " + error.what(), panel, kRed);
            return;
        } catch (qcContourDefs::EmptyContour const&) {
            caption(name + ": EmptyContour", panel, kRed);
            return;
        }
        caption(name, panel, style.color);
        Points const& points = made.points();
        tablet_.polygon(
            shifted(openedAtCrossings(points, outline_, 0.05 * step_.x()), step_ * panel), style);
        if (panel != 1 || points == outline_)
            return;
        tablet_.marker(points.back() + step_, 5, kOrange);  // the walk begins and ends here
        for (auto const& p : points)
            if (!isVertex(outline_, p))
                tablet_.marker(p, 4, kRed);
    }

    Points outline_;
    qcVector<2> corner_;
    qcVector<2> size_;
    qcVector<2> step_;
    qcSvgTablet tablet_{qcSvgTablet::eYUp, 900};
};

/// A curve that runs round twice and crosses itself three times; between the two passes of a crossing
/// each other crossing is passed once.
Points trefoil()
{
    Points points;
    for (int i = 0; i < 121; ++i) {
        double const t = 2 * kPi * i / 121;
        points.push_back(qcVector<2>(2 + std::cos(3 * t), qcRadian(2 * t)));
    }
    return points;
}

struct Shape {
    char const* name;
    Points outline;
};

std::vector<Shape> shapes()
{
    return {
        {"figure_eight", {{-6, -3}, {6, 3}, {6, -3}, {-6, 3}}},
        {"curl_inside", {{0, 0}, {12, 0}, {12, 8}, {5, 8}, {5, 5}, {7, 5}, {7, 10}, {0, 10}}},
        {"curl_outside", {{0, 0}, {6, 0}, {6, 8}, {8, 8}, {8, 6}, {0, 6}}},
        {"winds_twice", {{0, 0}, {12, 0}, {12, 10}, {2, 10}, {2, 2}, {10, 2}, {10, 8}, {0, 8}}},
        {"falls_apart", trefoil()},
        {"resting_vertex", {{0, 0}, {6, 0}, {6, 4}, {3, 0}, {0, 4}}},
        {"repeated_vertex", {{-6, -3}, {6, 3}, {6, -3}, {6, -3}, {-6, 3}}},
        {"shared_vertex", {{-6, -3}, {0, 0}, {6, 3}, {6, -3}, {0, 0}, {-6, 3}}},
        {"collinear_neighbours", {{-6, -3}, {6, 3}, {6, 0}, {6, -3}, {-6, 3}, {-6, 0}}},
        {"thin_lobes", {{0, 0}, {100, 0.95}, {200, -0.95}, {300, 0}, {200, 0.95}, {100, -0.95}}},
        {"pentagram", {{0, -10}, {6, 8}, {-9.5, -3}, {9.5, -3}, {-6, 8}}},
        {"endless_walk", {{3, 2}, {4, 3}, {1, 0}, {4, 4}, {4, 1}}},
    };
}

/// An outside point whose containment ray ends inside the outline.
void writeShortRay(std::string const& path)
{
    Points const outline{{0, 0}, {20, 3}, {6, 7}, {-14, 14}, {-17, -11}, {3, -20}};
    qcVector<2> const point(20, -19.5), end(-15.553, -0.11);
    qcSvgTablet tablet(qcSvgTablet::eYUp, 420);
    tablet.polygon(outline, filled(kInk, qcColor(235, 235, 235)));
    tablet.polyline({point, end}, line(kRed, 1.5));
    tablet.marker(outline[0], 4, kOrange);
    tablet.label({-11, -0.4}, "first vertex", kOrange, 13);
    tablet.marker(point, 4, kRed);
    tablet.label(point, "point", kRed, 13);
    tablet.marker(end, 3, kRed);
    tablet.frame({-20, -24}, {26, 17});
    std::ofstream file(path);
    tablet.write(file);
    if (!file.flush())
        throw std::runtime_error(path + " cannot be written");
}

}  // namespace

int main(int argc, char** argv)
try {
    if (argc != 2) {
        std::cerr << "usage: regularize_pictures FOLDER\n";
        return 2;
    }
    std::string const folder = argv[1];
    for (auto const& shape : shapes())
        Picture(shape.outline).write(folder + "/" + shape.name + ".svg");
    writeShortRay(folder + "/short_ray.svg");
} catch (std::exception const& error) {
    std::cerr << "regularize_pictures: " << error.what() << '\n';
    return 1;
}
