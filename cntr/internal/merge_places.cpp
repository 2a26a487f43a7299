// Places and candidates of a merge pass.
#include "cntr/internal/merge_places.h"

#include <numeric>

namespace qnInternal {

MergePlaces::MergePlaces(std::vector<FigureBox> const& boxes)
    : boxes_(boxes), tree_(boxes), numberAt_(boxes.size()), mergedAs_(boxes.size())
{
    std::iota(numberAt_.begin(), numberAt_.end(), std::size_t{0});
    placeOf_ = numberAt_;
}

void MergePlaces::beginAt(std::size_t place)
{
    for (std::size_t const number : merged_)
        mergedAs_[number].reset();
    std::size_t const number = numberAt_[place];
    merged_ = {number};
    mergedAs_[number] = 0;
    candidates_.clear();
    addCandidates(boxes_[number], place + 1);
}

void MergePlaces::addCandidates(FigureBox const& reach, std::size_t begin)
{
    std::vector<std::size_t> near;
    tree_.collect(reach, 0, near);
    for (std::size_t const number : near)
        if (placeOf_[number] >= begin)
            candidates_.insert(placeOf_[number]);
}

std::optional<std::size_t> MergePlaces::nextCandidate()
{
    if (candidates_.empty())
        return std::nullopt;
    std::size_t const place = *candidates_.begin();
    candidates_.erase(candidates_.begin());
    return place;
}

std::vector<std::size_t> MergePlaces::mergedNear(std::size_t place) const
{
    std::vector<std::size_t> near, merged;
    tree_.collect(boxes_[numberAt_[place]], 0, near);
    for (std::size_t const number : near)
        if (mergedAs_[number])
            merged.push_back(*mergedAs_[number]);
    return merged;
}

void MergePlaces::merge(std::size_t place, FigureBox const& reach)
{
    std::size_t const number = numberAt_[place];
    mergedAs_[number] = merged_.size();
    merged_.push_back(number);
    placeOf_[number] = 0;
    // The last one takes the free place, which is behind those that are asked for.
    std::size_t const last = numberAt_.size() - 1;
    candidates_.erase(last);
    numberAt_[place] = numberAt_[last];
    numberAt_.pop_back();
    if (place != last)
        placeOf_[numberAt_[place]] = place;
    addCandidates(reach, place + 1);
}

}  // namespace qnInternal
