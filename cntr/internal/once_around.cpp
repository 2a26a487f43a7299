// The areas of the triangles that a point between some vertices makes with the edges.
#include "cntr/internal/once_around.h"

#include "cntr/internal/edge_hits.h"

#include <qc/core/internal/pair.h>

#include <algorithm>
#include <cstddef>
#include <limits>

namespace qnInternal {

namespace {

/// The middle of a chord, which lies inside of a convex outline.
qcVector<2> somewhereInside(std::vector<qcVector<2>> const& points)
{
    return (points.front() + points[points.size() / 2]) * 0.5;
}

/// The doubled areas of triangles with a point, and how often their sides there turn upwards.
class Fan {
public:
    Fan(qcVector<2> const& apex, qcVector<2> const& first)
        : apex_(pairOf(apex)), last_(pairOf(first) - apex_)
    {
    }

    /// Takes the edges to the first point and on to the second one.
    void add(qcVector<2> const& first, qcVector<2> const& second)
    {
        Pair const one = pairOf(first) - apex_;
        Pair const other = pairOf(second) - apex_;
        Pair const areas = Pair{last_[0], one[0]} * Pair{one[1], other[1]} -
                           Pair{last_[1], one[1]} * Pair{one[0], other[0]};
        least_ = smaller(areas, least_);
        most_ = larger(areas, most_);
        ups_ += static_cast<unsigned>(last_[1] < 0 && !(one[1] < 0)) +
                static_cast<unsigned>(one[1] < 0 && !(other[1] < 0));
        last_ = other;
    }

    void add(qcVector<2> const& point)
    {
        Pair const other = pairOf(point) - apex_;
        Pair const area = both(last_[0] * other[1] - last_[1] * other[0]);
        least_ = smaller(area, least_);
        most_ = larger(area, most_);
        ups_ += static_cast<unsigned>(last_[1] < 0 && !(other[1] < 0));
        last_ = other;
    }

    /// The least area where all have one sign, else 0 or less.
    double leastOfOneSign() const
    {
        return std::max(std::min(least_[0], least_[1]), -std::max(most_[0], most_[1]));
    }

    /// Turning one way, the edges go around as often as that.
    unsigned ups() const { return ups_; }

private:
    Pair apex_;
    Pair last_;
    Pair least_ = both(std::numeric_limits<double>::infinity());
    Pair most_ = -least_;
    unsigned ups_ = 0;
};

}  // namespace

double leastTriangleOnceAround(std::vector<qcVector<2>> const& points)
{
    constexpr std::size_t kRun = 8;
    std::size_t const count = points.size();
    if (count < 3)
        return 0;
    Fan fan(somewhereInside(points), points.back());
    std::size_t i = 0;
    for (; i + 1 < count; i += 2) {
        fan.add(points[i], points[i + 1]);
        if (i % kRun == 0 && !(fan.leastOfOneSign() > 0))
            return 0;
    }
    if (i < count)
        fan.add(points[i]);
    return fan.ups() == 1 ? std::max(fan.leastOfOneSign(), 0.0) : 0;
}

bool keepsEdgesApart(double leastTriangle, Box const& box)
{
    double const reach = (box.max - box.min).len();
    double const apart = 2 * marginAt(8 * largestCoordinate(box));
    return leastTriangle * leastTriangle > 2 * reach * reach * reach * apart;
}

}  // namespace qnInternal
