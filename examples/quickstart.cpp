// A plate, measured.
#include <cntr/cntr.h>

#include <iostream>

int main()
{
    std::vector<qcVector<2>> const corners{{0, 0}, {40, 0}, {40, 30}, {0, 30}};

    qcContour const outline(corners);
    std::cout << outline.length() << '\n';                                // 140
    std::cout << outline.diameter(qcContourDefs::eFarthestPair) << '\n';  // 50
    std::cout << outline.distToPoint({50, 10}, false) << '\n';            // 10
    qcLineSeg const ray(qcVector<2>(-5, 10), qcVector<2>(45, 10));
    for (qcVector<2> const& p : outline.intersections(ray, true))
        std::cout << p.x() << ' ' << p.y() << '\n';  // 0 10, then 40 10

    qcRegion plate(corners);
    std::cout << plate.area(false) << '\n';  // 1200
    qcVector<2> const center = plate.centerOfMass(false);
    std::cout << center.x() << ' ' << center.y() << '\n';                                 // 20 15
    std::cout << plate.inside({10, 10}, false) << plate.inside({50, 10}, false) << '\n';  // 10
}
