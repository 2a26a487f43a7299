/// \file
/// Pairs of numbers and the plane vector, which is also the point type of every outline.
#pragma once

#include <qc/core/angle.h>

#include <cmath>

/// Two numbers without a meaning of their own: a position in pixels, the end of a drawn line.
template <class T>
class qcPair {
public:
    constexpr qcPair() noexcept : first_(), second_() {}
    /// The two numbers as given.
    constexpr qcPair(T first, T second) noexcept : first_(first), second_(second) {}

    /// The first number.
    constexpr T first() const noexcept { return first_; }
    /// The second number.
    constexpr T second() const noexcept { return second_; }

    friend constexpr bool operator==(qcPair const& a, qcPair const& b) noexcept
    {
        return a.first_ == b.first_ && a.second_ == b.second_;
    }
    friend constexpr bool operator!=(qcPair const& a, qcPair const& b) noexcept
    {
        return !(a == b);
    }

private:
    T first_;
    T second_;
};

template <int Dimension>
class qcVector;

/// A vector or point of the plane: two doubles, trivially copyable. The coordinates may be any
/// doubles; no operation refuses infinities or NaN, which pass through as IEEE arithmetic has it.
template <>
class qcVector<2> {
public:
    constexpr qcVector() noexcept : x_(0.0), y_(0.0) {}
    /// The vector of these coordinates.
    constexpr qcVector(double x, double y) noexcept : x_(x), y_(y) {}
    /// An integer position.
    explicit constexpr qcVector(qcPair<long> const& position) noexcept
        : x_(static_cast<double>(position.first())), y_(static_cast<double>(position.second()))
    {
    }
    /// The vector of the given length at `angle`, measured from +x towards +y.
    explicit qcVector(double length, qcRadian angle) noexcept
        : x_(length * std::cos(angle.toDouble())), y_(length * std::sin(angle.toDouble()))
    {
    }

    /// The first coordinate.
    constexpr double x() const noexcept { return x_; }
    /// The second coordinate.
    constexpr double y() const noexcept { return y_; }
    /// Sets the first coordinate.
    constexpr void x(double value) noexcept { x_ = value; }
    /// Sets the second coordinate.
    constexpr void y(double value) noexcept { y_ = value; }

    /// Adds coordinate by coordinate.
    constexpr qcVector& operator+=(qcVector const& v) noexcept
    {
        x_ += v.x_;
        y_ += v.y_;
        return *this;
    }
    /// Subtracts coordinate by coordinate.
    constexpr qcVector& operator-=(qcVector const& v) noexcept
    {
        x_ -= v.x_;
        y_ -= v.y_;
        return *this;
    }
    /// The sum.
    constexpr qcVector operator+(qcVector const& v) const noexcept
    {
        return {x_ + v.x_, y_ + v.y_};
    }
    /// The difference.
    constexpr qcVector operator-(qcVector const& v) const noexcept
    {
        return {x_ - v.x_, y_ - v.y_};
    }
    /// The opposite vector.
    constexpr qcVector operator-() const noexcept { return {-x_, -y_}; }
    /// Both coordinates times `factor`.
    constexpr qcVector operator*(double factor) const noexcept
    {
        return {x_ * factor, y_ * factor};
    }
    /// Both coordinates divided by `divisor`.
    constexpr qcVector operator/(double divisor) const noexcept
    {
        return {x_ / divisor, y_ / divisor};
    }
    /// Both coordinates times `factor`.
    friend constexpr qcVector operator*(double factor, qcVector const& v) noexcept
    {
        return v * factor;
    }

    /// Dot product.
    constexpr double operator*(qcVector const& v) const noexcept { return x_ * v.x_ + y_ * v.y_; }
    /// The z component of the cross product: positive where `v` lies counter-clockwise of this.
    constexpr double cross(qcVector const& v) const noexcept { return x_ * v.y_ - y_ * v.x_; }

    /// sqrt(x*x + y*y): over- and underflows where the squares do.
    double len() const noexcept { return std::sqrt(x_ * x_ + y_ * y_); }
    /// The length of the difference.
    double distance(qcVector const& v) const noexcept { return (*this - v).len(); }
    /// The direction as atan2(y, x), in [-pi, pi]; 0 for the zero vector.
    qcRadian angle() const noexcept { return qcRadian(std::atan2(y_, x_)); }
    /// The vector of length 1 in this direction; the zero vector stays the zero vector.
    qcVector unit() const noexcept
    {
        double const length = len();
        if (length > 0.0 && length <= 1e300)
            return *this / length;
        // The squares left the range of double, or there is no direction.
        double const largest = std::fmax(std::fabs(x_), std::fabs(y_));
        if (largest == 0.0)
            return {};
        qcVector const scaled = *this / largest;
        return scaled / scaled.len();
    }

    /// Exact comparison of both coordinates.
    friend constexpr bool operator==(qcVector const& a, qcVector const& b) noexcept
    {
        return a.x_ == b.x_ && a.y_ == b.y_;
    }
    friend constexpr bool operator!=(qcVector const& a, qcVector const& b) noexcept
    {
        return !(a == b);
    }

private:
    double x_;
    double y_;
};
