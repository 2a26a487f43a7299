// Members of qcRegionT.
#pragma once

#include "ch_core/cntrtmpl_contour.h"

template <class Datum>
qcRegionT<Datum>::qcRegionT() : qcRegion(std::vector<qcVector<2>>(), qcContourDefs::eIgnore)
{
}

template <class Datum>
qcRegionT<Datum>::qcRegionT(std::vector<Datum> const& data, unsigned long label)
    : qcRegionT(data, qcPtrHandle_const<qc2XformBase>(), label)
{
}

template <class Datum>
qcRegionT<Datum>::qcRegionT(std::vector<Datum> const& data,
                            qcPtrHandle_const<qc2XformBase> const& xform, unsigned long label)
    : qcContourT<Datum>(data, xform), qcRegion(std::vector<qcVector<2>>(), qcContourDefs::eIgnore)
{
    this->label(label);
}

template <class Datum>
qcRegionT<Datum>::qcRegionT(qcContourT<Datum> const& contour, unsigned long label)
    : qcContour(contour), qcContourT<Datum>(contour),
      qcRegion(std::vector<qcVector<2>>(), qcContourDefs::eIgnore)
{
    this->label(label);
}

template <class Datum>
qcRegionT<Datum>::qcRegionT(qcRegionT const& other)
    : qcPersistent(), qcRepBase(), qcContour(other), qcContourT<Datum>(other), qcRegion(other),
      typedHoles_(other.typedHoles_)
{
}

template <class Datum>
qcRegionT<Datum>::~qcRegionT() = default;

template <class Datum>
qcPersistent* qcRegionT<Datum>::make()
{
    return new qcRegionT;
}

template <class Datum>
qcRegionT<Datum>& qcRegionT<Datum>::operator=(qcRegionT const& other)
{
    if (this == &other)
        return *this;
    // Copies that can throw come first; the one contour is assigned with the region part.
    auto data = other.data();
    auto typedHoles = other.typedHoles_;
    auto const former = qcRegion::holes();  // `other` may be one of them
    qcRegion::operator=(other);
    this->takeData(other, std::move(data));
    typedHoles_ = std::move(typedHoles);
    return *this;
}

template <class Datum>
bool qcRegionT<Datum>::operator==(qcRegionT const& other) const
{
    return qcContourT<Datum>::operator==(other);
}

template <class Datum>
void qcRegionT<Datum>::holes(std::vector<qcPtrHandle_const<qcRegionT>> const& holes)
{
    typedHoles_ = holes;
    cleanCacheInfo();
}

template <class Datum>
void qcRegionT<Datum>::isClosed(bool closed)
{
    qcRegion::isClosed(closed);
}

template <class Datum>
void qcRegionT<Datum>::cleanCacheInfo()
{
    qcRegion::cleanCacheInfo();
}

template <class Datum>
void qcRegionT<Datum>::makeDataConsistentWithPoints()
{
    qcContourT<Datum>::makeDataConsistentWithPoints();
}

template <class Datum>
void qcRegionT<Datum>::makePointsConsistentWithData()
{
    qcContourT<Datum>::makePointsConsistentWithData();
}

template <class Datum>
void qcRegionT<Datum>::mapT(qcXform<2> const&, qcRegionT&) const
{
    throw qcPel::BadWindow();
}

template <class Datum>
void qcRegionT<Datum>::regularizeT(qcRegionT&) const
{
    throw qcPel::BadWindow();
}

template <class Datum>
void qcRegionT<Datum>::draw(qcUITablet& tablet, qcColor const& color,
                            qcUITablet::Layers const& layer) const
{
    constexpr double kDegreesPerCode = 1.40625;  // 360 / 256
    constexpr double kRadiansPerDegree = 0.017453292519943295;
    constexpr int kQuarterTurn = 64;  // in codes
    for (auto const& datum : this->data()) {
        auto const code = static_cast<unsigned char>(datum.angle().code() - kQuarterTurn);
        qc2Rigid const pose(qcDegree(code * kDegreesPerCode), datum.position());
        auto const end = [&](double turn) {
            qcRadian const direction((pose.angle().toDouble() + turn) * kRadiansPerDegree);
            qcVector<2> const point = qcXform<2>::I * (pose.trans() + qcVector<2>(0.5, direction));
            return qcPair<double>(point.x(), point.y());
        };
        tablet.drawLineSeg(end(0), end(180), color, layer);
    }
}

template <class Datum>
void qcRegionT<Datum>::dispatchSerialize(qcArchive& archive)
{
    if (qcPersistent::haveVisited(this, sizeof *this))
        return;
    unsigned char version = 0;
    archive || version;
    qcRegionT::serialize_(archive, version);
    qcPersistent::setVisited(this, sizeof *this);
}

template <class Datum>
void qcRegionT<Datum>::serialize_(qcArchive& archive, unsigned char version)
{
    constexpr int kVersionLine = 186;
    if (version != 0)
        throw qcArchive::UnknownVersion(qnInternal::kTemplateFile, kVersionLine);
    qcRegion::dispatchSerialize(archive);
}
