// Where segments and contours meet a region: its outline first, then its holes in order.
#include <cntr/region.h>

#include "cntr/internal/box.h"

namespace {

/// The points that `meetings` gives for the outline, then those for each hole's outline.
template <class Meetings>
std::vector<qcVector<2>> outlineThenHoles(qcRegion const& region, bool considerHoles,
                                          Meetings meetings)
{
    std::vector<qcVector<2>> found = meetings(static_cast<qcContour const&>(region));
    if (!considerHoles)
        return found;
    for (auto const& hole : region.holes()) {
        auto const more = meetings(static_cast<qcContour const&>(*hole));
        found.insert(found.end(), more.begin(), more.end());
    }
    return found;
}

}  // namespace

std::vector<qcVector<2>> qcRegion::intersections(qcLineSeg const& segment, bool touchingEnds,
                                                 bool considerHoles)
{
    return crossings(segment, touchingEnds, considerHoles);
}

std::vector<qcVector<2>> qcRegion::intersections(qcContour const& other, bool considerHoles)
{
    return crossings(other, considerHoles);
}

std::vector<qcVector<2>> qcRegion::crossings(qcLineSeg const& segment, bool touchingEnds,
                                             bool considerHoles) const
{
    return outlineThenHoles(*this, considerHoles, [&](qcContour const& contour) {
        return contour.intersections(segment, touchingEnds);
    });
}

std::vector<qcVector<2>> qcRegion::crossings(qcContour const& other, bool considerHoles) const
{
    return outlineThenHoles(*this, considerHoles,
                            [&](qcContour const& contour) { return contour.intersections(other); });
}

bool qcRegion::outlineMeets(qcRegion const& other) const
{
    // Boxes that are apart, where every coordinate can be compared, leave nothing to ask.
    if (hasOutlineBox() && other.hasOutlineBox() &&
        !qnInternal::overlap({bounds().min, bounds().max},
                             {other.bounds().min, other.bounds().max}))
        return false;
    return !crossings(other, false).empty();
}

bool qcRegion::hasOutlineBox() const
{
    return points().size() >= 2 && bounds().finite;
}

std::optional<qnInternal::Box> qcRegion::outlineBox() const
{
    if (!hasOutlineBox())
        return std::nullopt;
    return qnInternal::Box{bounds().min, bounds().max};
}
