// The lower and the upper half of the octagon against blocks of points, then against single ones.
#include <qc/core/internal/hull_filter.h>
#include <qc/core/internal/pair.h>

#include <algorithm>
#include <limits>

namespace qnInternal {

namespace {

using Points = std::vector<qcVector<2>>;

/// Rounding of a side of the octagon at a point within its bounds; infinite where the products may
/// leave the range of double, so that no point is left out.
double roundingOfSides(double width, double height)
{
    // Each of the two products is at most the area, and kSideRounding is below 4 of these units.
    double const area = width * height;
    return area >= 0x1p-900 ? 8 * 0x1p-53 * area : std::numeric_limits<double>::infinity();
}

/// The two edges of the octagon between neighbouring points that are outermost along x and y.
class Quarter {
public:
    Quarter(qcVector<2> const& from, qcVector<2> middle, qcVector<2> const& to)
    {
        // The sum that made it outermost was rounded: then the edges may lean the wrong way.
        auto const between = [](double a, double b, double c) {
            return (a <= b && b <= c) || (c <= b && b <= a);
        };
        if (!between(from.x(), middle.x(), to.x()) || !between(from.y(), middle.y(), to.y()))
            middle = to;
        // Where one edge has no length the other stands twice.
        qcVector<2> const start = middle == to ? from : middle;
        qcVector<2> const end = middle == from ? to : middle;
        fromX_ = Pair{from.x(), start.x()};
        fromY_ = Pair{from.y(), start.y()};
        alongX_ = Pair{end.x(), to.x()} - fromX_;
        alongY_ = Pair{end.y(), to.y()} - fromY_;
    }

    /// Whether the point lies to the left of both edges for certain.
    bool isLeft(double x, double y, double rounding) const
    {
        Pair const side = alongX_ * (both(y) - fromY_) - alongY_ * (both(x) - fromX_);
        return std::min(side[0], side[1]) > rounding;
    }

private:
    Pair fromX_;
    Pair fromY_;
    Pair alongX_;
    Pair alongY_;
};

/// The lower or upper half of the octagon: `left` of the outermost point at `x`, `right` of it. What is
/// left of both edges of the quarter at its own x lies on the inner side of a line between two points.
struct Half {
    Quarter left;
    Quarter right;
    double x;
    double rounding;

    bool hides(qcVector<2> const& p) const
    {
        return (p.x() > x ? right : left).isLeft(p.x(), p.y(), rounding);
    }

    /// Whether it hides all of a box, of which `y` is the side towards it: the edges of a quarter
    /// descend or ascend, so that they come nearest to one corner.
    bool hides(BlockBox const& box, double y) const
    {
        return (box.min.x() > x || left.isLeft(box.min.x(), y, rounding)) &&
               (box.max.x() <= x || right.isLeft(box.max.x(), y, rounding));
    }
};

}  // namespace

void chainCandidates(Points const& points, Outermost const& outermost, Points& below, Points& above)
{
    auto const& c = outermost.corners;
    double const rounding = roundingOfSides(c[4].x() - c[0].x(), c[6].y() - c[2].y());
    Half const lower{{c[0], c[1], c[2]}, {c[2], c[3], c[4]}, c[2].x(), rounding};
    Half const upper{{c[6], c[7], c[0]}, {c[4], c[5], c[6]}, c[6].x(), rounding};
    auto const keep = [&](std::size_t block, Half const& half, Points& kept) {
        std::size_t const end = std::min((block + 1) * kPointsPerBox, points.size());
        for (std::size_t i = block * kPointsPerBox; i < end; ++i)
            if (!half.hides(points[i]))
                kept.push_back(points[i]);
    };
    below.clear();
    above.clear();
    below.reserve(points.size());
    above.reserve(points.size());
    for (std::size_t block = 0; block < outermost.boxes.size(); ++block) {
        BlockBox const& box = outermost.boxes[block];
        if (!lower.hides(box, box.min.y()))
            keep(block, lower, below);
        if (!upper.hides(box, box.max.y()))
            keep(block, upper, above);
    }
}

}  // namespace qnInternal
