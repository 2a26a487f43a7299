// Stretches of one outline against leaves of the other's index, then edges against edges.
#include "cntr/internal/outline_meetings.h"

#include "cntr/internal/box_of_points.h"
#include "cntr/internal/close_edges.h"
#include "cntr/internal/edge_hits.h"
#include "cntr/internal/tolerances.h"

#include <qc/core/internal/extremes.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <optional>
#include <utility>

namespace qnInternal {

namespace {

/// Beyond so many comparisons with runs for every edge, and so many more a meeting, boxes are of too
/// little use (`outline_x_outline` of teeth in bench/crossings_bench.cpp; a comb takes fewer than two).
constexpr std::size_t kMostRunsAnEdge = 16;
constexpr std::size_t kMoreRunsAMeeting = 4;
constexpr std::size_t kUnlimited = std::size_t{1} << 30;  // times edges it does not overflow

HitQuery queryOf(Outline const& others, std::size_t other)
{
    return {edgeStart(others.points, others.closed, other),
            edgeEnd(others.points, others.closed, other), true};
}

/// meetings() where boxes are of no use. Nothing where `others` is not regular, and where so many edges
/// come close to each other that boxes are no worse. `scale` bounds the coordinates of `outline`.
[[gnu::noinline]] std::optional<std::vector<qcVector<2>>>
meetingsOfClosePairs(Outline const& outline, Outline const& others, double scale)
{
    PointBox const all = boxOfPoints(others.points);
    if (!all.finite || largestCoordinate(all.box) > kLargestRegular)
        return std::nullopt;
    using Meeting = std::pair<std::size_t, EdgeHit>;  // with the other outline's edge
    std::vector<Meeting> met;
    auto const keep = [&](std::size_t k, std::size_t other) {
        if (auto const point = queryOf(others, other)
                                   .meets(edgeStart(outline.points, outline.closed, k),
                                          edgeEnd(outline.points, outline.closed, k)))
            met.push_back({other, {*point, static_cast<int>(k)}});
        return false;
    };
    if (!anyClosePair(outline, others, std::max(scale, largestCoordinate(all.box)), keep))
        return std::nullopt;
    auto const key = [](Meeting const& meeting) {
        return std::make_pair(meeting.first, meeting.second.edge);
    };
    std::sort(met.begin(), met.end(),
              [&](Meeting const& a, Meeting const& b) { return key(a) < key(b); });
    std::vector<qcVector<2>> found;
    std::vector<EdgeHit> along;
    for (std::size_t i = 0; i < met.size(); ++i) {
        if (i == 0 || key(met[i - 1]) != key(met[i]))
            along.push_back(met[i].second);
        if (i + 1 < met.size() && met[i + 1].first == met[i].first)
            continue;
        queryOf(others, met[i].first).sortAlong(along);
        for (auto const& hit : along)
            found.push_back(hit.point);
        along.clear();
    }
    return found;
}

/// The hits of the edges of a stretch: one list, in which those of an edge are a chain.
class StretchHits {
public:
    static constexpr std::size_t kMostEdges = 64;  // a bit each

    void add(std::size_t other, EdgeHit const& hit)
    {
        if (hits_.capacity() == 0)
            hits_.reserve(kMostlyEnough);
        std::uint64_t const bit = std::uint64_t{1} << other;
        hits_.push_back({hit, others_ & bit ? last_[other] : kNone});
        last_[other] = hits_.size() - 1;
        others_ |= bit;
    }

    /// Calls visit(other, hits) for every edge that has hits, in ascending order; then forgets them.
    template <class Visit>
    void takeAll(Visit const& visit)
    {
        for (; others_ != 0; others_ &= others_ - 1) {
            auto const other = static_cast<std::size_t>(__builtin_ctzll(others_));
            ofOne_.clear();
            for (std::size_t i = last_[other]; i != kNone; i = hits_[i].before)
                ofOne_.push_back(hits_[i].hit);
            visit(other, ofOne_);
        }
        hits_.clear();
    }

private:
    struct ChainedHit {
        EdgeHit hit;
        std::size_t before;  // of the same edge
    };
    static constexpr std::size_t kMostlyEnough = 32;
    static constexpr std::size_t kNone = std::numeric_limits<std::size_t>::max();

    std::vector<ChainedHit> hits_;
    std::uint64_t others_ = 0;                    // bits of the edges with hits
    std::array<std::size_t, kMostEdges> last_{};  // of each such edge
    std::vector<EdgeHit> ofOne_;
};

class MeetingSearch {
public:
    MeetingSearch(Outline const& outline, EdgeIndex const* index, Outline const& others,
                  std::size_t mostAnEdge)
        : outline_(outline), index_(index), others_(others), mostAnEdge_(mostAnEdge)
    {
    }

    /// Nothing where the comparisons become too many.
    std::optional<std::vector<qcVector<2>>> run()
    {
        std::size_t const count = others_.edges();
        std::size_t const inAdvance = count / 8;  // what begins with more mostly goes on like that
        for (std::size_t begin = 0; begin < count; begin += kStretch) {
            std::size_t const end = std::min(begin + kStretch, count);
            lookAt(begin, end);
            if (comparisons_ > mostAnEdge_ * (end + inAdvance) + kMoreRunsAMeeting * found_.size())
                return std::nullopt;
        }
        return std::move(found_);
    }

private:
    // A bit of 64 for every edge of a stretch, a bit of 8 for every edge of a run.
    static constexpr std::size_t kRun = BoxGroup::kSize;
    static constexpr std::size_t kStretch = kRun * kRun;
    static_assert(kStretch <= StretchHits::kMostEdges);

    /// Takes the meetings of the other outline's edges [begin, end).
    void lookAt(std::size_t begin, std::size_t end)
    {
        begin_ = begin;
        end_ = end;
        for (auto& boxes : boxes_)
            boxes.reset();
        bool const finite = takeRuns();
        if (!finite && end - begin > 1) {
            for (std::size_t k = begin; k < end; ++k)
                lookAt(k, k + 1);
            return;
        }
        if (!finite)
            lookAtAll();
        else if (index_)
            lookAtLeaves();
        else
            lookAtFew();
        takeHits();
    }

    /// Makes the boxes of the runs and that of all; whether every coordinate is finite.
    bool takeRuns()
    {
        runs_ = BoxGroup();
        whole_ = noExtent();
        qcVector<2> from = edgeStart(others_.points, others_.closed, begin_);
        qcVector<2> const* to = &edgeEnd(others_.points, others_.closed, begin_);
        Pair zeroIfFinite{};
        for (std::size_t run = 0; begin_ + run * kRun < end_; ++run) {
            std::size_t const count = endOf(run) - (begin_ + run * kRun);
            Extremes const ends = extremesFrom(from, to, count);
            zeroIfFinite *= ends.zeroIfFinite;
            Extent const extent{ends.low, ends.high};
            runs_.set(run, extent.box());
            enclose(whole_, extent);
            to += count;
            from = to[-1];
        }
        return zeroIfFinite[0] == 0 && zeroIfFinite[1] == 0;
    }

    std::size_t endOf(std::size_t run) const { return std::min(begin_ + (run + 1) * kRun, end_); }

    /// Not inlined: the loop over the runs would lose its registers.
    [[gnu::noinline]] void lookAtLeaves()
    {
        TwiceBox const whole(whole_.box());
        index_->forEachLeaf([&](BoxGroup const& boxes) { return boxes.overlapping(whole); },
                            [&](std::size_t leaf, Box const& box) {
                                if (unsigned const runs = runs_.overlapping(box))
                                    lookAtLeaf(leaf, runs);
                            });
    }

    void lookAtLeaf(std::size_t leaf, unsigned runs)
    {
        std::size_t const begin = index_->leafBegin(leaf);
        lookAtEdges(begin, boxesOfEdges(outline_, begin, index_->leafEnd(leaf)), runs);
    }

    void lookAtFew()
    {
        std::size_t const count = outline_.edges();
        for (std::size_t begin = 0; begin < count; begin += BoxGroup::kSize) {
            auto const end = std::min(begin + BoxGroup::kSize, count);
            BoxGroup const edges = boxesOfEdges(outline_, begin, end);
            lookAtEdges(begin, edges, runs_.overlapping(edges.all()));
        }
    }

    /// Looks at up to eight edges, with the runs whose boxes overlap that of all.
    void lookAtEdges(std::size_t begin, BoxGroup const& edges, unsigned runs)
    {
        forEachBit(runs, [&](std::size_t run) {
            unsigned const near = edges.overlapping(runs_.box(run));
            if (near == 0)
                return;
            BoxGroup const& others = edgeBoxes(run);
            forEachBit(near, [&](std::size_t i) {
                ++comparisons_;
                forEachBit(others.overlapping(edges.box(i)),
                           [&](std::size_t other) { look(run * kRun + other, begin + i); });
            });
        });
    }

    /// The boxes of the edges of a run.
    BoxGroup const& edgeBoxes(std::size_t run)
    {
        if (!boxes_[run])
            boxes_[run] = boxesOfEdges(others_, begin_ + run * kRun, endOf(run));
        return *boxes_[run];
    }

    /// For an edge that no box tells the place of.
    void lookAtAll()
    {
        if (index_ && !overlap(index_->rootBox(), query(0).box()))
            return;
        for (std::size_t k = 0; k < outline_.edges(); ++k)
            look(0, k);
    }

    HitQuery query(std::size_t other) const { return queryOf(others_, begin_ + other); }

    /// Keeps the meeting of an edge of the stretch with edge k, if there is one.
    void look(std::size_t other, std::size_t k)
    {
        auto const point = query(other).meets(edgeStart(outline_.points, outline_.closed, k),
                                              edgeEnd(outline_.points, outline_.closed, k));
        if (point)
            hits_.add(other, {*point, static_cast<int>(k)});
    }

    /// Appends the hits of the stretch, and forgets them.
    void takeHits()
    {
        hits_.takeAll([&](std::size_t other, std::vector<EdgeHit>& hits) {
            query(other).sortAlong(hits);
            for (auto const& hit : hits)
                found_.push_back(hit.point);
        });
    }

    Outline outline_;
    EdgeIndex const* index_;
    Outline others_;
    std::size_t begin_ = 0;  // the stretch
    std::size_t end_ = 0;
    std::size_t comparisons_ = 0;  // of edges with runs
    std::size_t mostAnEdge_;       // of the other outline
    BoxGroup runs_;
    Extent whole_ = noExtent();
    std::array<std::optional<BoxGroup>, kRun> boxes_;  // of the edges, by run
    StretchHits hits_;
    std::vector<qcVector<2>> found_;
};

}  // namespace

std::vector<qcVector<2>> meetings(Outline const& outline, EdgeIndex const* index,
                                  Outline const& others)
{
    std::size_t const most =
        index && others.edges() > 0
            ? kMostRunsAnEdge * (outline.edges() + others.edges()) / others.edges()
            : kUnlimited;
    auto found = MeetingSearch(outline, index, others, most).run();
    if (!found)
        found = meetingsOfClosePairs(outline, others, index->scale());
    if (!found)
        found = MeetingSearch(outline, index, others, kUnlimited).run();
    return std::move(*found);
}

}  // namespace qnInternal
