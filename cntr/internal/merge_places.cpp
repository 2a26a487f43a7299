// Places and candidates of a merge pass.
#include "cntr/internal/merge_places.h"

#include <algorithm>
#include <numeric>

namespace qnInternal {

namespace {

bool areApart(FigureBox const& a, FigureBox const& b)
{
    return a && b && !overlap(*a, *b);
}

}  // namespace

MergePlaces::MergePlaces(std::vector<FigureBox> const& boxes)
    : boxes_(boxes), tree_(boxes), numberAt_(boxes.size()), mergedAs_(boxes.size()),
      isCandidate_(boxes.size())
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
    first_ = newCandidates(boxes_[number], place + 1);
    std::reverse(first_.begin(), first_.end());
    further_.clear();
}

std::vector<std::size_t> MergePlaces::newCandidates(FigureBox const& reach, std::size_t begin)
{
    std::vector<std::size_t> places;
    tree_.collect(reach, 0, places);
    for (std::size_t& number : places)
        number = placeOf_[number];
    places.erase(
        std::remove_if(places.begin(), places.end(),
                       [&](std::size_t place) { return place < begin || isCandidate_[place]; }),
        places.end());
    std::sort(places.begin(), places.end());
    for (std::size_t const place : places)
        isCandidate_[place] = true;
    return places;
}

std::optional<std::size_t> MergePlaces::nextCandidate()
{
    if (first_.empty() && further_.empty())
        return std::nullopt;
    bool const fromFirst =
        further_.empty() || (!first_.empty() && first_.back() < *further_.begin());
    std::size_t const place = fromFirst ? first_.back() : *further_.begin();
    if (fromFirst)
        first_.pop_back();
    else
        further_.erase(further_.begin());
    isCandidate_[place] = false;
    if (place >= numberAt_.size())
        return std::nullopt;  // no longer in the list, as all that are left
    return place;
}

std::vector<std::size_t> MergePlaces::mergedNear(std::size_t place) const
{
    FigureBox const& box = boxes_[numberAt_[place]];
    std::vector<std::size_t> near, merged;
    // Where the boxes of many regions overlap, those that were merged here are mostly few among them.
    tree_.collect(box, 0, near, merged_.size());
    if (near.size() > merged_.size())
        near = merged_;
    for (std::size_t const number : near)
        if (mergedAs_[number] && !areApart(boxes_[number], box))
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
    numberAt_[place] = numberAt_[last];
    numberAt_.pop_back();
    if (place != last)
        placeOf_[numberAt_[place]] = place;
    auto const further = newCandidates(reach, place + 1);
    further_.insert(further.begin(), further.end());
}

}  // namespace qnInternal
