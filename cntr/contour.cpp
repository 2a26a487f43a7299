// qcContour: construction, copying, comparison, properties, and the one place that drops caches.
#include <cntr/contour.h>

#include "cntr/internal/contour_caches.h"

#include <algorithm>
#include <utility>

qcContour::qcContour(std::vector<qcVector<2>> const& points, bool closed, unsigned long label)
    : label_(label), closed_(closed), points_(points)
{
}

qcContour::qcContour(qcContour const& other) : qcContour()
{
    *this = other;
}

qcContour::~qcContour() = default;

qcContour& qcContour::operator=(qcContour const& other)
{
    if (this == &other)
        return *this;
    // Whatever can throw comes first, so that a throw leaves this contour as it was.
    auto points = other.points_;
    auto encloseRects = qnInternal::copyOf(other.encloseRectCache_);
    auto extremalVertices = qnInternal::copyOf(other.extremalVertexCache_);
    auto vertexGrids = qnInternal::copyOf(other.vertexIndexCache_);

    label_ = other.label_;
    closed_ = other.closed_;
    points_ = std::move(points);
    cachedVectorSize_ = other.cachedVectorSize_;
    meanPosition_ = other.meanPosition_;
    length_ = other.length_;
    medianFeatureSize_ = other.medianFeatureSize_;
    selfIntersecting_ = other.selfIntersecting_;
    bounds_ = other.bounds_;
    encloseCircles_ = other.encloseCircles_;
    fitEllipse_ = other.fitEllipse_;
    convexHull_ = other.convexHull_;
    edgeData_ = other.edgeData_;
    edgeIndex_ = other.edgeIndex_;
    slabIndex_ = other.slabIndex_;
    containmentQueries_ = other.containmentQueries_;
    encloseRectCache_ = std::move(encloseRects);
    extremalVertexCache_ = std::move(extremalVertices);
    vertexIndexCache_ = std::move(vertexGrids);
    return *this;
}

bool qcContour::operator==(qcContour const& other) const
{
    return isClosed() == other.isClosed() && samePoints(other) &&
           cachedVectorSize_ == other.cachedVectorSize_;
}

bool qcContour::samePoints(qcContour const& other) const
{
    // Neither less nor greater, so that a contour with NaN still equals its copy.
    auto const same = [](qcVector<2> const& a, qcVector<2> const& b) {
        return !(a.x() < b.x() || a.x() > b.x() || a.y() < b.y() || a.y() > b.y());
    };
    return std::equal(points_.begin(), points_.end(), other.points_.begin(), other.points_.end(),
                      same);
}

void qcContour::points(std::vector<qcVector<2>> const& points)
{
    setPoints(points);
    makeDataConsistentWithPoints();
}

void qcContour::setPoints(std::vector<qcVector<2>> const& points)
{
    auto copy = points;  // may be this contour's own list, and may throw
    cleanCacheInfo();
    points_ = std::move(copy);
}

bool qcContour::isClosed() const
{
    return closed_;
}

void qcContour::isClosed(bool closed)
{
    closed_ = closed;
    cleanCacheInfo();
}

void qcContour::label(unsigned long label)
{
    label_ = label;
    notifyChange();
}

void qcContour::cachedVectorSize(long size)
{
    if (size < 0)
        throw qcContourDefs::BadParams();
    cachedVectorSize_ = size;
    notifyChange();
}

void qcContour::checkEmptyContour() const
{
    if (points_.size() < 2)
        throw qcContourDefs::EmptyContour();
}

void qcContour::makeDataConsistentWithPoints()
{
    cleanCacheInfo();
}

void qcContour::makePointsConsistentWithData()
{
    cleanCacheInfo();
}

void qcContour::cleanCacheInfo()
{
    notifyChange();
    dropCaches();
}

void qcContour::dropCaches() noexcept
{
    meanPosition_.reset();
    length_.reset();
    medianFeatureSize_.reset();
    selfIntersecting_.reset();
    bounds_.reset();
    encloseCircles_ = {};
    fitEllipse_.reset();
    convexHull_.valid = false;
    containmentQueries_ = 0;
    // Few points seldom have any of these.
    if (edgeData_ || edgeIndex_ || slabIndex_ || encloseRectCache_ || extremalVertexCache_ ||
        vertexIndexCache_)
        dropIndexes();
}

void qcContour::dropIndexes() noexcept
{
    edgeData_.reset();
    edgeIndex_.reset();
    slabIndex_.reset();
    encloseRectCache_.reset();
    extremalVertexCache_.reset();
    vertexIndexCache_.reset();
}
