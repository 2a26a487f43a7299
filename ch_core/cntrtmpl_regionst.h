// Members of qcRegionSetT.
#pragma once

#include "ch_core/cntrtmpl_region.h"

template <class Datum>
qcRegionSetT<Datum>::qcRegionSetT()
{
    qcRegionSet::cleanCacheInfo();
}

template <class Datum>
qcRegionSetT<Datum>::qcRegionSetT(std::vector<qcPtrHandle_const<qcRegionT<Datum>>> const& regions)
    : typedRegions_(regions)
{
    qcRegionSetT::makePointsConsistentWithData();
}

template <class Datum>
qcRegionSetT<Datum>::qcRegionSetT(std::vector<qcPtrHandle<qcRegionT<Datum>>> regions)
    : typedRegions_(regions.begin(), regions.end())
{
    qcRegionSetT::makePointsConsistentWithData();
}

template <class Datum>
qcRegionSetT<Datum>::qcRegionSetT(qcRegionSetT const& other)
    : qcPersistent(), qcRepBase(), qcRegionSet(other), typedRegions_(other.typedRegions_)
{
}

template <class Datum>
qcRegionSetT<Datum>::~qcRegionSetT() = default;

template <class Datum>
qcPersistent* qcRegionSetT<Datum>::make()
{
    return new qcRegionSetT;
}

template <class Datum>
qcRegionSetT<Datum>& qcRegionSetT<Datum>::operator=(qcRegionSetT const& other)
{
    if (this == &other)
        return *this;
    auto typedRegions = other.typedRegions_;  // may throw, so before anything is changed
    qcRegionSet::operator=(other);
    typedRegions_ = std::move(typedRegions);
    return *this;
}

template <class Datum>
bool qcRegionSetT<Datum>::operator==(qcRegionSetT const& other) const
{
    return qcRegionSet::operator==(other);
}

template <class Datum>
void qcRegionSetT<Datum>::cleanCacheInfo()
{
    qcRegionSet::cleanCacheInfo();
}

template <class Datum>
void qcRegionSetT<Datum>::makePointsConsistentWithData()
{
    cleanCacheInfo();
    this->setRegions({typedRegions_.begin(), typedRegions_.end()});
}

template <class Datum>
void qcRegionSetT<Datum>::makeDataConsistentWithPoints()
{
    cleanCacheInfo();
    auto const plain = this->regions();
    typedRegions_.resize(plain.size());
    for (std::size_t i = 0; i < plain.size(); ++i) {
        // From no data rather than by default, which would give it no transform to build data by.
        qcPtrHandle<qcRegionT<Datum>> const typed(new qcRegionT<Datum>(std::vector<Datum>(), 0));
        typed->points(plain[i]->points());
        typedRegions_[i] = typed;
    }
}

template <class Datum>
void qcRegionSetT<Datum>::mapT(qcXform<2> const&, qcRegionSetT&) const
{
    throw qcPel::BadWindow();
}

template <class Datum>
void qcRegionSetT<Datum>::regularizeT(qcRegionSetT&) const
{
    throw qcPel::BadWindow();
}

template <class Datum>
void qcRegionSetT<Datum>::dispatchSerialize(qcArchive& archive)
{
    if (qcPersistent::haveVisited(this, sizeof *this))
        return;
    unsigned char version = 0;
    archive || version;
    qcRegionSetT::serialize_(archive, version);
    qcPersistent::setVisited(this, sizeof *this);
}

template <class Datum>
void qcRegionSetT<Datum>::serialize_(qcArchive& archive, unsigned char version)
{
    constexpr int kVersionLine = 286;
    if (version != 0)
        throw qcArchive::UnknownVersion(qnInternal::kTemplateFile, kVersionLine);
    qcRegionSet::dispatchSerialize(archive);
    qnInternal::streamHandles(archive, typedRegions_);
}
