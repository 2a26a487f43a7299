/// \file
/// Angles: radians, degrees and the 8-bit angle of an edge point.
#pragma once

#include <cmath>

class qcDegree;

/// An angle in radians. Any double is kept as given; nothing is wrapped unless norm() is asked.
class qcRadian {
public:
    constexpr qcRadian() noexcept : value_(0.0) {}
    /// An angle of so many radians.
    explicit constexpr qcRadian(double radians) noexcept : value_(radians) {}
    /// The same angle in radians.
    explicit constexpr qcRadian(qcDegree const& degrees) noexcept;

    /// The number of radians.
    constexpr double toDouble() const noexcept { return value_; }

    /// The same direction in [0, 2 pi). An angle that is not finite gives NaN.
    qcRadian norm() const noexcept;

    friend constexpr bool operator==(qcRadian a, qcRadian b) noexcept
    {
        return a.value_ == b.value_;
    }
    friend constexpr bool operator!=(qcRadian a, qcRadian b) noexcept { return !(a == b); }
    friend constexpr bool operator<(qcRadian a, qcRadian b) noexcept { return a.value_ < b.value_; }

private:
    double value_;
};

/// An angle in degrees, otherwise like qcRadian.
class qcDegree {
public:
    constexpr qcDegree() noexcept : value_(0.0) {}
    /// An angle of so many degrees.
    explicit constexpr qcDegree(double degrees) noexcept : value_(degrees) {}
    /// The same angle in degrees.
    explicit constexpr qcDegree(qcRadian const& radians) noexcept;

    /// The number of degrees.
    constexpr double toDouble() const noexcept { return value_; }

    /// The same direction in [0, 360). An angle that is not finite gives NaN.
    qcDegree norm() const noexcept;

    friend constexpr bool operator==(qcDegree a, qcDegree b) noexcept
    {
        return a.value_ == b.value_;
    }
    friend constexpr bool operator!=(qcDegree a, qcDegree b) noexcept { return !(a == b); }
    friend constexpr bool operator<(qcDegree a, qcDegree b) noexcept { return a.value_ < b.value_; }

private:
    double value_;
};

/// Angle of an edge point in 256 steps a turn: code 64 is a quarter turn from +x towards +y.
class qcAngle8 {
public:
    constexpr qcAngle8() noexcept : code_(0) {}
    /// The angle of `code` steps.
    explicit constexpr qcAngle8(unsigned char code) noexcept : code_(code) {}

    /// The number of steps, 0 to 255.
    constexpr unsigned char code() const noexcept { return code_; }

    /// The angle in [0, 2 pi), exact up to one rounding.
    constexpr qcRadian toRadian() const noexcept;

    friend constexpr bool operator==(qcAngle8 a, qcAngle8 b) noexcept { return a.code_ == b.code_; }
    friend constexpr bool operator!=(qcAngle8 a, qcAngle8 b) noexcept { return !(a == b); }

private:
    unsigned char code_;
};

namespace qnAngle {

/// Pi, as near as a double comes.
inline constexpr double kPi = 3.14159265358979323846;

/// `value` brought into [0, turn).
inline double wrapped(double value, double turn) noexcept
{
    double rest = std::fmod(value, turn);
    if (rest < 0.0)
        rest += turn;
    // A tiny negative rest rounds up to the whole turn; adding 0.0 turns -0.0 into 0.0.
    return rest >= turn ? 0.0 : rest + 0.0;
}

}  // namespace qnAngle

inline constexpr qcRadian::qcRadian(qcDegree const& degrees) noexcept
    : value_(degrees.toDouble() * (qnAngle::kPi / 180.0))
{
}

inline constexpr qcDegree::qcDegree(qcRadian const& radians) noexcept
    : value_(radians.toDouble() * (180.0 / qnAngle::kPi))
{
}

inline qcRadian qcRadian::norm() const noexcept
{
    return qcRadian(qnAngle::wrapped(value_, 2.0 * qnAngle::kPi));
}

inline qcDegree qcDegree::norm() const noexcept
{
    return qcDegree(qnAngle::wrapped(value_, 360.0));
}

inline constexpr qcRadian qcAngle8::toRadian() const noexcept
{
    return qcRadian(code_ * (qnAngle::kPi / 128.0));
}
