// The outer hull of a boundary walk: loops are cut, inner ones dropped, touching ones joined.
#include "cntr/internal/region_loops.h"

#include "cntr/internal/linked_loops.h"

#include <cntr/region.h>

#include <memory>

namespace {

using Points = std::vector<qcVector<2>>;
using Loops = std::vector<std::unique_ptr<qcRegion const>>;

/// Whether the middle of the first edge of `loop` lies in another one.
bool liesInAnother(Loops const& loops, std::size_t loop)
{
    Points const& points = loops[loop]->points();
    qcVector<2> const middle = (points[0] + points[1]) / 2.0;
    for (std::size_t other = 0; other < loops.size(); ++other)
        if (other != loop && loops[other]->inside(middle, true))
            return true;
    return false;
}

void dropInnerLoops(qnInternal::LinkedLoops& linked)
{
    Loops loops;
    for (std::size_t i = 0; i < linked.loopCount(); ++i)
        loops.push_back(std::make_unique<qcRegion const>(linked.points(i), qcContourDefs::eIgnore));
    // A loop that lies in no other still lies in none when one is removed, so each is asked once.
    std::size_t i = 0;
    while (i < loops.size()) {
        if (!liesInAnother(loops, i)) {
            ++i;
            continue;
        }
        std::swap(loops[i], loops.back());
        loops.pop_back();
        linked.remove(i);
    }
}

}  // namespace

namespace qnInternal {

Points outermostLoops(Points const& boundary)
{
    LinkedLoops loops(boundary);
    loops.cutAtDoubleVertices();
    dropInnerLoops(loops);
    loops.joinToFirst();  // the others are joined among themselves, which nobody would see
    return loops.points(0);
}

}  // namespace qnInternal
