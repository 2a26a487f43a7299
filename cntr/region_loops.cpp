// The outer hull of a boundary walk: loops are cut, inner ones dropped, touching ones joined.
#include "cntr/internal/region_loops.h"

#include "cntr/internal/tolerances.h"

#include <cntr/region.h>

#include <optional>
#include <utility>

namespace {

using Points = std::vector<qcVector<2>>;

qcRegion loopOf(Points const& points)
{
    return qcRegion(points, qcContourDefs::eIgnore);
}

/// Appends `count` points of `from`, starting at `begin` and going round.
void appendRound(Points& to, Points const& from, std::size_t begin, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i)
        to.push_back(from[(begin + i) % from.size()]);
}

/// Two indices of one position: the first vertex that has another one there, and that other one.
std::optional<std::pair<std::size_t, std::size_t>> doubleVertex(qcRegion const& loop)
{
    for (std::size_t i = 0; i < loop.points().size(); ++i)
        for (int const j : loop.vertexIndex(loop.points()[i], qnInternal::kOnSegment))
            if (static_cast<std::size_t>(j) != i)
                return std::make_pair(i, static_cast<std::size_t>(j));
    return std::nullopt;
}

/// Cuts until no loop passes a vertex twice; what is cut off goes to the end of the list.
void cutAtDoubleVertices(std::vector<qcRegion>& loops)
{
    // Loops before `k` have been found simple, and a cut changes none of them.
    for (std::size_t k = 0; k < loops.size(); ++k)
        while (auto const found = doubleVertex(loops[k])) {
            auto const [i, j] = *found;
            Points const whole = loops[k].points();
            std::size_t const first = (j + whole.size() - i) % whole.size();
            Points kept;
            Points cutOff;
            appendRound(kept, whole, i, first);
            appendRound(cutOff, whole, j, whole.size() - first);
            loops[k] = loopOf(kept);
            loops.push_back(loopOf(cutOff));
        }
}

/// Whether the middle of the first edge of `loop` lies in another one.
bool liesInAnother(std::vector<qcRegion> const& loops, std::size_t loop)
{
    Points const& points = loops[loop].points();
    qcVector<2> const middle = (points[0] + points[1]) / 2.0;
    for (std::size_t other = 0; other < loops.size(); ++other)
        if (other != loop && loops[other].inside(middle, true))
            return true;
    return false;
}

void removeByLast(std::vector<qcRegion>& loops, std::size_t index)
{
    if (index + 1 != loops.size())
        loops[index] = loops.back();
    loops.pop_back();
}

void dropInnerLoops(std::vector<qcRegion>& loops)
{
    std::size_t i = 0;
    while (i < loops.size()) {
        if (liesInAnother(loops, i)) {
            removeByLast(loops, i);
            i = 0;  // in a list without that loop others may have become outer ones
        } else {
            ++i;
        }
    }
}

/// The first vertex of `loop` that `other` has too, and the index it has there.
std::optional<std::pair<std::size_t, std::size_t>> sharedVertex(qcRegion const& loop,
                                                                qcRegion const& other)
{
    for (std::size_t a = 0; a < loop.points().size(); ++a) {
        auto const found = other.vertexIndex(loop.points()[a], qnInternal::kOnSegment);
        if (!found.empty())
            return std::make_pair(a, static_cast<std::size_t>(found.front()));
    }
    return std::nullopt;
}

/// Joins loop `u` with the first later one that shares a vertex with it.
bool joinWithLater(std::vector<qcRegion>& loops, std::size_t u)
{
    for (std::size_t w = u + 1; w < loops.size(); ++w)
        if (auto const shared = sharedVertex(loops[u], loops[w])) {
            Points joined;
            appendRound(joined, loops[u].points(), shared->first, loops[u].points().size());
            appendRound(joined, loops[w].points(), shared->second, loops[w].points().size());
            loops[u] = loopOf(joined);
            removeByLast(loops, w);
            return true;
        }
    return false;
}

void joinTouchingLoops(std::vector<qcRegion>& loops)
{
    std::size_t u = 0;
    while (u + 1 < loops.size())
        u = joinWithLater(loops, u) ? 0 : u + 1;
}

}  // namespace

namespace qnInternal {

Points outermostLoops(Points const& boundary)
{
    std::vector<qcRegion> loops{loopOf(boundary)};
    cutAtDoubleVertices(loops);
    dropInnerLoops(loops);
    joinTouchingLoops(loops);
    return loops.front().points();
}

}  // namespace qnInternal
