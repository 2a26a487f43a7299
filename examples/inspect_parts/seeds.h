// The rough masks of the parts, from which the search for their edges starts.
#pragma once

#include "find_parts.h"

/// One list of pixel centres a part; what a part encloses belongs to it.
std::vector<std::vector<qcVector<2>>> findSeeds(Image const& smooth, PartSettings const& settings);
