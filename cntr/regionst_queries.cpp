// What a set of regions says of all of them: sums, containment, distance, crossings, rectangle.
#include <cntr/moments.h>
#include <cntr/regionst.h>

#include "cntr/internal/box_tree.h"
#include "cntr/internal/contour_caches.h"
#include "cntr/internal/tolerances.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

/// Up to so many regions all pairs are looked at in the time a tree is made (bench/set_bench.cpp).
constexpr std::size_t kMaxPlainRegions = 16;

}  // namespace

double qcRegionSet::area(bool considerHoles) const
{
    auto& cached = area_[considerHoles];
    if (!cached) {
        double sum = 0.0;
        for (auto const& region : regions_)
            sum += region->area(considerHoles);
        cached = sum;
        notifyChange();
        return sum;  // a listener may have changed the set
    }
    return *cached;
}

qcVector<2> qcRegionSet::centerOfMass(bool considerHoles) const
{
    checkEmptyRegionSet();
    auto& cached = centerOfMass_[considerHoles];
    if (cached)
        return *cached;
    double area = 0.0;
    qcVector<2> sum;
    for (auto const& region : regions_) {
        double const weight = region->area(considerHoles);
        sum += region->massCenter(considerHoles) * weight;
        area += weight;
    }
    qcVector<2> center;
    if (std::fabs(area) > qnInternal::kCancelledRegions)
        center = sum * (1 / area);
    cached = center;
    notifyChange();
    return center;
}

qcMatrix<2> qcRegionSet::inertiaMatrix(bool considerHoles) const
{
    checkEmptyRegionSet();
    auto& cached = inertiaMatrix_[considerHoles];
    if (cached)
        return *cached;
    qc_InertiaData total;
    for (auto const& region : regions_) {
        auto const moments = region->secondMoments(considerHoles);
        auto const center = region->massCenter(considerHoles);
        total = total + qc_InertiaData(region->area(considerHoles), center, moments);
    }
    cached = total.inertiaMatrix();
    notifyChange();
    return total.inertiaMatrix();
}

bool qcRegionSet::inside(qcVector<2> const& point, bool considerHoles) const
{
    for (auto const& region : regions_)
        if (region->inside(point, considerHoles))
            return true;
    return false;
}

double qcRegionSet::distToPoint(qcVector<2> const& point, bool verticesOnly, bool considerHoles,
                                bool insideIsZero) const
{
    checkEmptyRegionSet();
    double nearest = std::numeric_limits<double>::infinity();
    for (auto const& region : regions_) {
        double const d = region->distToPoint(point, verticesOnly, considerHoles, insideIsZero);
        if (nearest > d)
            nearest = d;
    }
    return nearest;
}

bool qcRegionSet::isSelfIntersecting() const
{
    if (regions_.empty())
        return false;
    if (selfIntersecting_)
        return *selfIntersecting_;
    selfIntersecting_ = false;
    for (auto const& region : regions_)
        if (region->isSelfIntersecting())
            selfIntersecting_ = true;
    if (anyTwoOutlinesMeet())
        selfIntersecting_ = true;
    return *selfIntersecting_;
}

bool qcRegionSet::anyTwoOutlinesMeet() const
{
    auto const boxes = outlineBoxes();
    auto const meet = [&](std::size_t i, std::size_t j) {
        bool const apart = boxes[i] && boxes[j] && !qnInternal::overlap(*boxes[i], *boxes[j]);
        return !apart && regions_[i]->outlineMeets(*regions_[j]);
    };
    if (boxes.size() <= kMaxPlainRegions) {
        for (std::size_t i = 0; i < boxes.size(); ++i)
            for (std::size_t j = i + 1; j < boxes.size(); ++j)
                if (meet(i, j))
                    return true;
        return false;
    }
    qnInternal::BoxTree const tree(boxes);
    std::vector<std::size_t> near;
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        tree.collect(boxes[i], i + 1, near);
        if (std::any_of(near.begin(), near.end(), [&](std::size_t j) { return meet(i, j); }))
            return true;
    }
    return false;
}

std::vector<std::optional<qnInternal::Box>> qcRegionSet::outlineBoxes() const
{
    std::vector<std::optional<qnInternal::Box>> boxes;
    boxes.reserve(regions_.size());
    for (auto const& region : regions_)
        boxes.push_back(region.isNull() ? std::nullopt : region->outlineBox());
    return boxes;
}

qcRect qcRegionSet::encloseRect(qcXform<2> const& xform) const
{
    checkEmptyRegionSet();
    auto const compute = [&] {
        qcRect rect = regions_.front()->encloseRect(xform);
        for (auto const& region : regions_)
            rect = rect.enclose(region->encloseRect(xform));
        return rect;
    };
    return qnInternal::cachedRect(encloseRectCache_, xform, cachedVectorSize_, compute,
                                  [this] { notifyChange(); });
}
