/// Boxes in groups of eight, a box around each group, and so on up to a single group.
#pragma once

#include "cntr/internal/box_group.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

namespace qnInternal {

/// Level 0 holds the boxes themselves, the last level a single group. Box `node` of a level is that
/// around group `node` of the level below.
class BoxHierarchy {
public:
    static constexpr std::size_t kFan = BoxGroup::kSize;
    static constexpr std::size_t kMostLevels = 24;  // 8^22 boxes are more than memory holds

    /// With room for `count` boxes, one at least.
    explicit BoxHierarchy(std::size_t count)
    {
        boxCount_[0] = count;
        std::size_t groups = 0;
        for (;; ++levelCount_) {
            groupBegin_[levelCount_ - 1] = groups;
            boxCount_[levelCount_] = (boxCount_[levelCount_ - 1] + kFan - 1) / kFan;
            groups += boxCount_[levelCount_];
            if (boxCount_[levelCount_] <= 1)
                break;
        }
        groups_.resize(groups);
    }

    std::size_t levelCount() const { return levelCount_; }
    std::size_t boxCount(std::size_t level) const { return boxCount_[level]; }
    std::size_t boxesIn(std::size_t level, std::size_t group) const
    {
        return std::min(kFan, boxCount_[level] - group * kFan);
    }
    BoxGroup const& group(std::size_t level, std::size_t number) const
    {
        return groups_[groupBegin_[level] + number];
    }
    Box box(std::size_t level, std::size_t node) const
    {
        return group(level, node / kFan).box(node % kFan);
    }
    Box rootBox() const { return groups_.back().all(); }

    /// A group of level 0, to be filled.
    BoxGroup& lowest(std::size_t number) { return groups_[number]; }

    /// Makes all boxes above level 0.
    void addLevelsAbove()
    {
        for (std::size_t level = 1; level < levelCount_; ++level)
            for (std::size_t node = 0; node < boxCount_[level]; ++node)
                groups_[groupBegin_[level] + node / kFan].enclose(node % kFan,
                                                                  group(level - 1, node));
    }

    /// Calls visit(node, box) for the boxes of level 0 that `touches` accepts, as it does those above
    /// them: touches(group) has a bit for every box to go on with.
    template <class Touches, class Visit>
    void forEachBox(Touches const& touches, Visit const& visit) const
    {
        struct Left {
            unsigned bits;
            std::size_t first;
        };
        // By level, of the group in hand there: its first box, and bits of the boxes still to go on with. The
        // walk goes down into the lowest of these; where there are none it goes back up.
        std::array<Left, kMostLevels> left;
        std::size_t level = levelCount_ - 1;
        std::size_t number = 0;
        if (level > 0 && boxCount_[level] == 2)  // to ask both is as quick as to ask about them
            left[level--] = {2, 0};
        while (true) {
            BoxGroup const& boxes = group(level, number);
            std::size_t first = number * kFan;
            unsigned bits = touches(boxes) & ((1U << boxesIn(level, number)) - 1);
            if (level == 0) {
                forEachBit(bits, [&](std::size_t i) { visit(first + i, boxes.box(i)); });
                bits = 0;
            }
            while (bits == 0) {
                if (++level == levelCount_)
                    return;
                bits = left[level].bits;
                first = left[level].first;
            }
            number = first + static_cast<std::size_t>(__builtin_ctz(bits));
            left[level--] = {bits & (bits - 1), first};
        }
    }

private:
    std::size_t levelCount_ = 1;
    std::array<std::size_t, kMostLevels> boxCount_{};
    std::array<std::size_t, kMostLevels> groupBegin_{};  // both by level
    std::vector<BoxGroup> groups_;                       // level by level
};

}  // namespace qnInternal
