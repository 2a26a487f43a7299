// Short runs of boxes are joined as in a sum of powers of two.
#include "cntr/internal/growing_boxes.h"

namespace qnInternal {

std::size_t GrowingBoxes::beginOfNextRun()
{
    std::size_t begin = inRuns_;
    while (!runs_.empty() && begin - runs_.back().begin <= 2 * (numbers_.size() - begin)) {
        begin = runs_.back().begin;
        runs_.pop_back();
    }
    auto const first = numbers_.begin() + static_cast<std::ptrdiff_t>(begin);
    std::sort(first, numbers_.end());
    numbers_.erase(std::unique(first, numbers_.end()), numbers_.end());
    return begin;
}

}  // namespace qnInternal
