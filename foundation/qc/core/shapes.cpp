// Shapes: points of an ellipse, vertices of a polygon, records of rectangle and circle.
#include <qc/core/internal/stream_once.h>
#include <qc/core/matrix.h>
#include <qc/core/shapes.h>

#include <cmath>
#include <stdexcept>

namespace {

char const* const kSource = "foundation/qc/core/shapes";

}  // namespace

void qcRect::dispatchSerialize(qcArchive& archive)
{
    qnInternal::streamOnce(archive, *this, kSource, __LINE__, [&](unsigned char) {
        qcPersistent::dispatchSerialize(archive);
        qcRect read(*this);
        archive || read.origin_ || read.lr_;
        if (!archive.isStoring()) {
            // Corners stored in the wrong order would give a rectangle that no constructor makes.
            qcVector<2> const first = read.origin_;
            read.origin_ = smaller(first, read.lr_);
            read.lr_ = larger(first, read.lr_);
            *this = read;
        }
    });
}

void qcCircle::dispatchSerialize(qcArchive& archive)
{
    qnInternal::streamOnce(archive, *this, kSource, __LINE__, [&](unsigned char) {
        qcPersistent::dispatchSerialize(archive);
        qcCircle read(*this);
        archive || read.center_;
        archive.doubles(&read.radius_, 1);
        if (!archive.isStoring())
            *this = read;
    });
}

qcVector<2> qcEllipse::pointAt(qcRadian t) const noexcept
{
    double const along = geom_.opposite ? -std::cos(t.toDouble()) : std::cos(t.toDouble());
    double const across =
        geom_.opposite != geom_.clockwise ? -std::sin(t.toDouble()) : std::sin(t.toDouble());
    qcMatrix<2> const turn(geom_.rotation, geom_.rotation, 1.0, 1.0);
    return geom_.center + turn * qcVector<2>(geom_.radii.x() * along, geom_.radii.y() * across);
}

qcPolygon::qcPolygon(std::vector<qcVector<2>> const& vertices, PolyFillMode fillMode)
    : vertices_(vertices), fillMode_(fillMode)
{
}

qcVector<2> const& qcPolygon::operator[](long index) const
{
    if (index < 0 || static_cast<unsigned long>(index) >= vertices_.size())
        throw std::out_of_range("qcPolygon: no such vertex");
    return vertices_[static_cast<std::size_t>(index)];
}
