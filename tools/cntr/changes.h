/// What an operation did to outlines, in figures for messages.
#pragma once

#include "session.h"

#include <cntr/cntr.h>

#include <cstddef>
#include <string>

namespace qnTool {

struct Figures {
    double area = 0.0;
    double length = 0.0;
    std::size_t holes = 0;
};

Figures figuresOf(qcRegion const& region);
Figures figuresOf(qcRegionSet const& set);

/// `area 4 -> 3, length 10 -> 9`
std::string changeText(Figures const& before, Figures const& after);

/// Warns where less of the length, or fewer holes, came back than went in.
void warnOfLosses(Session& session, std::string const& place, Figures const& before,
                  Figures const& after);

}  // namespace qnTool
