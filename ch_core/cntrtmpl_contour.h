// Members of qcContourT.
#pragma once

#include "cntr/internal/archive_blocks.h"

#include <cntr/cntrtmpl.h>

#include <utility>

namespace qnInternal {

inline constexpr char kTemplateFile[] = "ch_core/cntrtmpl";

/// Smallest room of one datum in an archive: two coordinates, magnitude, angle code.
inline constexpr std::size_t kDatumBytes = 2 * sizeof(double) + 2 + 1;

/// Streams a list of data: block version, count, the data. When loading, read in place.
template <class Datum>
void streamData(qcArchive& archive, std::vector<Datum>& data)
{
    streamBlockVersion(archive);
    streamCount(archive, data, kDatumBytes);
    for (auto& datum : data)
        archive || datum;
}

inline qcPtrHandle<qc2XformBase> identityXform()
{
    return qcPtrHandle<qc2XformBase>(new qc2XformLinear);
}

}  // namespace qnInternal

template <class Datum>
qcContourT<Datum>::qcContourT() = default;

template <class Datum>
qcContourT<Datum>::qcContourT(std::vector<Datum> const& data)
    : qcContourT(data, qcPtrHandle_const<qc2XformBase>())
{
}

template <class Datum>
qcContourT<Datum>::qcContourT(std::vector<Datum> const& data,
                              qcPtrHandle_const<qc2XformBase> const& dataFromPointsXform)
    : dataFromPointsXform_(dataFromPointsXform.isNull() ? qnInternal::identityXform()
                                                        : dataFromPointsXform->clone()),
      data_(data)
{
    qcContourT::makePointsConsistentWithData();
}

template <class Datum>
qcContourT<Datum>::qcContourT(qcContourT const& other)
    : qcPersistent(), qcRepBase(), qcContour(other),
      dataFromPointsXform_(other.dataFromPointsXform_), data_(other.data_),
      inverseValid_(other.inverseValid_), pointsFromDataXform_(other.pointsFromDataXform_)
{
}

template <class Datum>
qcContourT<Datum>::~qcContourT() = default;

template <class Datum>
qcPersistent* qcContourT<Datum>::make()
{
    return new qcContourT;
}

template <class Datum>
qcContourT<Datum>& qcContourT<Datum>::operator=(qcContourT const& other)
{
    if (this == &other)
        return *this;
    auto data = other.data_;
    qcContour::operator=(other);
    takeData(other, std::move(data));
    return *this;
}

template <class Datum>
void qcContourT<Datum>::takeData(qcContourT const& other, std::vector<Datum>&& data) noexcept
{
    dataFromPointsXform_ = other.dataFromPointsXform_;
    data_ = std::move(data);
    inverseValid_ = other.inverseValid_;
    pointsFromDataXform_ = other.pointsFromDataXform_;
}

template <class Datum>
bool qcContourT<Datum>::operator==(qcContourT const& other) const
{
    return this->samePoints(other) && dataFromPointsXform_ == other.dataFromPointsXform_;
}

template <class Datum>
void qcContourT<Datum>::data(std::vector<Datum> const& data)
{
    data_ = data;
    makePointsConsistentWithData();
}

template <class Datum>
Datum qcContourT<Datum>::datum(qcVector<2> const& point) const
{
    return Datum(dataFromPointsXform_->mapPoint(point), 0, qcAngle8());
}

template <class Datum>
qcVector<2> qcContourT<Datum>::point(Datum const& datum)
{
    if (!inverseValid_) {
        pointsFromDataXform_ = dataFromPointsXform_->inverseBase();
        inverseValid_ = true;
    }
    return pointsFromDataXform_->mapPoint(datum.position());
}

template <class Datum>
void qcContourT<Datum>::makeDataConsistentWithPoints()
{
    this->cleanCacheInfo();
    data_.clear();
    data_.reserve(this->points().size());
    for (auto const& vertex : this->points())
        data_.push_back(datum(vertex));
}

template <class Datum>
void qcContourT<Datum>::makePointsConsistentWithData()
{
    this->cleanCacheInfo();
    std::vector<qcVector<2>> points;
    points.reserve(data_.size());
    for (auto const& datum : data_)
        points.push_back(point(datum));
    this->setPoints(points);
}

template <class Datum>
void qcContourT<Datum>::convexHullT(qcRegionT<Datum>&) const
{
    throw qcPel::BadWindow();
}

template <class Datum>
void qcContourT<Datum>::mapT(qcXform<2> const&, qcContourT&) const
{
    throw qcPel::BadWindow();
}

template <class Datum>
void qcContourT<Datum>::dispatchSerialize(qcArchive& archive)
{
    if (qcPersistent::haveVisited(this, sizeof *this))
        return;
    unsigned char version = 1;
    archive || version;
    qcContourT::serialize_(archive, version);
    qcPersistent::setVisited(this, sizeof *this);
}

template <class Datum>
void qcContourT<Datum>::serialize_(qcArchive& archive, unsigned char version)
{
    constexpr int kVersionLine = 98;
    if (version > 1)
        throw qcArchive::UnknownVersion(qnInternal::kTemplateFile, kVersionLine);
    qcContour::dispatchSerialize(archive);
    qnInternal::streamData(archive, data_);
    // After the contour, whose notification may have asked for a point; before the transform, so
    // that a throw leaves no inverse of another one.
    if (!archive.isStoring())
        inverseValid_ = false;
    if (version == 1)
        qnInternal::streamHandle(archive, dataFromPointsXform_);
}
