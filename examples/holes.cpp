// A plate: a region with two holes, one of which holds an island.
#include <cntr/cntr.h>

#include <iostream>

namespace {

std::vector<qcVector<2>> square(double left, double top, double side)
{
    return {{left, top}, {left + side, top}, {left + side, top + side}, {left, top + side}};
}

}  // namespace

int main()
{
    qcPtrHandle<qcRegion> const window(new qcRegion(square(2, 2, 6)));
    qcPtrHandle<qcRegion> const slot(new qcRegion(square(12, 4, 3)));
    qcPtrHandle<qcRegion> const island(new qcRegion(square(4, 4, 2)));
    window->holes(std::vector<qcPtrHandle<qcRegion>>{island});

    qcRegion plate(square(0, 0, 20));
    plate.holes(std::vector<qcPtrHandle<qcRegion>>{window, slot});

    // Areas and centres look at the holes, not at the holes' holes.
    std::cout << plate.area(false) << ' ' << plate.area(true) << '\n';  // 400 355
    std::cout << plate.centerOfMass(true).x() << '\n';                  // 10.4183

    // Containment looks all the way down: plate, window, island in the window.
    std::cout << plate.inside({1, 1}, true);          // 1
    std::cout << plate.inside({3, 3}, true);          // 0
    std::cout << plate.inside({5, 5}, true) << '\n';  // 1

    // Distance to the nearest border, the holes' included.
    std::cout << plate.distToPoint({10, 5}, false, true, false) << '\n';  // 2

    // A hole that meets the outline is refused, and the holes stay as they were.
    try {
        plate.holes(std::vector<qcPtrHandle<qcRegion>>{
            qcPtrHandle<qcRegion>(new qcRegion(square(15, 15, 10)))});
    } catch (qcContourDefs::BadParams const& error) {
        std::cout << error.what() << '\n';          // holes cannot intersect region
        std::cout << plate.holes().size() << '\n';  // 2
    }
}
