// A set of regions made into one whose outlines neither cross themselves nor, where two meet, each
// other: meeting regions are spliced, then every region is cleaned.
#include <cntr/regionst.h>

#include "cntr/internal/merge_places.h"
#include "cntr/region_splice.h"

#include <optional>

namespace {

using Handle = qcPtrHandle_const<qcRegion>;

qcPtrHandle<qcRegion> emptyRegion()
{
    return qcPtrHandle<qcRegion>(new qcRegion(std::vector<qcVector<2>>(), qcContourDefs::eIgnore));
}

}  // namespace

void qcRegionSet::regularize(qcRegionSet& result) const
{
    cleaned(regularized_, false, result);
}

void qcRegionSet::outerHull(qcRegionSet& result) const
{
    cleaned(outerHull_, true, result);
}

void qcRegionSet::cleaned(Result& cache, bool useOuterHull, qcRegionSet& result) const
{
    if (!isSelfIntersecting()) {
        result = *this;
        return;
    }
    if (!cache.valid) {
        qcPtrHandle<qcRegionSet> const fresh(new qcRegionSet);
        cache.set = fresh;
        outerHullRegularize(*fresh, useOuterHull);
        cache.valid = true;
    }
    // Held here as well: where `result` is this set, the assignment replaces the handle.
    auto const held = cache.set;
    result = *held;
}

void qcRegionSet::outerHullRegularize(qcRegionSet& result, bool useOuterHull) const
{
    checkEmptyRegionSet();
    std::vector<Handle> merged = mergedRegions();
    for (auto& region : merged) {
        auto const clean = emptyRegion();
        if (useOuterHull)
            region->outerHull(*clean);
        else
            region->regularize(*clean);
        region = clean;
    }
    result = qcRegionSet(merged, qcContourDefs::eIgnore);
}

std::vector<Handle> qcRegionSet::mergedRegions() const
{
    std::vector<Handle> merged = regions_;
    qnInternal::MergePlaces places(outlineBoxes());
    for (std::size_t i = 0; i + 1 < merged.size(); ++i) {
        std::optional<qcRegion::SplicedOutline> spliced;
        places.beginAt(i);
        while (auto const place = places.nextCandidate()) {
            qcRegion const& other = *merged[*place];
            bool const isFirst = !spliced;
            if (isFirst && !merged[i]->outlineMeets(other))
                continue;
            if (isFirst)
                spliced.emplace(*merged[i]);
            auto const edges = spliced->edgesNear(other, places.mergedNear(*place));
            if (!isFirst && !spliced->isMetBy(other, edges))
                continue;
            places.merge(*place, spliced->splice(other, spliced->firstCrossing(other, edges)));
            // The last region takes the free place and is not compared with the spliced one.
            merged[*place] = merged.back();
            merged.pop_back();
        }
        if (spliced)
            merged[i] =
                qcPtrHandle<qcRegion>(new qcRegion(spliced->points(), qcContourDefs::eIgnore));
    }
    return merged;
}
