// Branch and bound over the hierarchy of edge boxes for the nearest edge and the nearest vertex.
#include "cntr/internal/nearest.h"

#include "cntr/internal/tolerances.h"

#include <qc/core/internal/plane.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

namespace qnInternal {

namespace {

/// Squares farther apart than this part of them have roots that differ.
constexpr double kRootsAgree = 1e-14;

/// Squares of the distances of boxes i and i + 1 from a point.
Pair squaredBoxDistances(BoxGroup const& boxes, std::size_t i, qcVector<2> const& point)
{
    Pair const x = both(point.x());
    Pair const y = both(point.y());
    Pair const dx = larger(larger(pairAt(boxes.minX, i) - x, x - pairAt(boxes.maxX, i)), Pair{});
    Pair const dy = larger(larger(pairAt(boxes.minY, i) - y, y - pairAt(boxes.maxY, i)), Pair{});
    return dx * dx + dy * dy;
}

/// Square of the distance of the box of two points from a third one.
double squaredBoxDistance(qcVector<2> const& a, qcVector<2> const& b, qcVector<2> const& point)
{
    Pair const p = pairOf(point);
    Pair const d =
        larger(larger(smaller(pairOf(a), pairOf(b)) - p, p - larger(pairOf(a), pairOf(b))), Pair{});
    Pair const squares = d * d;
    return squares[0] + squares[1];
}

/// The smallest squared distance of one of the points from `place`; infinite where none is finite.
double leastSquaredDistance(qcVector<2> const* points, std::size_t count, qcVector<2> const& place)
{
    Pair first = both(std::numeric_limits<double>::infinity());
    Pair second = first;
    std::size_t i = 0;
    for (; i + 4 <= count; i += 4) {
        first = smaller(squaredDistances(points[i], points[i + 1], place), first);
        second = smaller(squaredDistances(points[i + 2], points[i + 3], place), second);
    }
    first = smaller(first, second);
    double least = std::min(first[0], first[1]);
    for (; i < count; ++i) {
        qcVector<2> const d = points[i] - place;
        least = std::min(least, d * d);
    }
    return least;
}

/// The search for the smallest (distance, index) in lexicographic order.
class Search {
public:
    Search(EdgeIndex const& index, std::vector<qcVector<2>> const& points, qcVector<2> const& point)
        : index_(index), points_(points), point_(point),
          // The computed distance of an edge falls short of the true one by at most some ulps of the
          // distance and of the edge's length (cancellation in its cross product).
          shortfall_(1e-13 * (index.rootBox().max - index.rootBox().min).len())
    {
    }

    /// `look(leaf)` considers what lies in a leaf.
    template <class Look>
    Nearest run(Look const& look)
    {
        visit(index_.levelCount() - 1, 0, look);
        return best_;
    }

    void lookAtEdges(std::size_t leaf)
    {
        std::size_t const end = index_.leafEnd(leaf);
        for (std::size_t k = index_.leafBegin(leaf); k < end; ++k) {
            qcVector<2> const& from = edgeStart(points_, index_.closed(), k);
            qcVector<2> const& to = edgeEnd(points_, index_.closed(), k);
            if (!(squaredBoxDistance(from, to, point_) > limit_))
                consider(segmentDistance(from, to, point_), k);
        }
    }

    void lookAtVertices(std::size_t leaf)
    {
        std::size_t const begin = index_.leafBegin(leaf);
        std::size_t const end = index_.verticesEnd(leaf);
        double const least = leastSquaredDistance(points_.data() + begin, end - begin, point_);
        if (least > limit_)
            return;
        for (std::size_t i = begin; i < end; ++i)
            if (!(squaredDistance(i) > least * (1 + kRootsAgree)))
                consider(point_.distance(points_[i]), i);
    }

private:
    /// Beyond all squares of distances that are searched.
    static constexpr double kFar = 1e308;

    template <class Look>
    void visit(std::size_t level, std::size_t number, Look const& look)
    {
        Eight squares = taggedSquares(index_.group(level, number));
        while (true) {
            double const least = smallest(squares);
            if (least > limit_ || least >= kFar)
                return;
            std::size_t const i = tagOf(least);
            squares[i] = kFar;
            std::size_t const node = number * EdgeIndex::kFan + i;
            if (level == 0)
                look(index_.leafAt(node));
            else
                visit(level - 1, node, look);
        }
    }

    /// Squares of the distances of the boxes, each with its place in the last three bits: the least
    /// one then says by itself which box it is of. It loses a few ulps at most; squares that vanish gain
    /// less than any that counts.
    Eight taggedSquares(BoxGroup const& boxes) const
    {
        Eight squares;
        PairMask tags{0, 1};
        for (std::size_t i = 0; i < 4; ++i, tags += PairMask{2, 2}) {
            Pair const two = smaller(squaredBoxDistances(boxes, i, point_), both(kFar));
            PairMask const bits = (reinterpret_cast<PairMask>(two) & ~PairMask{7, 7}) | tags;
            std::memcpy(&squares[2 * i], &bits, sizeof bits);
        }
        return squares;
    }

    static std::size_t tagOf(double square)
    {
        std::uint64_t bits;
        std::memcpy(&bits, &square, sizeof bits);
        return bits & 7;
    }

    static double smallest(Eight const& numbers)
    {
        Pair const two = smaller(smaller(pairAt(numbers, 0), pairAt(numbers, 1)),
                                 smaller(pairAt(numbers, 2), pairAt(numbers, 3)));
        return std::min(two[0], two[1]);
    }

    double squaredDistance(std::size_t vertex) const
    {
        qcVector<2> const d = point_ - points_[vertex];
        return d * d;
    }

    void consider(double distance, std::size_t index)
    {
        if (distance < best_.distance || (distance == best_.distance && index < best_.index)) {
            best_ = {distance, index};
            double const reach = distance * (1 + 1e-13) + shortfall_;
            limit_ = reach * reach;
        }
    }

    EdgeIndex const& index_;
    std::vector<qcVector<2>> const& points_;
    qcVector<2> point_;
    double shortfall_;
    Nearest best_{std::numeric_limits<double>::infinity(), 0};
    double limit_ = std::numeric_limits<double>::infinity();
};

/// Below this the vertices are looked at one by one: points that were just copied, as those of a new
/// contour, are read sooner one number at a time.
constexpr std::size_t kFew = 8;

std::size_t nearestOfFew(std::vector<qcVector<2>> const& points, qcVector<2> const& point)
{
    double best = std::numeric_limits<double>::infinity();
    std::size_t index = 0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        double const d = point.distance(points[i]);
        if (d < best) {
            best = d;
            index = i;
        }
    }
    return index;
}

}  // namespace

std::size_t nearestVertex(std::vector<qcVector<2>> const& points, qcVector<2> const& point)
{
    if (points.size() < kFew)
        return nearestOfFew(points, point);
    double const least = leastSquaredDistance(points.data(), points.size(), point);
    if (!(least < std::numeric_limits<double>::infinity()))
        return 0;
    // The root of the least square is the least of the roots; those of somewhat larger squares may round
    // to the same, and the first of these counts.
    double const distance = std::sqrt(least);
    double const limit = least * (1 + kRootsAgree);
    for (std::size_t i = 0;; ++i) {
        qcVector<2> const d = point - points[i];
        if (d * d <= limit && d.len() == distance)
            return i;
    }
}

Nearest nearestEdge(EdgeIndex const& index, std::vector<qcVector<2>> const& points,
                    qcVector<2> const& point)
{
    Search search(index, points, point);
    return search.run([&](std::size_t leaf) { search.lookAtEdges(leaf); });
}

Nearest nearestVertex(EdgeIndex const& index, std::vector<qcVector<2>> const& points,
                      qcVector<2> const& point)
{
    Search search(index, points, point);
    return search.run([&](std::size_t leaf) { search.lookAtVertices(leaf); });
}

bool isRegularPoint(qcVector<2> const& point)
{
    // One by one: the larger of a number and NaN may be the number.
    return std::fabs(point.x()) <= kLargestRegular && std::fabs(point.y()) <= kLargestRegular;
}

}  // namespace qnInternal
