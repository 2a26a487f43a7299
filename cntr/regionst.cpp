// qcRegionSet: construction and its modes, copying, comparison, setters, dropping of caches.
#include <cntr/regionst.h>

#include "cntr/internal/contour_caches.h"

#include <utility>

namespace {

std::vector<qcPtrHandle_const<qcRegion>> toConst(std::vector<qcPtrHandle<qcRegion>> const& regions)
{
    return {regions.begin(), regions.end()};
}

}  // namespace

qcRegionSet::qcRegionSet(std::vector<qcPtrHandle_const<qcRegion>> const& regions,
                         qcContourDefs::IntersectionMode mode)
    : regions_(regions)
{
    cleanCacheInfo();  // during construction this class's own
    applyMode(mode);
}

qcRegionSet::qcRegionSet(std::vector<qcPtrHandle<qcRegion>> const& regions,
                         qcContourDefs::IntersectionMode mode)
    : qcRegionSet(toConst(regions), mode)
{
}

qcRegionSet::qcRegionSet(qcRegionSet const& other) : qcRegionSet()
{
    qcRegionSet::operator=(other);
}

qcRegionSet::~qcRegionSet() = default;

qcPersistent* qcRegionSet::make()
{
    return new qcRegionSet;
}

qcRegionSet& qcRegionSet::operator=(qcRegionSet const& other)
{
    if (this == &other)
        return *this;
    // Whatever can throw comes first, so that a throw leaves this set as it was.
    auto regions = other.regions_;
    auto encloseRects = qnInternal::copyOf(other.encloseRectCache_);

    regions_ = std::move(regions);
    cachedVectorSize_ = other.cachedVectorSize_;
    centerOfMass_ = other.centerOfMass_;
    area_ = other.area_;
    inertiaMatrix_ = other.inertiaMatrix_;
    selfIntersecting_ = other.selfIntersecting_;
    encloseRectCache_ = std::move(encloseRects);
    regularized_ = other.regularized_;
    outerHull_ = other.outerHull_;
    return *this;
}

bool qcRegionSet::operator==(qcRegionSet const& other) const
{
    if (regions_.size() != other.regions_.size())
        return false;
    for (std::size_t i = 0; i < regions_.size(); ++i)
        if (!(*regions_[i] == *other.regions_[i]))
            return false;
    return true;
}

void qcRegionSet::regions(std::vector<qcPtrHandle_const<qcRegion>> const& regions,
                          qcContourDefs::IntersectionMode mode)
{
    auto copy = regions;
    cleanCacheInfo();
    regions_ = std::move(copy);
    makeDataConsistentWithPoints();
    applyMode(mode);
}

void qcRegionSet::regions(std::vector<qcPtrHandle<qcRegion>> const& regions,
                          qcContourDefs::IntersectionMode mode)
{
    this->regions(toConst(regions), mode);
}

void qcRegionSet::add(qcPtrHandle_const<qcRegion> const& region,
                      qcContourDefs::IntersectionMode mode)
{
    cleanCacheInfo();
    regions_.push_back(region);
    makeDataConsistentWithPoints();
    applyMode(mode);
}

void qcRegionSet::setRegions(std::vector<qcPtrHandle_const<qcRegion>> const& regions)
{
    regions_ = regions;
}

void qcRegionSet::applyMode(qcContourDefs::IntersectionMode mode)
{
    if (mode == qcContourDefs::eOuterHull)
        outerHull(*this);
    else if (mode == qcContourDefs::eRegularize)
        regularize(*this);
}

void qcRegionSet::cachedVectorSize(long size)
{
    if (size < 0)
        throw qcContourDefs::BadParams();
    cachedVectorSize_ = size;
    notifyChange();
}

void qcRegionSet::checkEmptyRegionSet() const
{
    if (regions_.empty())
        throw qcContourDefs::EmptyRegionSet();
}

void qcRegionSet::makeDataConsistentWithPoints()
{
    cleanCacheInfo();
}

void qcRegionSet::makePointsConsistentWithData()
{
    cleanCacheInfo();
}

void qcRegionSet::cleanCacheInfo()
{
    notifyChange();
    dropCaches();
}

void qcRegionSet::dropCaches() noexcept
{
    encloseRectCache_.reset();
    centerOfMass_ = {};
    area_ = {};
    inertiaMatrix_ = {};
    selfIntersecting_.reset();
    regularized_.valid = false;
    outerHull_.valid = false;
}
