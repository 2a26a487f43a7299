// Figures before and after an operation.
#include "changes.h"

#include <cstdio>

namespace qnTool {

namespace {

/// Enough digits to compare by eye.
std::string shortNumber(double value)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.7g", value);
    return text;
}

std::string change(char const* what, double before, double after)
{
    return std::string(what) + " " + shortNumber(before) + " -> " + shortNumber(after);
}

}  // namespace

Figures figuresOf(qcRegion const& region)
{
    return {region.area(false), region.length(), region.holes().size()};
}

Figures figuresOf(qcRegionSet const& set)
{
    Figures figures;
    figures.area = set.area(false);
    for (auto const& region : set.regions()) {
        figures.length += region->length();
        figures.holes += region->holes().size();
    }
    return figures;
}

std::string changeText(Figures const& before, Figures const& after)
{
    return change("area", before.area, after.area) + ", " +
           change("length", before.length, after.length);
}

void warnOfLosses(Session& session, std::string const& place, Figures const& before,
                  Figures const& after)
{
    constexpr double kRounding = 1e-9;  // of the length; less than that is no loss
    double const lost = 1.0 - after.length / before.length;
    if (lost > kRounding) {
        char percent[32];
        std::snprintf(percent, sizeof percent, "%.3g %%", 100.0 * lost);
        session.note("warning: " + place + ": " + percent + " of the length did not come back");
    }
    if (after.holes < before.holes)
        session.note("warning: " + place + ": " + std::to_string(before.holes - after.holes) +
                     " of " + counted(before.holes, "hole") + " did not come back");
}

}  // namespace qnTool
