// The outer hull of a boundary walk: loops are cut, inner ones dropped, touching ones joined.
#include "cntr/region_loops.h"

#include "cntr/internal/box_of_points.h"
#include "cntr/internal/box_tree.h"
#include "cntr/internal/linked_loops.h"

#include <cntr/region.h>

#include <algorithm>
#include <memory>
#include <numeric>
#include <optional>

namespace {

using Points = std::vector<qcVector<2>>;
using qnInternal::FigureBox;

/// The loops of a walk by number, those that were dropped null.
class FoundLoops {
public:
    explicit FoundLoops(qnInternal::LinkedLoops const& linked)
    {
        std::vector<FigureBox> boxes;
        for (std::size_t i = 0; i < linked.loopCount(); ++i) {
            loops_.push_back(
                std::make_unique<qcRegion const>(linked.points(i), qcContourDefs::eIgnore));
            boxes.push_back(boxOfLoop(loops_.back()->points()));
        }
        tree_.emplace(boxes);
    }

    std::size_t count() const { return loops_.size(); }
    void drop(std::size_t loop) { loops_[loop].reset(); }

    /// Whether the middle of the first edge of `loop` lies in another one.
    bool liesInAnother(std::size_t loop)
    {
        Points const& points = loops_[loop]->points();
        qcVector<2> const middle = (points[0] + points[1]) / 2.0;
        tree_->collect(qnInternal::boxOf(middle), 0, near_);
        return std::any_of(near_.begin(), near_.end(), [&](std::size_t other) {
            return other != loop && loops_[other] && loops_[other]->inside(middle, true);
        });
    }

private:
    /// Only an area, of finite points, is sure to hold nothing outside its box.
    static FigureBox boxOfLoop(Points const& points)
    {
        auto const extent = qnInternal::boxOfPoints(points);
        return points.size() >= 3 && extent.finite ? FigureBox(extent.box) : std::nullopt;
    }

    std::vector<std::unique_ptr<qcRegion const>> loops_;
    std::optional<qnInternal::BoxTree> tree_;
    std::vector<std::size_t> near_;
};

void dropInnerLoops(qnInternal::LinkedLoops& linked)
{
    FoundLoops loops(linked);
    std::vector<std::size_t> numberAt(loops.count());  // by place in the list
    std::iota(numberAt.begin(), numberAt.end(), std::size_t{0});
    // A loop that lies in no other still lies in none when one is removed, so each is asked once.
    std::size_t place = 0;
    while (place < numberAt.size()) {
        if (!loops.liesInAnother(numberAt[place])) {
            ++place;
            continue;
        }
        loops.drop(numberAt[place]);
        numberAt[place] = numberAt.back();
        numberAt.pop_back();
        linked.remove(place);
    }
}

}  // namespace

namespace qnInternal {

Points outermostLoops(Points const& boundary)
{
    LinkedLoops loops(boundary);
    loops.cutAtDoubleVertices();
    dropInnerLoops(loops);
    loops.joinToFirst();  // the others are joined among themselves, which nobody would see
    return loops.points(0);
}

}  // namespace qnInternal
