// Slabs halved at the ends of edges: in each, those that span it stand in order, and are asked about
// with one another and with those that end in it.
//
// An edge is taken for a strip, which holds it and all that is within reach of it. Two edges that meet
// have points p and q no further apart than `reach`. At the abscissa of p both strips go on to either
// side, and both hold p. On the way down to the slabs around it either one of them comes to span a slab,
// and is compared with the other there, or both end in the last slab, where all are compared with all.
#include "cntr/internal/close_edges.h"

#include "cntr/internal/box_hierarchy.h"
#include "cntr/internal/edge_walk.h"
#include "cntr/internal/tolerances.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <utility>
#include <vector>

namespace qnInternal {

namespace {

/// Up to so many edges that end in a slab are compared all with all (`self_crossing` of teeth in
/// bench/crossings_bench.cpp).
constexpr std::size_t kFewEdges = 16;

/// Beyond so many pairs for every edge, boxes are no worse.
constexpr std::size_t kMostPairsAnEdge = 64;

/// Some units in the last place of a coordinate, as a part of it.
constexpr double kUnitsInLastPlace = 1e-13;

/// From how low to how high something reaches at one abscissa.
struct Heights {
    double low;
    double high;
};

struct Slab {
    double begin;
    double end;
};

/// All points no further above or below a line than `half`, from `begin` to `end`.
struct Strip {
    double begin;
    double end;
    double x;
    double y;
    double slope;
    double half;

    Heights at(double place) const
    {
        double const middle = y + (place - x) * slope;
        return {middle - half, middle + half};
    }
    bool spans(Slab const& slab) const { return begin <= slab.begin && end >= slab.end; }
    bool isBeside(Slab const& slab) const { return end <= slab.begin || begin >= slab.end; }
};

/// The strip along an edge, or a level one where the edge is steep: whichever is thinner.
Strip stripOf(qcVector<2> const& from, qcVector<2> const& to, double reach)
{
    double const begin = std::min(from.x(), to.x()) - reach;
    double const end = std::max(from.x(), to.x()) + reach;
    double const height = std::fabs(to.y() - from.y());
    if (std::fabs(to.x() - from.x()) <= 2 * reach)
        return {begin, end, from.x(), 0.5 * (from.y() + to.y()), 0, 0.5 * height + reach};
    double const slope = (to.y() - from.y()) / (to.x() - from.x());
    return {begin, end, from.x(), from.y(), slope, reach * (1 + std::fabs(slope))};
}

/// What lies of a strip in a slab.
struct Piece {
    double begin;  // part of the slab's width
    double end;
    Heights atBegin;
    Heights atEnd;

    Piece(Strip const& strip, Slab const& slab)
    {
        double const first = std::max(strip.begin, slab.begin);
        double const last = std::min(strip.end, slab.end);
        begin = (first - slab.begin) / (slab.end - slab.begin);
        end = (last - slab.begin) / (slab.end - slab.begin);
        atBegin = strip.at(first);
        atEnd = strip.at(last);
    }
};

/// Strips that span a slab, from below to above. Each is kept as a box: its bounds in x are the heights at
/// the beginning of the slab, those in y the heights at the end. The box of several is a strip that holds
/// them all.
class SpanningStrips {
public:
    SpanningStrips(std::vector<Strip> const& strips, std::vector<std::uint32_t> const& numbers,
                   Slab const& slab)
        : boxes_(numbers.size())
    {
        double const middle = 0.5 * (slab.begin + slab.end);
        for (std::uint32_t const number : numbers)
            order_.emplace_back(strips[number].at(middle).low, number);
        std::sort(order_.begin(), order_.end());
        for (std::size_t i = 0; i < order_.size(); ++i) {
            Heights const first = strips[order_[i].second].at(slab.begin);
            Heights const last = strips[order_[i].second].at(slab.end);
            boxes_.lowest(i / BoxGroup::kSize)
                .set(i % BoxGroup::kSize, {{first.low, last.low}, {first.high, last.high}});
        }
        boxes_.addLevelsAbove();
    }

    /// Asks accepts(number) about the strips that a piece does not lie wholly above or below, until it
    /// accepts one; whether it did.
    template <class Accepts>
    bool anyAcross(Piece const& piece, Accepts const& accepts) const
    {
        bool found = false;
        boxes_.forEachBox(
            [&](BoxGroup const& boxes) { return found ? 0 : across(piece, boxes); },
            [&](std::size_t i, Box const&) { found = found || accepts(order_[i].second); });
        return found;
    }

private:
    static unsigned across(Piece const& piece, BoxGroup const& boxes)
    {
        return eightBits([&](std::size_t i) {
            Pair const low = pairAt(boxes.minX, i);
            Pair const high = pairAt(boxes.maxX, i);
            Pair const lowRise = pairAt(boxes.minY, i) - low;
            Pair const highRise = pairAt(boxes.maxY, i) - high;
            PairMask const above = bothHold(high + highRise * piece.begin < both(piece.atBegin.low),
                                            high + highRise * piece.end < both(piece.atEnd.low));
            PairMask const below = bothHold(low + lowRise * piece.begin > both(piece.atBegin.high),
                                            low + lowRise * piece.end > both(piece.atEnd.high));
            return ~eitherHolds(above, below);
        });
    }

    std::vector<std::pair<double, std::uint32_t>> order_;  // by how low they are in the middle
    BoxHierarchy boxes_;
};

class ClosePairSearch {
public:
    /// With one outline, pairs within it are asked for; with two, pairs of one edge of each.
    ClosePairSearch(std::vector<Outline> const& outlines, double scale, AcceptsPair const& accepts)
        : within_(outlines.size() == 1), accepts_(accepts)
    {
        // Edges that meet do so at a place within kOnSegment of both. Strips are rounded by as little as
        // that place.
        double const reach = 4 * kOnSegment + kUnitsInLastPlace * scale;
        for (std::size_t i = 0; i < outlines.size(); ++i) {
            mostPairs_ += kMostPairsAnEdge * outlines[i].edges();
            forEachEdge(outlines[i].points, outlines[i].closed,
                        [&](std::size_t, qcVector<2> const& from, qcVector<2> const& to) {
                            strips_[i].push_back(stripOf(from, to, reach));
                        });
        }
    }

    std::optional<bool> run()
    {
        Slab whole{0, 0};
        Sides all;
        for (std::size_t i = 0; i < strips_.size(); ++i)
            for (std::size_t k = 0; k < strips_[i].size(); ++k) {
                // Twice as far from 0 as any end, so that no edge spans it.
                whole.begin = std::min(whole.begin, 2 * strips_[i][k].begin);
                whole.end = std::max(whole.end, 2 * strips_[i][k].end);
                all[i].push_back(static_cast<std::uint32_t>(k));
            }
        bool const stopped = inSlab(whole, all);
        return pairs_ > mostPairs_ ? std::nullopt : std::optional(stopped);
    }

private:
    using Numbers = std::vector<std::uint32_t>;
    using Sides = std::array<Numbers, 2>;  // by outline

    /// Asks about edges that have an end strictly within a slab; whether to stop.
    bool inSlab(Slab const& slab, Sides const& ending)
    {
        if (!within_ && (ending[0].empty() || ending[1].empty()))
            return false;
        if (ending[0].size() + ending[1].size() <= kFewEdges)
            return anyOfAll(ending);
        double const middle = middleOfEnds(slab, ending);
        return inHalf({slab.begin, middle}, ending) || inHalf({middle, slab.end}, ending);
    }

    /// Among the ends of edges within the slab the one in the middle.
    double middleOfEnds(Slab const& slab, Sides const& ending) const
    {
        std::vector<double> ends;
        for (std::size_t i = 0; i < ending.size(); ++i)
            for (std::uint32_t const k : ending[i])
                for (double const end : {strips_[i][k].begin, strips_[i][k].end})
                    if (slab.begin < end && end < slab.end)
                        ends.push_back(end);
        auto const middle = ends.begin() + static_cast<std::ptrdiff_t>(ends.size() / 2);
        std::nth_element(ends.begin(), middle, ends.end());
        return *middle;
    }

    bool inHalf(Slab const& half, Sides const& edges)
    {
        Sides ending;
        {
            Sides spanning;
            for (std::size_t i = 0; i < edges.size(); ++i)
                for (std::uint32_t const k : edges[i])
                    if (!strips_[i][k].isBeside(half))
                        (strips_[i][k].spans(half) ? spanning : ending)[i].push_back(k);
            if (anyWithSpanning(half, spanning, ending))
                return true;
        }
        return inSlab(half, ending);
    }

    bool anyWithSpanning(Slab const& slab, Sides const& spanning, Sides const& ending)
    {
        for (std::size_t i = 0; i < spanning.size(); ++i) {
            std::size_t const other = within_ ? i : 1 - i;
            if (spanning[i].empty() || (spanning[other].empty() && ending[other].empty()))
                continue;
            SpanningStrips const strips(strips_[i], spanning[i], slab);
            auto const anyAcross = [&](std::uint32_t k, bool once) {
                return strips.anyAcross(Piece(strips_[other][k], slab), [&](std::uint32_t found) {
                    return !(once && found >= k) && accepted(i, found, k);
                });
            };
            for (std::uint32_t const k : ending[other])
                if (anyAcross(k, false))
                    return true;
            // Pairs that both span: of one outline either way round, of two once.
            if (within_ || i == 0)
                for (std::uint32_t const k : spanning[other])
                    if (anyAcross(k, within_))
                        return true;
        }
        return false;
    }

    bool anyOfAll(Sides const& edges)
    {
        for (std::size_t i = 0; i < edges[0].size(); ++i)
            for (std::size_t k = 0; k < (within_ ? i : edges[1].size()); ++k)
                if (accepted(0, edges[0][i], edges[within_ ? 0 : 1][k]))
                    return true;
        return false;
    }

    /// Asks about edge k of outline `side` and an edge of the other, or of the same if there is one;
    /// whether to stop.
    bool accepted(std::size_t side, std::uint32_t k, std::uint32_t other)
    {
        if (++pairs_ > mostPairs_)
            return true;
        return within_ ? accepts_(std::max(k, other), std::min(k, other))
                       : accepts_(side == 0 ? k : other, side == 0 ? other : k);
    }

    bool within_;
    AcceptsPair const& accepts_;
    std::array<std::vector<Strip>, 2> strips_;  // by outline
    std::size_t pairs_ = 0;                     // asked about
    std::size_t mostPairs_ = 0;
};

}  // namespace

std::optional<bool> anyClosePair(Outline const& outline, double scale, AcceptsPair const& accepts)
{
    return ClosePairSearch({outline}, scale, accepts).run();
}

std::optional<bool> anyClosePair(Outline const& outline, Outline const& other, double scale,
                                 AcceptsPair const& accepts)
{
    return ClosePairSearch({outline, other}, scale, accepts).run();
}

}  // namespace qnInternal
