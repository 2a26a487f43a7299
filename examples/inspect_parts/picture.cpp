// The parts over their photograph.
#include "report.h"

#include <algorithm>
#include <ostream>
#include <string>

void writePicture(std::ostream& out, std::string const& href, Image const& photograph,
                  TypedSet const& set, std::vector<Measures> const& all)
{
    constexpr double kEnlarged = 4;
    qcColor const ticks(255, 214, 0), cut(255, 64, 64), text(120, 220, 255);
    qcVector<2> const corner(-0.5, -0.5);
    qcVector<2> const opposite(photograph.width() - 0.5, photograph.height() - 0.5);

    qcSvgTablet tablet(qcSvgTablet::eYDown,
                       kEnlarged * std::max(photograph.width(), photograph.height()));
    tablet.title("Parts and their edge points");
    tablet.frame(corner, opposite);
    tablet.image(href, corner, opposite);
    set.draw(tablet, ticks, qcUITablet::eOverlayLayer);
    for (Measures const& m : all) {
        tablet.marker(m.centroid, 3, text);
        // On the ground beside the part, where it can be read.
        double const radius = m.farthestPair / 2;
        tablet.label(m.centroid + qcVector<2>(0.72 * radius, -0.76 * radius),
                     std::to_string(m.label), m.touchesBorder ? cut : text, 22);
    }
    tablet.write(out);
}
