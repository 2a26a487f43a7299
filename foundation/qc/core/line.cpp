// Lines and segments: their arithmetic is that of internal/plane.h, their records are here.
#include <qc/core/internal/plane.h>
#include <qc/core/internal/stream_once.h>
#include <qc/core/line.h>

namespace {

char const* const kSource = "foundation/qc/core/line";

}  // namespace

bool qcLine::isParallel(qcLine const& other) const noexcept
{
    return qnInternal::areParallel(direction_, other.direction_);
}

qcPoint qcLine::intersect(qcLine const& other) const noexcept
{
    return qnInternal::intersectLines(point_, direction_, other.point_, other.direction_);
}

qcPoint qcLine::proj(qcVector<2> const& point) const noexcept
{
    return qnInternal::footOnLine(point_, direction_, point);
}

double qcLine::distToPoint(qcVector<2> const& point) const noexcept
{
    return qnInternal::lineDistance(point_, direction_, point);
}

void qcLine::dispatchSerialize(qcArchive& archive)
{
    qnInternal::streamOnce(archive, *this, kSource, __LINE__, [&](unsigned char) {
        qcPersistent::dispatchSerialize(archive);
        qcLine read(*this);
        archive || read.point_ || read.direction_;
        if (!archive.isStoring())
            *this = read;
    });
}

double qcLineSeg::distToPoint(qcVector<2> const& point) const noexcept
{
    return qnInternal::segmentDistance(p1_, p2_, point);
}

void qcLineSeg::dispatchSerialize(qcArchive& archive)
{
    qnInternal::streamOnce(archive, *this, kSource, __LINE__, [&](unsigned char) {
        qcPersistent::dispatchSerialize(archive);
        qcLineSeg read(*this);
        archive || read.p1_ || read.p2_;
        if (!archive.isStoring())
            *this = read;
    });
}
