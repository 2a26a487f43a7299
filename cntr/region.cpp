// qcRegion: construction and its modes, copying, comparison, holes, and the dropping of its caches.
#include <cntr/region.h>

#include <utility>

qcRegion::qcRegion(std::vector<qcVector<2>> const& points, qcContourDefs::IntersectionMode mode)
    : qcContour(points, true, 0)
{
    initialize(mode);
}

qcRegion::qcRegion(qcPolygon const& polygon, qcContourDefs::IntersectionMode mode)
    : qcContour(polygon, 0)
{
    initialize(mode);
}

qcRegion::qcRegion(qcContour const& contour, qcContourDefs::IntersectionMode mode)
    : qcContour(contour)
{
    initialize(mode);
}

qcRegion::qcRegion(qcRegion const& other)
    : qcPersistent(), qcRepBase(), qcContour(std::vector<qcVector<2>>(), true, 0)
{
    initialize(qcContourDefs::eIgnore);
    qcRegion::operator=(other);
}

qcRegion::~qcRegion() = default;

qcPersistent* qcRegion::make()
{
    return new qcRegion(std::vector<qcVector<2>>(), qcContourDefs::eIgnore);
}

void qcRegion::initialize(qcContourDefs::IntersectionMode mode)
{
    // A contour copied from an open one carries answers about open edges. Both calls reach a class
    // of this hierarchy only: what derives from it is not constructed yet.
    qcContour::cleanCacheInfo();
    cleanCacheInfo();
    if (mode == qcContourDefs::eOuterHull)
        outerHull(*this);
    else if (mode == qcContourDefs::eRegularize)
        regularize(*this);
}

qcRegion& qcRegion::operator=(qcRegion const& other)
{
    if (this == &other)
        return *this;
    auto holes = other.holes_;  // may throw, like the line below; nothing after that does
    qcContour::operator=(other);
    holes_.swap(holes);  // the former ones go last: one of them may be, or hold, `other`
    centerWithHoles_ = other.centerWithHoles_;
    centerOfOutline_ = other.centerOfOutline_;
    areaWithHoles_ = other.areaWithHoles_;
    areaOfOutline_ = other.areaOfOutline_;
    inertiaOfOutline_ = other.inertiaOfOutline_;
    regularized_ = other.regularized_;
    outerHull_ = other.outerHull_;
    return *this;
}

bool qcRegion::operator==(qcRegion const& other) const
{
    return qcContour::operator==(other);
}

bool qcRegion::isClosed() const
{
    return true;
}

void qcRegion::isClosed(bool closed)
{
    if (!closed)
        throw qcContourDefs::RegionCannotBeSetOpen();
}

void qcRegion::checkEmptyContour() const
{
    if (points().size() < 3)
        throw qcContourDefs::EmptyContour();
}

void qcRegion::holes(std::vector<qcPtrHandle_const<qcRegion>> const& holes)
{
    auto accepted = holes;  // may be this region's own list, and may throw
    checkHoles(accepted);
    holes_ = std::move(accepted);
}

void qcRegion::holes(std::vector<qcPtrHandle<qcRegion>> const& holes)
{
    std::vector<qcPtrHandle_const<qcRegion>> accepted(holes.begin(), holes.end());
    checkHoles(accepted);
    holes_ = std::move(accepted);
}

void qcRegion::checkHoles(std::vector<qcPtrHandle_const<qcRegion>> const& holes)
{
    cleanCacheInfo();
    makeDataConsistentWithPoints();
    for (auto const& hole : holes)
        if (!crossings(*hole, false).empty())
            throw qcContourDefs::BadParams(L"holes cannot intersect region");
}

void qcRegion::cleanCacheInfo()
{
    qcContour::cleanCacheInfo();
    dropRegionCaches();
}

void qcRegion::dropRegionCaches() noexcept
{
    centerWithHoles_.reset();
    centerOfOutline_.reset();
    areaWithHoles_.reset();
    areaOfOutline_.reset();
    inertiaOfOutline_.reset();
    regularized_.valid = false;
    outerHull_.valid = false;
}
