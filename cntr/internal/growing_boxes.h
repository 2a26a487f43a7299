/// Boxes that come one by one, known by numbers, and arranged so that few are looked at.
///
/// Like the tree of figures' boxes it only proposes. The boxes stand in trees over runs of numbers, each
/// run about twice as long as the next, or more: a box is sorted anew O(log n) times, and a look goes
/// through O(log n) trees.
#pragma once

#include "cntr/internal/box_tree.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace qnInternal {

class GrowingBoxes {
public:
    /// Adds a box that is new or has changed. `boxOf(number)` gives that of any number, as it is now.
    template <class BoxOf>
    void add(std::size_t number, BoxOf const& boxOf)
    {
        numbers_.push_back(number);
        if (numbers_.size() - inRuns_ <= kMostLoose)
            return;
        std::vector<FigureBox> boxes;
        std::size_t const begin = beginOfNextRun();
        for (std::size_t i = begin; i < numbers_.size(); ++i)
            boxes.emplace_back(boxOf(numbers_[i]));
        inRuns_ = numbers_.size();
        runs_.push_back({begin, BoxTree(boxes)});
    }

    /// Calls visit(number) for every box that shares a point with `place`, and for some others perhaps; in
    /// no certain order, and for some more than once.
    template <class Visit>
    void forEachNear(Box const& place, Visit const& visit) const
    {
        std::vector<std::size_t> near;
        for (auto const& run : runs_) {
            run.tree.collect(place, 0, near);
            for (std::size_t const i : near)
                visit(numbers_[run.begin + i]);
        }
        std::for_each(numbers_.begin() + static_cast<std::ptrdiff_t>(inRuns_), numbers_.end(),
                      visit);
    }

private:
    /// So many numbers are looked at one by one.
    static constexpr std::size_t kMostLoose = 32;

    struct Run {
        std::size_t begin;
        BoxTree tree;
    };

    /// Takes apart the runs that are no longer than what follows them, where each number counts once.
    std::size_t beginOfNextRun();

    std::vector<std::size_t> numbers_;
    std::vector<Run> runs_;
    std::size_t inRuns_ = 0;  // so many numbers
};

}  // namespace qnInternal
