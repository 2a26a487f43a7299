// Building the tree of figures' boxes along a curve, and looking a place up in it.
#include "cntr/internal/box_tree.h"

#include "cntr/internal/curve_order.h"
#include "cntr/internal/tolerances.h"

#include <algorithm>

namespace qnInternal {

namespace {

/// Up to here the boxes stand as they come: so few groups are looked at sooner than sorted.
constexpr std::size_t kInListOrder = 4 * BoxGroup::kSize;

bool hasPlace(FigureBox const& box)
{
    return box && largestCoordinate(*box) <= kLargestRegular;
}

Box boxOfAll(std::vector<FigureBox> const& boxes)
{
    Box root = BoxGroup().all();
    for (auto const& box : boxes)
        if (hasPlace(box)) {
            enclose(root, box->min);
            enclose(root, box->max);
        }
    return root;
}

}  // namespace

BoxTree::BoxTree(std::vector<FigureBox> const& boxes)
    : boxes_(std::max<std::size_t>(boxes.size(), 1)), count_(boxes.size())
{
    CurveOverBox const curve(boxOfAll(boxes));
    std::vector<PlaceOnCurve> places;
    places.reserve(boxes.size());
    for (std::size_t i = 0; i < boxes.size(); ++i)
        if (hasPlace(boxes[i]))
            places.push_back({curve.along(*boxes[i]), static_cast<std::uint32_t>(i)});
        else
            anywhere_.push_back(i);
    if (places.size() > kInListOrder)
        sortAlongCurve(places);
    for (std::size_t node = 0; node < places.size(); ++node) {
        boxes_.lowest(node / BoxGroup::kSize)
            .set(node % BoxGroup::kSize, *boxes[places[node].number]);
        numberAt_.push_back(places[node].number);
    }
    boxes_.addLevelsAbove();
}

void BoxTree::collect(FigureBox const& place, std::size_t begin, std::vector<std::size_t>& found,
                      std::size_t most) const
{
    found.clear();
    if (!place) {
        for (std::size_t i = begin; i < count_; ++i)
            found.push_back(i);
        return;
    }
    std::copy_if(anywhere_.begin(), anywhere_.end(), std::back_inserter(found),
                 [&](std::size_t i) { return i >= begin; });
    TwiceBox const wanted(*place);
    auto const touches = [&](BoxGroup const& group) {
        return found.size() > most ? 0 : group.overlapping(wanted);
    };
    boxes_.forEachBox(touches, [&](std::size_t node, Box const&) {
        if (numberAt_[node] >= begin)
            found.push_back(numberAt_[node]);
    });
    std::sort(found.begin(), found.end());
}

}  // namespace qnInternal
