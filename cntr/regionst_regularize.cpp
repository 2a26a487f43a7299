// A set of regions made into one whose outlines neither cross themselves nor, where two meet, each
// other: meeting regions are spliced, then every region is cleaned.
#include <cntr/regionst.h>

#include "cntr/internal/box_tree.h"

#include <algorithm>
#include <numeric>

namespace {

using Handle = qcPtrHandle_const<qcRegion>;

/// Where the regions of a list stand while others are merged: the last one takes the place of each
/// that goes. Those that were joined are not looked for again, so their boxes may stay as they were.
class Places {
public:
    explicit Places(std::vector<std::optional<qnInternal::Box>> const& boxes)
        : tree_(boxes), numberAt_(boxes.size())
    {
        std::iota(numberAt_.begin(), numberAt_.end(), std::size_t{0});
        placeOf_ = numberAt_;
    }

    /// The places from `begin` on, ascending, of the regions whose boxes overlap `box`.
    std::vector<std::size_t> near(std::optional<qnInternal::Box> const& box,
                                  std::size_t begin) const
    {
        std::vector<std::size_t> places;
        tree_.collect(box, 0, places);
        for (std::size_t& number : places)
            number = placeOf_[number];
        places.erase(std::remove_if(places.begin(), places.end(),
                                    [&](std::size_t place) { return place < begin; }),
                     places.end());
        std::sort(places.begin(), places.end());
        return places;
    }

    void moveLastTo(std::size_t place)
    {
        placeOf_[numberAt_[place]] = 0;  // before every place that is asked for
        numberAt_[place] = numberAt_.back();
        numberAt_.pop_back();
        if (place < numberAt_.size())
            placeOf_[numberAt_[place]] = place;
    }

private:
    qnInternal::BoxTree tree_;
    std::vector<std::size_t> numberAt_;  // in the list as it was, by place
    std::vector<std::size_t> placeOf_;   // by that number
};

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
    Places places(outlineBoxes());
    for (std::size_t i = 0; i + 1 < merged.size(); ++i) {
        auto const nearFrom = [&](std::size_t begin) {
            return places.near(outlineBox(merged[i]), begin);
        };
        auto near = nearFrom(i + 1);
        for (std::size_t next = 0; next < near.size();) {
            std::size_t const j = near[next++];
            if (!merged[i]->outlineMeets(*merged[j]))
                continue;
            auto const both = emptyRegion();
            merged[i]->splice(*merged[j], *both);
            merged[i] = both;
            // The last region takes the free place and is not compared with the spliced one.
            merged[j] = merged.back();
            merged.pop_back();
            places.moveLastTo(j);
            near = nearFrom(j + 1);
            next = 0;
        }
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
