/// \file
/// Rectangles, circles, ellipses and polygons.
#pragma once

#include <qc/core/angle.h>
#include <qc/core/export.h>
#include <qc/core/line.h>
#include <qc/core/persistent.h>
#include <qc/core/vector.h>

#include <vector>

class qcArchive;

/// An axis-aligned rectangle, kept by its two extreme corners, so that enclosing never rounds.
class QC_EXPORT qcRect : public virtual qcPersistent {
public:
    /// The zero-size rectangle at (0, 0).
    qcRect() noexcept {}
    /// The rectangle with one corner at `corner` that reaches `size` further; a negative size
    /// reaches towards smaller coordinates.
    qcRect(qcVector<2> const& corner, qcVector<2> const& size) noexcept
        : origin_(smaller(corner, corner + size)), lr_(larger(corner, corner + size))
    {
    }
    qcRect(qcRect const& other) noexcept : qcPersistent(), origin_(other.origin_), lr_(other.lr_) {}
    qcRect& operator=(qcRect const& other) noexcept
    {
        origin_ = other.origin_;
        lr_ = other.lr_;
        notifyChange();
        return *this;
    }
    ~qcRect() override {}

    /// The corner with the smallest coordinates.
    qcPoint origin() const noexcept { return origin_; }
    /// The corner with the largest coordinates: lower right where y points down.
    qcPoint lr() const noexcept { return lr_; }
    /// Width and height.
    qcVector<2> size() const noexcept { return lr_ - origin_; }

    /// The smallest rectangle that contains both; its corners are corners of the two, exactly. A
    /// coordinate of `other` that is NaN is passed over, one of this rectangle stays.
    qcRect enclose(qcRect const& other) const noexcept
    {
        qcRect both;
        both.origin_ = smaller(origin_, other.origin_);
        both.lr_ = larger(lr_, other.lr_);
        return both;
    }

    /// Whether the point lies inside or on the border.
    bool within(qcVector<2> const& point) const noexcept
    {
        return origin_.x() <= point.x() && point.x() <= lr_.x() && origin_.y() <= point.y() &&
               point.y() <= lr_.y();
    }

    friend bool operator==(qcRect const& a, qcRect const& b) noexcept
    {
        return a.origin_ == b.origin_ && a.lr_ == b.lr_;
    }
    friend bool operator!=(qcRect const& a, qcRect const& b) noexcept { return !(a == b); }

protected:
    void dispatchSerialize(qcArchive& archive) override;

private:
    static constexpr qcVector<2> smaller(qcVector<2> const& a, qcVector<2> const& b) noexcept
    {
        return {b.x() < a.x() ? b.x() : a.x(), b.y() < a.y() ? b.y() : a.y()};
    }
    static constexpr qcVector<2> larger(qcVector<2> const& a, qcVector<2> const& b) noexcept
    {
        return {b.x() > a.x() ? b.x() : a.x(), b.y() > a.y() ? b.y() : a.y()};
    }

    qcVector<2> origin_;
    qcVector<2> lr_;
};

/// A circle. The radius is kept as given.
class QC_EXPORT qcCircle : public virtual qcPersistent {
public:
    /// Radius 0 at (0, 0).
    qcCircle() noexcept {}
    /// The circle around `center`.
    qcCircle(qcVector<2> const& center, double radius) noexcept : center_(center), radius_(radius)
    {
    }
    qcCircle(qcCircle const& other) noexcept
        : qcPersistent(), center_(other.center_), radius_(other.radius_)
    {
    }
    qcCircle& operator=(qcCircle const& other) noexcept
    {
        center_ = other.center_;
        radius_ = other.radius_;
        notifyChange();
        return *this;
    }
    ~qcCircle() override {}

    /// The centre.
    qcVector<2> const& center() const noexcept { return center_; }
    /// The radius as given.
    double radius() const noexcept { return radius_; }

    friend bool operator==(qcCircle const& a, qcCircle const& b) noexcept
    {
        return a.center_ == b.center_ && a.radius_ == b.radius_;
    }
    friend bool operator!=(qcCircle const& a, qcCircle const& b) noexcept { return !(a == b); }

protected:
    void dispatchSerialize(qcArchive& archive) override;

private:
    qcVector<2> center_;
    double radius_ = 0.0;
};

/// An ellipse with axes in any direction.
class qcEllipse {
public:
    /// What an ellipse is made of, kept as given.
    struct qcEllipseGeom {
        constexpr qcEllipseGeom() noexcept = default;
        /// Every part as given; both flags are false unless said.
        constexpr qcEllipseGeom(qcVector<2> const& centerPoint, qcVector<2> const& radiusPair,
                                qcRadian firstAxis, bool runsClockwise = false,
                                bool startsOpposite = false) noexcept
            : center(centerPoint), radii(radiusPair), rotation(firstAxis), clockwise(runsClockwise),
              opposite(startsOpposite)
        {
        }

        /// The centre.
        qcVector<2> center;
        /// Half axes: x along `rotation`, y at right angles to it.
        qcVector<2> radii;
        /// Direction of the first axis.
        qcRadian rotation;
        /// pointAt() runs against the positive turning sense.
        bool clockwise = false;
        /// pointAt() starts at the far end of the first axis.
        bool opposite = false;

        friend constexpr bool operator==(qcEllipseGeom const& a, qcEllipseGeom const& b) noexcept
        {
            return a.center == b.center && a.radii == b.radii && a.rotation == b.rotation &&
                   a.clockwise == b.clockwise && a.opposite == b.opposite;
        }
    };

    /// Radii 0 at (0, 0).
    constexpr qcEllipse() noexcept = default;
    /// The circle as an ellipse of equal radii.
    explicit qcEllipse(qcCircle const& circle) noexcept
        : geom_(circle.center(), {circle.radius(), circle.radius()}, qcRadian())
    {
    }
    /// The ellipse of these parts.
    explicit constexpr qcEllipse(qcEllipseGeom const& geom) noexcept : geom_(geom) {}

    /// All parts.
    constexpr qcEllipseGeom const& geom() const noexcept { return geom_; }
    /// The centre.
    constexpr qcVector<2> const& center() const noexcept { return geom_.center; }
    /// The two half axes.
    constexpr qcVector<2> const& radii() const noexcept { return geom_.radii; }
    /// The direction of the first axis.
    constexpr qcRadian rotation() const noexcept { return geom_.rotation; }

    /// The border point at parameter `t` (not a direction, unless it is a circle): 0 is the end of
    /// the first axis, a quarter turn the end of the second, as the two flags turn it.
    QC_EXPORT qcVector<2> pointAt(qcRadian t) const noexcept;

    friend constexpr bool operator==(qcEllipse const& a, qcEllipse const& b) noexcept
    {
        return a.geom_ == b.geom_;
    }
    friend constexpr bool operator!=(qcEllipse const& a, qcEllipse const& b) noexcept
    {
        return !(a == b);
    }

private:
    qcEllipseGeom geom_;
};

/// A list of vertices and the rule that says what of the plane they enclose.
class qcPolygon {
public:
    /// Which points are inside a polygon that crosses itself.
    enum PolyFillMode {
        eEvenOdd = 0,  ///< inside: a ray out crosses the outline an odd number of times
        eWinding = 1   ///< inside: the outline runs around the point, on balance
    };

    qcPolygon() = default;
    /// A polygon of these vertices.
    QC_EXPORT explicit qcPolygon(std::vector<qcVector<2>> const& vertices,
                                 PolyFillMode fillMode = eEvenOdd);

    /// The number of vertices.
    int size() const noexcept { return static_cast<int>(vertices_.size()); }
    /// Vertex `index`, from 0 to size() - 1. Throws std::out_of_range for any other.
    QC_EXPORT qcVector<2> const& operator[](long index) const;

    /// All vertices in order.
    std::vector<qcVector<2>> const& vertices() const noexcept { return vertices_; }
    /// The filling rule as given; nothing here applies it.
    PolyFillMode fillMode() const noexcept { return fillMode_; }

private:
    std::vector<qcVector<2>> vertices_;
    PolyFillMode fillMode_ = eEvenOdd;
};
