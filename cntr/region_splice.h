/// The outline of a region while others are spliced into it, one after the other.
///
/// Spliced points are linked in a ring, not copied. Every edge is one of a region that was spliced, or
/// a part of one, cut where others were spliced in: so those near another outline are found with the
/// regions' own indexes and trees of the parts. Merging costs about what points and crossings do, where the
/// boxes of few edges overlap without their meeting.
#pragma once

#include "cntr/internal/growing_boxes.h"
#include "cntr/internal/ring_order.h"

#include <cntr/region.h>

#include <cstddef>
#include <optional>
#include <vector>

class qcRegion::SplicedOutline {
public:
    /// Where an outline meets this one first: on its edge `otherEdge`, and on the edge here that ends
    /// at a vertex.
    struct Crossing {
        qcVector<2> point;
        std::size_t vertex;
        std::size_t otherEdge;
    };

    /// All regions live as long as this object; `first` is member 0.
    explicit SplicedOutline(qcRegion const& first);

    /// The ends of the edges whose boxes overlap that of another outline, in the order of the outline.
    /// `members` holds those whose own boxes do, at least.
    std::vector<std::size_t> edgesNear(qcRegion const& other,
                                       std::vector<std::size_t> const& members) const;

    /// Whether one of the other's edges meets one of `edges`.
    bool isMetBy(qcRegion const& other, std::vector<std::size_t> const& edges) const;

    /// The first meeting of the first of `edges` that meets the other outline. Throws
    /// qcContourDefs::BadParams where none does.
    Crossing firstCrossing(qcRegion const& other, std::vector<std::size_t> const& edges) const;

    /// Makes the outline run once around itself from the crossing on, and then once around the other.
    /// The other becomes the next member. Gives the box of all that was added; nothing where not all is
    /// finite.
    std::optional<qnInternal::Box> splice(qcRegion const& other, Crossing const& at);

    /// The points from the crossing of the last splice on.
    std::vector<qcVector<2>> points() const;

private:
    struct Member {
        qcRegion const* region;
        std::size_t firstNumber;         // in the ring, of the vertex ...
        std::size_t firstVertex;         // ... with which the region's points begin there
        qnInternal::GrowingBoxes parts;  // ends of parts of its edges
    };

    std::size_t numberOf(Member const& member, std::size_t vertex) const;
    qcVector<2> const& edgeStart(std::size_t number) const
    {
        return points_[ring_.previous(number)];
    }
    void addPart(std::size_t member, std::size_t number, std::optional<qnInternal::Box>& added);

    std::vector<qcVector<2>> points_;  // by number
    qnInternal::RingOrder ring_;
    std::vector<Member> members_;
    std::vector<std::size_t> memberOf_;  // by number, the one whose edge ends there
    qnInternal::GrowingBoxes loose_;     // ends of parts that reach out of the box of their member
    std::size_t start_ = 0;
    bool finite_;
};
