/// \file
/// Points, infinite lines and line segments.
#pragma once

#include <qc/core/export.h>
#include <qc/core/persistent.h>
#include <qc/core/vector.h>

class qcArchive;

/// A point as the answer of a geometric question; as cheap as the vector it holds.
class qcPoint {
public:
    constexpr qcPoint() noexcept = default;
    /// The point at `position`.
    constexpr qcPoint(qcVector<2> const& position) noexcept : position_(position) {}

    /// The vector of the point.
    constexpr qcVector<2> const& position() const noexcept { return position_; }
    /// The distance between two points.
    double distToPoint(qcVector<2> const& point) const noexcept
    {
        return position_.distance(point);
    }

    friend constexpr bool operator==(qcPoint const& a, qcPoint const& b) noexcept
    {
        return a.position_ == b.position_;
    }
    friend constexpr bool operator!=(qcPoint const& a, qcPoint const& b) noexcept
    {
        return !(a == b);
    }

private:
    qcVector<2> position_;
};

/// An infinite line: a point and a direction of any length. The zero direction is allowed; such a
/// line answers as its base point does. No operation throws.
class QC_EXPORT qcLine : public virtual qcPersistent {
public:
    /// A line without direction at the origin.
    qcLine() noexcept {}
    /// The line through `point` along `direction`.
    qcLine(qcVector<2> const& point, qcVector<2> const& direction) noexcept
        : point_(point), direction_(direction)
    {
    }
    qcLine(qcLine const& other) noexcept
        : qcPersistent(), point_(other.point_), direction_(other.direction_)
    {
    }
    qcLine& operator=(qcLine const& other) noexcept
    {
        point_ = other.point_;
        direction_ = other.direction_;
        notifyChange();
        return *this;
    }
    ~qcLine() override {}

    /// The base point as given.
    qcVector<2> const& point() const noexcept { return point_; }
    /// The direction as given, of any length.
    qcVector<2> const& direction() const noexcept { return direction_; }

    /// Whether the sine of the angle between the lines is at most 1e-10. A line without direction
    /// is parallel to every line.
    bool isParallel(qcLine const& other) const noexcept;

    /// The crossing of two lines. Where the cross product of the directions is exactly 0 it is the
    /// foot of the other line's base point on this line.
    qcPoint intersect(qcLine const& other) const noexcept;

    /// The foot of the perpendicular from `point`; the base point of a line without direction.
    qcPoint proj(qcVector<2> const& point) const noexcept;

    /// The distance of `point` from the line; from the base point of a line without direction.
    double distToPoint(qcVector<2> const& point) const noexcept;

    /// Same base point and same direction vector, exactly.
    friend bool operator==(qcLine const& a, qcLine const& b) noexcept
    {
        return a.point_ == b.point_ && a.direction_ == b.direction_;
    }
    friend bool operator!=(qcLine const& a, qcLine const& b) noexcept { return !(a == b); }

protected:
    void dispatchSerialize(qcArchive& archive) override;

private:
    qcVector<2> point_;
    qcVector<2> direction_;
};

/// A line segment from p1 to p2, which may be the same point.
class QC_EXPORT qcLineSeg : public virtual qcPersistent {
public:
    /// The single point (0, 0).
    qcLineSeg() noexcept {}
    /// The segment from `p1` to `p2`.
    qcLineSeg(qcVector<2> const& p1, qcVector<2> const& p2) noexcept : p1_(p1), p2_(p2) {}
    qcLineSeg(qcLineSeg const& other) noexcept : qcPersistent(), p1_(other.p1_), p2_(other.p2_) {}
    qcLineSeg& operator=(qcLineSeg const& other) noexcept
    {
        p1_ = other.p1_;
        p2_ = other.p2_;
        notifyChange();
        return *this;
    }
    ~qcLineSeg() override {}

    /// The first end.
    qcVector<2> const& p1() const noexcept { return p1_; }
    /// The second end.
    qcVector<2> const& p2() const noexcept { return p2_; }

    /// The line through p1 along p2 - p1.
    qcLine line() const noexcept { return qcLine(p1_, p2_ - p1_); }

    /// The shortest distance of `point` from the segment.
    double distToPoint(qcVector<2> const& point) const noexcept;

    /// Same ends in the same order, exactly.
    friend bool operator==(qcLineSeg const& a, qcLineSeg const& b) noexcept
    {
        return a.p1_ == b.p1_ && a.p2_ == b.p2_;
    }
    friend bool operator!=(qcLineSeg const& a, qcLineSeg const& b) noexcept { return !(a == b); }

protected:
    void dispatchSerialize(qcArchive& archive) override;

private:
    qcVector<2> p1_;
    qcVector<2> p2_;
};
