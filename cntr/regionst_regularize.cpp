// A set of regions made into one whose outlines neither cross themselves nor, where two meet, each
// other: meeting regions are spliced, then every region is cleaned.
#include <cntr/regionst.h>

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
    std::vector<Handle> merged = regions_;
    for (std::size_t i = 0; i + 1 < merged.size(); ++i)
        for (std::size_t j = i + 1; j < merged.size(); ++j) {
            if (!merged[i]->outlineMeets(*merged[j]))
                continue;
            auto const both = emptyRegion();
            merged[i]->splice(*merged[j], *both);
            merged[i] = both;
            // The last region takes the free place and is not compared with the spliced one.
            merged[j] = merged.back();
            merged.pop_back();
        }
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
