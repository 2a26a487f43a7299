// Cutting and joining of loops as linked vertices.
#include "cntr/internal/linked_loops.h"

#include "cntr/internal/ring_order.h"
#include "cntr/internal/tolerances.h"

#include <cntr/contour_defs.h>

#include <algorithm>
#include <iterator>
#include <set>

namespace qnInternal {

LinkedLoops::LinkedLoops(std::vector<qcVector<2>> const& walk)
    : walk_(walk), grid_(walk, kOnSegment), twins_(walk.size()), next_(walk.size()),
      previous_(walk.size()), loopOf_(walk.size(), 0), loops_{{0, walk.size()}}, order_{0}
{
    for (std::size_t i = 0; i < walk.size(); ++i)
        link(i, (i + 1) % walk.size());
    std::vector<int> near;
    for (int const vertex : grid_.inCompany()) {
        auto const i = static_cast<std::size_t>(vertex);
        grid_.findNear(walk, walk[i], near);
        std::copy_if(near.begin(), near.end(), std::back_inserter(twins_[i]),
                     [vertex](int twin) { return twin != vertex; });
    }
}

void LinkedLoops::link(std::size_t from, std::size_t to)
{
    next_[from] = to;
    previous_[to] = from;
}

std::size_t LinkedLoops::numberIn(Loop const& loop, std::size_t vertex) const
{
    // Loops keep the cyclic order of the walk, so the way round from their start counts them up.
    return (vertex + walk_.size() - loop.start) % walk_.size();
}

std::optional<std::size_t> LinkedLoops::firstTwin(std::size_t vertex, std::size_t loop) const
{
    std::optional<std::size_t> first;
    VertexGrid::Place cell{};
    for (int const candidate : twins_[vertex]) {
        auto const twin = static_cast<std::size_t>(candidate);
        if (loopOf_[twin] != loop)
            continue;
        auto const twinCell = grid_.cellOf(walk_[twin]);
        if (!first) {
            first = twin;
            cell = twinCell;
            continue;
        }
        // Cell by cell; in one cell the loop's own numbers decide, not the walk's.
        if (twinCell.column != cell.column || twinCell.row != cell.row)
            break;
        if (numberIn(loops_[loop], twin) < numberIn(loops_[loop], *first))
            first = twin;
    }
    return first;
}

std::optional<LinkedLoops::Pair> LinkedLoops::doubleVertex(Loop const& loop) const
{
    std::size_t vertex = loop.start;
    do {
        if (!twins_[vertex].empty())
            if (auto const twin = firstTwin(vertex, loopOf_[vertex]))
                return Pair{vertex, *twin};
        vertex = next_[vertex];
    } while (vertex != loop.start);
    return std::nullopt;
}

void LinkedLoops::cutAtDoubleVertices()
{
    // Loops before `place` have been found simple, and a cut changes none of them.
    for (std::size_t place = 0; place < order_.size(); ++place) {
        while (true) {
            Loop const& loop = loops_[order_[place]];
            if (loop.size < 2)
                throw qcContourDefs::EmptyContour();
            auto const found = doubleVertex(loop);
            if (!found)
                break;
            cut(place, *found);
        }
    }
}

void LinkedLoops::cut(std::size_t place, Pair const& at)
{
    std::size_t const number = order_[place];
    std::size_t const whole = loops_[number].size;
    // Counted from both ends at once, so that the shorter part decides the cost.
    std::size_t kept = 1;
    std::size_t keptEnd = next_[at.vertex];
    std::size_t cutEnd = next_[at.twin];
    while (keptEnd != at.twin && cutEnd != at.vertex) {
        keptEnd = next_[keptEnd];
        cutEnd = next_[cutEnd];
        ++kept;
    }
    bool const keptIsShorter = keptEnd == at.twin;
    if (!keptIsShorter)
        kept = whole - kept;

    std::size_t const beforeTwin = previous_[at.twin];
    std::size_t const beforeVertex = previous_[at.vertex];
    link(beforeTwin, at.vertex);
    link(beforeVertex, at.twin);
    std::size_t const added = loops_.size();
    Loop const keptLoop{at.vertex, kept};
    Loop const cutLoop{at.twin, whole - kept};
    loops_.push_back(keptIsShorter ? keptLoop : cutLoop);
    loops_[number] = keptIsShorter ? cutLoop : keptLoop;
    relabel(loops_[added].start, loops_[added].size, added);
    order_[place] = keptIsShorter ? added : number;
    order_.push_back(keptIsShorter ? number : added);
}

void LinkedLoops::relabel(std::size_t vertex, std::size_t count, std::size_t loop)
{
    for (std::size_t i = 0; i < count; ++i, vertex = next_[vertex])
        loopOf_[vertex] = loop;
}

std::vector<qcVector<2>> LinkedLoops::points(std::size_t place) const
{
    Loop const& loop = loops_[order_[place]];
    std::vector<qcVector<2>> points;
    points.reserve(loop.size);
    std::size_t vertex = loop.start;
    for (std::size_t i = 0; i < loop.size; ++i, vertex = next_[vertex])
        points.push_back(walk_[vertex]);
    return points;
}

void LinkedLoops::remove(std::size_t place)
{
    relabel(loops_[order_[place]].start, loops_[order_[place]].size, loops_.size());
    leaveList(place);
}

void LinkedLoops::leaveList(std::size_t place)
{
    order_[place] = order_.back();
    order_.pop_back();
}

/// The order of the vertices of the loop that others are joined to.
class LinkedLoops::FirstLoop {
public:
    FirstLoop(std::size_t start, std::size_t count, std::vector<std::size_t> const& next)
        : start_(start), ring_(count), numberOf_(next.size())
    {
        number(start, 0, count, next);
    }

    /// Whether one vertex comes before another from the start on.
    bool isBefore(std::size_t vertex, std::size_t other) const
    {
        std::size_t const start = numberOf_[start_];
        return ring_.way(start, numberOf_[vertex]) < ring_.way(start, numberOf_[other]);
    }

    /// Puts vertices that are linked from `vertex` on behind one of the loop, before a new start.
    void join(std::size_t behind, std::size_t vertex, std::size_t count, std::size_t start,
              std::vector<std::size_t> const& next)
    {
        std::size_t const begin = ring_.size();
        ring_.insertBehind(numberOf_[behind], count);
        number(vertex, begin, count, next);
        start_ = start;
    }

private:
    void number(std::size_t vertex, std::size_t begin, std::size_t count,
                std::vector<std::size_t> const& next)
    {
        for (std::size_t i = 0; i < count; ++i, vertex = next[vertex])
            numberOf_[vertex] = begin + i;
    }

    std::size_t start_;
    RingOrder ring_;
    std::vector<std::size_t> numberOf_;  // in the ring, by vertex
};

/// The loops that share a vertex with the first one, by their places in the list.
class LinkedLoops::TouchingLoops {
public:
    explicit TouchingLoops(LinkedLoops const& loops)
        : loops_(loops), placeOf_(loops.loops_.size() + 1, 0), sharedWith_(loops.loops_.size())
    {
        for (std::size_t place = 0; place < loops.order_.size(); ++place)
            placeOf_[loops.order_[place]] = place;
    }

    bool none() const { return places_.empty(); }
    std::size_t firstPlace() const { return *places_.begin(); }

    /// The first loop's vertices at which a loop touches it.
    std::vector<std::size_t> const& sharedWith(std::size_t loop) const { return sharedWith_[loop]; }

    /// Adds the loops that touch `count` vertices of the first one, linked from `vertex` on.
    void addAt(std::size_t vertex, std::size_t count)
    {
        for (std::size_t i = 0; i < count; ++i, vertex = loops_.next_[vertex])
            for (int const twin : loops_.twins_[vertex]) {
                std::size_t const loop = loops_.loopOf_[static_cast<std::size_t>(twin)];
                if (placeOf_[loop] == 0)
                    continue;
                places_.insert(placeOf_[loop]);
                sharedWith_[loop].push_back(vertex);
            }
    }

    /// Before the loop at a place leaves the list, where the last one takes its place.
    void leave(std::size_t place)
    {
        auto const& order = loops_.order_;
        std::size_t const last = order.size() - 1;
        places_.erase(place);
        if (places_.erase(last) > 0)
            places_.insert(place);
        placeOf_[order[last]] = place;
        placeOf_[order[place]] = 0;
    }

private:
    LinkedLoops const& loops_;
    std::vector<std::size_t> placeOf_;  // by loop; 0 for the first and for those that left the list
    std::set<std::size_t> places_;
    std::vector<std::vector<std::size_t>> sharedWith_;  // by loop
};

void LinkedLoops::joinToFirst()
{
    Loop& first = loops_[order_.front()];
    FirstLoop ring(first.start, first.size, next_);
    auto const isBefore = [&](std::size_t a, std::size_t b) { return ring.isBefore(a, b); };
    TouchingLoops touching(*this);
    touching.addAt(first.start, first.size);
    while (!touching.none()) {
        std::size_t const place = touching.firstPlace();
        std::size_t const joined = order_[place];
        std::size_t const count = loops_[joined].size;
        auto const& shared = touching.sharedWith(joined);
        std::size_t const vertex = *std::min_element(shared.begin(), shared.end(), isBefore);
        std::size_t const twin = *firstTwin(vertex, joined);
        std::size_t const beforeVertex = previous_[vertex];
        link(previous_[twin], vertex);
        link(beforeVertex, twin);
        relabel(twin, count, order_.front());
        ring.join(beforeVertex, twin, count, vertex, next_);
        first = {vertex, first.size + count};
        touching.leave(place);
        leaveList(place);
        touching.addAt(twin, count);
    }
}

}  // namespace qnInternal
