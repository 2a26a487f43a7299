// Outlines that cross, joined into one that runs around all of them.
#include "cntr/region_splice.h"

#include "cntr/internal/edge_hits.h"
#include "cntr/internal/edge_index.h"
#include "cntr/internal/edge_walk.h"
#include "cntr/internal/tolerances.h"

#include <qc/core/compare.h>

#include <algorithm>

namespace {

using qnInternal::Box;

/// Asks `accepts(k)` about the edges near `place` until it accepts one; all edges are near it where there
/// is no index.
template <class Accepts>
bool anyNear(std::size_t edgeCount, qnInternal::EdgeIndex const* index, Box const& place,
             Accepts const& accepts)
{
    if (index)
        return index->anyEdgeNear(qnInternal::TwiceBox(place), accepts);
    for (std::size_t k = 0; k < edgeCount; ++k)
        if (accepts(k))
            return true;
    return false;
}

Box boxOfEdge(qcVector<2> const& from, qcVector<2> const& to)
{
    Box box = qnInternal::boxOf(from);
    enclose(box, to);
    return box;
}

bool holds(Box const& outer, Box const& inner)
{
    return outer.min.x() <= inner.min.x() && outer.min.y() <= inner.min.y() &&
           outer.max.x() >= inner.max.x() && outer.max.y() >= inner.max.y();
}

}  // namespace

qcRegion::SplicedOutline::SplicedOutline(qcRegion const& first)
    : points_(first.points()), ring_(points_.size()), members_{{&first, 0, 0, {}}},
      memberOf_(points_.size(), 0), finite_(first.hasOutlineBox())
{
}

std::size_t qcRegion::SplicedOutline::numberOf(Member const& member, std::size_t vertex) const
{
    std::size_t const count = member.region->points().size();
    return member.firstNumber + (vertex + count - member.firstVertex) % count;
}

std::vector<std::size_t>
qcRegion::SplicedOutline::edgesNear(qcRegion const& other,
                                    std::vector<std::size_t> const& members) const
{
    std::vector<std::size_t> near;
    auto const place = finite_ ? other.outlineBox() : std::nullopt;
    auto const addNear = [&](std::size_t number) {
        if (!place || qnInternal::edgeOverlaps(edgeStart(number), points_[number], *place))
            near.push_back(number);
    };
    if (place) {
        for (std::size_t const number : members) {
            Member const& member = members_[number];
            anyNear(member.region->points().size(), member.region->edgeIndex(), *place,
                    [&](std::size_t k) {
                        addNear(numberOf(member, k));
                        return false;
                    });
            member.parts.forEachNear(*place, addNear);
        }
        loose_.forEachNear(*place, addNear);
    } else {
        for (std::size_t number = 0; number < points_.size(); ++number)
            addNear(number);
    }
    std::sort(near.begin(), near.end(), [&](std::size_t a, std::size_t b) {
        return ring_.way(start_, a) < ring_.way(start_, b);
    });
    near.erase(std::unique(near.begin(), near.end()), near.end());
    return near;
}

bool qcRegion::SplicedOutline::isMetBy(qcRegion const& other,
                                       std::vector<std::size_t> const& edges) const
{
    auto const& others = other.points();
    auto const* const index = finite_ ? other.edgeIndex() : nullptr;
    return std::any_of(edges.begin(), edges.end(), [&](std::size_t number) {
        qcVector<2> const& from = edgeStart(number);
        qcVector<2> const& to = points_[number];
        return anyNear(others.size(), index, boxOfEdge(from, to), [&](std::size_t k) {
            qnInternal::HitQuery const query(qnInternal::edgeStart(others, true, k), others[k],
                                             true);
            return query.meets(from, to).has_value();
        });
    });
}

qcRegion::SplicedOutline::Crossing
qcRegion::SplicedOutline::firstCrossing(qcRegion const& other,
                                        std::vector<std::size_t> const& edges) const
{
    std::vector<int> met;
    for (std::size_t const number : edges) {
        qcVector<2> const& from = edgeStart(number);
        qcVector<2> const& to = points_[number];
        if (qfRealEq(from, to, qnInternal::kSamePoint))
            continue;
        auto const found = other.qcContour::intersections(qcLineSeg(from, to), met, true);
        if (!found.empty())
            return {found.front(), number, static_cast<std::size_t>(met.front())};
    }
    throw qcContourDefs::BadParams(L"spliced regions do not intersect");
}

std::optional<Box> qcRegion::SplicedOutline::splice(qcRegion const& other, Crossing const& at)
{
    auto const& others = other.points();
    auto const first = others.begin() + static_cast<std::ptrdiff_t>(at.otherEdge);
    std::size_t const enters = points_.size();
    std::size_t const leaves = enters + others.size() + 1;
    points_.push_back(at.point);
    points_.insert(points_.end(), first, others.end());
    points_.insert(points_.end(), others.begin(), first);
    points_.push_back(at.point);
    ring_.insertBehind(ring_.previous(at.vertex), others.size() + 2);
    std::size_t const cut = memberOf_[at.vertex];
    std::size_t const spliced = members_.size();
    members_.push_back({&other, enters + 1, at.otherEdge, {}});
    memberOf_.push_back(cut);
    memberOf_.resize(points_.size(), spliced);
    start_ = leaves;
    auto added = other.outlineBox();
    finite_ = finite_ && added;
    addPart(cut, enters, added);
    addPart(cut, at.vertex, added);
    addPart(spliced, enters + 1, added);
    addPart(spliced, leaves, added);
    return finite_ ? added : std::nullopt;
}

void qcRegion::SplicedOutline::addPart(std::size_t member, std::size_t number,
                                       std::optional<Box>& added)
{
    auto const boxOf = [&](std::size_t part) { return boxOfEdge(edgeStart(part), points_[part]); };
    Box const box = boxOf(number);
    members_[member].parts.add(number, boxOf);
    auto const whole = members_[member].region->outlineBox();
    if (!added || !whole || holds(*whole, box))
        return;
    loose_.add(number, boxOf);
    enclose(*added, box.min);
    enclose(*added, box.max);
}

std::vector<qcVector<2>> qcRegion::SplicedOutline::points() const
{
    std::vector<qcVector<2>> points;
    points.reserve(points_.size());
    for (std::size_t i = 0, number = start_; i < points_.size(); ++i, number = ring_.next(number))
        points.push_back(points_[number]);
    return points;
}
