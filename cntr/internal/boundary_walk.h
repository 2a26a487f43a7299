/// The walk along the outer boundary of an outline that crosses itself.
#pragma once

#include "cntr/internal/edge_hits.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace qnInternal {

/// Where a boundary walk stands: at `point`, on the way to or from the vertex `next`.
struct WalkState {
    qcVector<2> point;
    long next;
    bool forward;
    bool isAtVertex;  // the one behind: the edge lies ahead as a whole
};

/// The same state bit for bit in its meaning: one that comes again comes again for ever. NaN is
/// taken to equal itself, so that a walk through such vertices is seen to repeat as well.
inline bool sameState(WalkState const& a, WalkState const& b)
{
    auto const same = [](double u, double v) { return u == v || (u != u && v != v); };
    return a.next == b.next && a.forward == b.forward && same(a.point.x(), b.point.x()) &&
           same(a.point.y(), b.point.y());
}

/// Takes one step: to the first crossing on the way, where the walk turns onto the crossed edge and
/// reverses its direction, or else to the vertex ahead.
///
/// `firstCrossing(from, to, edge)` points to the first crossing of the outline strictly between two
/// points on the way along an edge, numbered as that of a closed outline; null where there is none.
/// `isClear(edge)` may say sooner that there is none on the whole edge.
template <class IsClear, class FirstCrossing>
void stepAlong(std::vector<qcVector<2>> const& outline, WalkState& state, IsClear const& isClear,
               FirstCrossing const& firstCrossing)
{
    auto const last = static_cast<long>(outline.size()) - 1;
    long const before = state.next == 0 ? last : state.next - 1;
    long const behind = state.next == last ? 0 : state.next + 1;
    qcVector<2> const& target =
        outline[static_cast<std::size_t>(state.forward ? state.next : before)];
    if (!state.isAtVertex || !isClear(state.next)) {
        if (EdgeHit const* const hit = firstCrossing(state.point, target, state.next)) {
            state = {hit->point, hit->edge, !state.forward, false};
            return;
        }
        state.isAtVertex = true;
    }
    state.point = target;
    state.next = state.forward ? behind : before;
}

/// The points met on the way from vertex `start`, first towards vertex start + 1, until the walk is
/// back at its first point exactly; that point is the last one. Nothing for a walk that comes back
/// to a state it was in without meeting its first point: it would never end.
template <class IsClear, class FirstCrossing>
std::optional<std::vector<qcVector<2>>> walkBoundary(std::vector<qcVector<2>> const& outline,
                                                     long start, IsClear const& isClear,
                                                     FirstCrossing const& firstCrossing)
{
    qcVector<2> const first = outline[static_cast<std::size_t>(start)];
    WalkState state{first, start + 1, true, true};
    std::vector<qcVector<2>> walked;
    walked.reserve(outline.size() + outline.size() / 16 + 16);  // some for crossings
    // One remembered state suffices to see a repetition, if it is renewed ever more rarely.
    WalkState remembered = state;
    std::size_t renewAt = 2;
    do {
        stepAlong(outline, state, isClear, firstCrossing);
        walked.push_back(state.point);
        if (state.point == first)
            return walked;
        if (sameState(state, remembered))
            return std::nullopt;
        if (walked.size() == renewAt) {
            remembered = state;
            renewAt *= 2;
        }
    } while (true);
}

}  // namespace qnInternal
