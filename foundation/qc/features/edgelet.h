/// \file
/// The edge point: where an edge passes in an image, how strong it is and which way it faces.
#pragma once

#include <qc/core/angle.h>
#include <qc/core/export.h>
#include <qc/core/vector.h>

class qcArchive;

/// An edge point. By default at (0, 0) with magnitude 0 and angle 0.
// Exported although all of it is inline: a template of a hidden class would be hidden too.
class QC_EXPORT qcEdgelet {
public:
    constexpr qcEdgelet() noexcept = default;
    /// The edge point of these values.
    constexpr qcEdgelet(qcVector<2> const& position, unsigned short magnitude,
                        qcAngle8 const& angle) noexcept
        : position_(position), magnitude_(magnitude), angle_(angle)
    {
    }

    /// Where it is, in the units of the image.
    constexpr qcVector<2> position() const noexcept { return position_; }
    /// How strong the edge is.
    constexpr unsigned short magnitude() const noexcept { return magnitude_; }
    /// The direction that the edge faces.
    constexpr qcAngle8 angle() const noexcept { return angle_; }

    /// Exact comparison of all three.
    friend constexpr bool operator==(qcEdgelet const& a, qcEdgelet const& b) noexcept
    {
        return a.position_ == b.position_ && a.magnitude_ == b.magnitude_ && a.angle_ == b.angle_;
    }
    friend constexpr bool operator!=(qcEdgelet const& a, qcEdgelet const& b) noexcept
    {
        return !(a == b);
    }

private:
    qcVector<2> position_;
    unsigned short magnitude_ = 0;
    qcAngle8 angle_;
};

/// 19 bytes: x, y, the magnitude in two bytes (low one first), the code of the angle.
QC_EXPORT qcArchive& operator||(qcArchive& archive, qcEdgelet& value);
