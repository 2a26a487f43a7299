// Outlines that cross themselves, cleaned: one comes back whole, the other does not. The length
// tells: a walk that comes back shorter than the outline has left a part of it out.
#include <cntr/cntr.h>

#include <iostream>

namespace {

void clean(char const* name, std::vector<qcVector<2>> const& points)
{
    qcRegion const drawn(points);
    qcRegion cleaned;
    drawn.regularize(cleaned);
    std::cout << name << (drawn.isSelfIntersecting() ? " crosses itself\n" : " is simple\n")
              << "  length " << drawn.length() << " -> " << cleaned.length() << ", area "
              << cleaned.area(false) << ", points " << points.size() << " -> "
              << cleaned.points().size() << '\n';
    if (cleaned.length() < 0.999 * drawn.length())
        std::cout << "  warning: this is not all of it\n";
}

}  // namespace

int main()
{
    // Length 19.3137 and all of it back, area 8: the crossing has become a vertex passed twice.
    clean("bow tie", {{0, 0}, {4, 4}, {4, 0}, {0, 4}});

    // Length 48, of which 16 come back: the walk turns around at every crossing and closes around
    // one of the pieces.
    clean("strips across each other",
          {{0, 0}, {10, 0}, {10, 2}, {2, 2}, {2, -4}, {4, -4}, {4, 6}, {0, 6}});

    // An outline without crossings is left alone: 8, 8, area 4.
    clean("square", {{0, 0}, {2, 0}, {2, 2}, {0, 2}});
}
