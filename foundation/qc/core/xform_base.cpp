// The transform objects.
#include <qc/core/exception.h>
#include <qc/core/internal/stream_once.h>
#include <qc/core/xform_base.h>

#include <cmath>
#include <new>

namespace {

char const* const kSource = "foundation/qc/core/xform_base";

qcMatrix<2> rotation(qcDegree angle)
{
    double const turn = angle.norm().toDouble();
    // The sine of the double nearest to pi is not 0: quarter turns are said, not computed.
    if (turn == 0.0)
        return {};
    if (turn == 90.0)
        return {0.0, -1.0, 1.0, 0.0};
    if (turn == 180.0)
        return {-1.0, 0.0, 0.0, -1.0};
    if (turn == 270.0)
        return {0.0, 1.0, -1.0, 0.0};
    qcRadian const radians(angle);
    return qcMatrix<2>(radians, radians, 1.0, 1.0);
}

void streamMatrix(qcArchive& archive, qcMatrix<2>& matrix)
{
    double elements[4] = {matrix.element(0, 0), matrix.element(0, 1), matrix.element(1, 0),
                          matrix.element(1, 1)};
    archive.doubles(elements, 4);
    matrix = qcMatrix<2>(elements[0], elements[1], elements[2], elements[3]);
}

}  // namespace

qc2XformBase::qc2XformBase(qc2XformBase const&) noexcept : qcPersistent(), qcRepBase() {}

qc2XformBase& qc2XformBase::operator=(qc2XformBase const&) noexcept
{
    return *this;
}

qc2XformBase::~qc2XformBase() = default;

qcPtrHandle<qc2XformBase> qc2XformBase::composeBase(qc2XformBase const& inner) const
{
    if (!isLinear() || !inner.isLinear())
        return {};
    qcVector<2> const anywhere;
    return qcPtrHandle<qc2XformBase>(
        new qc2XformLinear(linearXform(anywhere) * inner.linearXform(anywhere)));
}

qc2XformLinear::qc2XformLinear(qcMatrix<2> const& matrix, qcVector<2> const& trans) noexcept
    : xform_(matrix, trans)
{
}

qc2XformLinear::qc2XformLinear(qcXform<2> const& xform) noexcept : xform_(xform) {}

qc2XformLinear::qc2XformLinear(qc2XformLinear const& other) noexcept
    : qcPersistent(), qcRepBase(), qc2XformBase(other), xform_(other.xform_)
{
}

qc2XformLinear& qc2XformLinear::operator=(qc2XformLinear const& other) noexcept
{
    xform_ = other.xform_;
    notifyChange();
    return *this;
}

qc2XformLinear::~qc2XformLinear() = default;

void* qc2XformLinear::operator new(std::size_t size)
{
    return ::operator new(size);
}

void* qc2XformLinear::operator new(std::size_t, void* place) noexcept
{
    return place;
}

void qc2XformLinear::operator delete(void* memory) noexcept
{
    ::operator delete(memory);
}

void qc2XformLinear::operator delete(void*, void*) noexcept {}

qcPtrHandle<qc2XformBase> qc2XformLinear::clone() const
{
    return qcPtrHandle<qc2XformBase>(new qc2XformLinear(*this));
}

qcPtrHandle<qc2XformBase> qc2XformLinear::inverseBase() const
{
    try {
        return qcPtrHandle<qc2XformBase>(new qc2XformLinear(xform_.inverse()));
    } catch (qcMathError::Singular const&) {
        return {};
    }
}

qcVector<2> qc2XformLinear::mapPoint(qcVector<2> const& point) const
{
    return xform_ * point;
}

qcXform<2> qc2XformLinear::linearXform(qcVector<2> const&) const
{
    return xform_;
}

bool qc2XformLinear::isLinear() const
{
    return true;
}

void qc2XformLinear::dispatchSerialize(qcArchive& archive)
{
    qnInternal::streamOnce(archive, *this, kSource, __LINE__,
                           [&](unsigned char version) { serialize_(archive, version); });
}

void qc2XformLinear::serialize_(qcArchive& archive, unsigned char)
{
    qcPersistent::dispatchSerialize(archive);
    qcMatrix<2> matrix = xform_.matrix();
    qcVector<2> trans = xform_.trans();
    streamMatrix(archive, matrix);
    archive || trans;
    if (!archive.isStoring())
        *this = qc2XformLinear(matrix, trans);
}

qc2Rigid::qc2Rigid(qcDegree const& angle, qcVector<2> const& trans) noexcept
    : angle_(angle), xform_(rotation(angle), trans)
{
}

qc2Rigid::qc2Rigid(qc2Rigid const& other) noexcept
    : qcPersistent(), qcRepBase(), qc2XformBase(other), angle_(other.angle_), xform_(other.xform_)
{
}

qc2Rigid& qc2Rigid::operator=(qc2Rigid const& other) noexcept
{
    angle_ = other.angle_;
    xform_ = other.xform_;
    notifyChange();
    return *this;
}

qc2Rigid::~qc2Rigid() = default;

qcPtrHandle<qc2XformBase> qc2Rigid::clone() const
{
    return qcPtrHandle<qc2XformBase>(new qc2Rigid(*this));
}

qcPtrHandle<qc2XformBase> qc2Rigid::inverseBase() const
{
    if (!std::isfinite(angle_.toDouble()) || !std::isfinite(trans().x()) ||
        !std::isfinite(trans().y()))
        return {};
    qcDegree const back(-angle_.toDouble());
    return qcPtrHandle<qc2XformBase>(new qc2Rigid(back, -(rotation(back) * trans())));
}

qcVector<2> qc2Rigid::mapPoint(qcVector<2> const& point) const
{
    return xform_ * point;
}

qcXform<2> qc2Rigid::linearXform(qcVector<2> const&) const
{
    return xform_;
}

bool qc2Rigid::isLinear() const
{
    return true;
}

void qc2Rigid::dispatchSerialize(qcArchive& archive)
{
    qnInternal::streamOnce(archive, *this, kSource, __LINE__,
                           [&](unsigned char version) { serialize_(archive, version); });
}

void qc2Rigid::serialize_(qcArchive& archive, unsigned char)
{
    qcPersistent::dispatchSerialize(archive);
    double degrees = angle_.toDouble();
    qcVector<2> shift = xform_.trans();
    archive.doubles(&degrees, 1);
    archive || shift;
    if (!archive.isStoring())
        *this = qc2Rigid(qcDegree(degrees), shift);
}
