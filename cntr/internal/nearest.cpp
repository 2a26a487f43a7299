// Branch and bound over the hierarchy of edge boxes for the nearest edge and the nearest vertex.
#include "cntr/internal/nearest.h"

#include "cntr/internal/tolerances.h"

#include <qc/core/internal/plane.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

namespace qnInternal {

namespace {

/// Squares farther apart than this part of them have roots that differ.
constexpr double kRootsAgree = 1e-14;

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

/// Eight numbers in registers.
using FourPairs = std::array<Pair, 4>;

/// The smallest of eight numbers. Of places that hold NaN there are none before others.
double smallest(FourPairs const& numbers)
{
    Pair const two = smaller(smaller(numbers[3], numbers[2]), smaller(numbers[1], numbers[0]));
    return smaller(Pair{two[1], two[0]}, two)[0];
}

/// Eight squared distances, each with its place in its last three bits: the least one then says by itself
/// which it is. That takes a few ulps from it at most, and makes NaN of infinity, which is never the least.
class TaggedSquares {
public:
    /// `squaresOfTwo(i)` gives those at the places 2 i and 2 i + 1; place 0 is finite.
    template <class SquaresOfTwo>
    explicit TaggedSquares(SquaresOfTwo const& squaresOfTwo)
    {
        PairMask tags{0, 1};
        for (std::size_t i = 0; i < squares_.size(); ++i, tags += PairMask{2, 2}) {
            auto const bits = reinterpret_cast<PairMask>(larger(squaresOfTwo(i), both(kVanishing)));
            squares_[i] = reinterpret_cast<Pair>((bits & ~PairMask{7, 7}) | tags);
        }
    }

    /// Infinite when all are forgotten.
    double least() const { return smallest(squares_); }

    static std::size_t placeOf(double square)
    {
        std::uint64_t bits;
        std::memcpy(&bits, &square, sizeof bits);
        return bits & 7;
    }

    void forget(double square)
    {
        constexpr double kGone = std::numeric_limits<double>::infinity();
        // In registers: to write one number and read pairs would have to wait for memory.
        for (Pair& two : squares_)
            two = larger(reinterpret_cast<Pair>((two == both(square)) &
                                                reinterpret_cast<PairMask>(both(kGone))),
                         two);
    }

private:
    /// What squares that vanish become: no subnormal numbers, since a program may have these taken for 0 and
    /// thus for each other, but far below the slack of a search. A regular outline of some extent has one of
    /// 1e-136 or more, so that the slack is 1e-288 or more.
    static constexpr double kVanishing = 1e-300;

    FourPairs squares_;
};

/// The edges of an outline, seen from a point.
class Edges {
public:
    Edges(EdgeIndex const& index, std::vector<qcVector<2>> const& points, qcVector<2> const& point)
        : points_(points), point_(point), closed_(index.closed())
    {
    }

    std::size_t count() const { return edgeCount(points_.size(), closed_); }

    /// What the plain loop takes for the distance.
    double distance(std::size_t k) const
    {
        return segmentDistance(edgeStart(points_, closed_, k), edgeEnd(points_, closed_, k),
                               point_);
    }

    /// Squares of the distances of the edges from `begin` on, up to some ulps of the distances and of
    /// the lengths.
    FourPairs squares(std::size_t begin) const
    {
        FourPairs squares;
        Pair from = pairOf(edgeStart(points_, closed_, begin));
        qcVector<2> const* to = &edgeEnd(points_, closed_, begin);
        for (Pair& two : squares) {
            Pair const middle = pairOf(*to++);
            Pair const end = pairOf(*to++);
            two = squaresOfTwo(from, middle, end);
            from = end;
        }
        return squares;
    }

private:
    Pair squaresOfTwo(Pair from, Pair middle, Pair end) const
    {
        Pair const x = Pair{from[0], middle[0]};
        Pair const y = Pair{from[1], middle[1]};
        Pair const alongX = Pair{middle[0], end[0]} - x;
        Pair const alongY = Pair{middle[1], end[1]} - y;
        Pair const toX = point_.x() - x;
        Pair const toY = point_.y() - y;
        Pair const part = (toX * alongX + toY * alongY) / (alongX * alongX + alongY * alongY);
        Pair const t = smaller(larger(part, Pair{}), both(1));  // 0 for the 0/0 of a single point
        Pair const dx = toX - t * alongX;
        Pair const dy = toY - t * alongY;
        return dx * dx + dy * dy;
    }

    std::vector<qcVector<2>> const& points_;
    qcVector<2> point_;
    bool closed_;
};

/// The vertices of an outline, seen from a point.
class Vertices {
public:
    Vertices(EdgeIndex const& /*index*/, std::vector<qcVector<2>> const& points,
             qcVector<2> const& point)
        : points_(points), point_(point)
    {
    }

    std::size_t count() const { return points_.size(); }
    double distance(std::size_t i) const { return point_.distance(points_[i]); }

    FourPairs squares(std::size_t begin) const
    {
        FourPairs squares;
        qcVector<2> const* at = points_.data() + begin;
        for (Pair& two : squares) {
            two = squaredDistances(at[0], at[1], point_);
            at += 2;
        }
        return squares;
    }

private:
    std::vector<qcVector<2>> const& points_;
    qcVector<2> point_;
};

/// The search for the smallest (distance, index) in lexicographic order. Squares say which items are
/// near; only those that may be the nearest are asked for their distance, at the end.
template <class Items>
class NearestSearch {
public:
    NearestSearch(EdgeIndex const& index, std::vector<qcVector<2>> const& points,
                  qcVector<2> const& point)
        : index_(index), items_(index, points, point), count_(items_.count()), x_(both(point.x())),
          y_(both(point.y()))
    {
        qcVector<2> const extent = index.rootBox().max - index.rootBox().min;
        slack_ = kMoreOfExtent * (extent * extent);
    }

    std::size_t run()
    {
        if (count_ < kEight)
            for (std::size_t i = 0; i < count_; ++i)
                consider(i);
        else
            visitTop(index_.levelCount() - 1);
        if (count_ > index_.leafCount() * kEight)  // there is a vertex behind the last edge
            lookAtEight(count_ - kEight);
        if (candidateCount_ > 1)
            decide();
        return candidates_[0];
    }

private:
    static constexpr std::size_t kEight = EdgeIndex::kFan;

    /// Distances and roots of squares are right to 1e-13 of themselves and of the outline's extent. So what
    /// has a square larger by these parts of itself and of the extent's square may be as near.
    static constexpr double kMoreOfSquare = 1e-9;
    static constexpr double kMoreOfExtent = 1e-16;

    /// The top often holds two boxes only, which are cheaper to tell apart than eight.
    void visitTop(std::size_t level)
    {
        if (level == 0 || index_.boxesIn(level, 0) != 2)
            return visit(level, 0);
        Pair const squares = squaredBoxDistances(index_.group(level, 0), 0);
        std::size_t const nearer = squares[1] < squares[0] ? 1 : 0;
        visit(level - 1, nearer);
        if (squares[1 - nearer] <= limit_)
            visit(level - 1, 1 - nearer);
    }

    void visit(std::size_t level, std::size_t number)
    {
        BoxGroup const& boxes = index_.group(level, number);
        TaggedSquares squares([&](std::size_t i) { return squaredBoxDistances(boxes, i); });
        while (true) {
            double const least = squares.least();
            if (least > limit_)
                return;
            std::size_t const node = number * EdgeIndex::kFan + TaggedSquares::placeOf(least);
            if (level == 0)
                lookAtEight(std::min(index_.leafBegin(index_.leafAt(node)), count_ - kEight));
            else
                visit(level - 1, node);
            squares.forget(least);
        }
    }

    /// Squares of the distances of the boxes 2 i and 2 i + 1; infinite where there is none.
    Pair squaredBoxDistances(BoxGroup const& boxes, std::size_t i) const
    {
        Pair const x = smaller(larger(x_, pairAt(boxes.minX, i)), pairAt(boxes.maxX, i));
        Pair const y = smaller(larger(y_, pairAt(boxes.minY, i)), pairAt(boxes.maxY, i));
        return (x - x_) * (x - x_) + (y - y_) * (y - y_);
    }

    void lookAtEight(std::size_t begin)
    {
        FourPairs const squares = items_.squares(begin);
        double const least = smallest(squares);
        if (least > limit_)
            return;
        double const limit = least * (1 + kMoreOfSquare) + slack_;
        if (limit < least_)
            candidateCount_ = 0;
        least_ = std::min(least, least_);
        limit_ = std::min(limit, limit_);
        forEachBit(eightBits([&](std::size_t i) { return squares[i] <= both(limit_); }),
                   [&](std::size_t i) { consider(begin + i); });
    }

    void consider(std::size_t item)
    {
        if (candidateCount_ == candidates_.size())
            decide();
        candidates_[candidateCount_++] = item;
    }

    /// Leaves the nearest of the candidates, the first on a tie.
    [[gnu::noinline]] void decide()
    {
        std::size_t nearest = candidates_[0];
        double least = items_.distance(nearest);
        for (std::size_t i = 1; i < candidateCount_; ++i) {
            std::size_t const item = candidates_[i];
            double const distance = items_.distance(item);
            if (distance < least || (distance == least && item < nearest)) {
                nearest = item;
                least = distance;
            }
        }
        candidates_[0] = nearest;
        candidateCount_ = 1;
    }

    EdgeIndex const& index_;
    Items items_;
    std::size_t count_;
    Pair x_;
    Pair y_;
    double slack_;
    double least_ = std::numeric_limits<double>::max();  // square of a distance
    double limit_ =
        std::numeric_limits<double>::max();  // what is farther than its root is not nearest
    std::size_t candidateCount_ = 0;
    std::array<std::size_t, 16> candidates_;
};

/// Below this the vertices are looked at one by one: points that were just copied, as those of a new
/// contour, are read sooner one number at a time.
constexpr std::size_t kFewVertices = 8;

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
    if (points.size() < kFewVertices)
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

std::size_t nearestEdge(EdgeIndex const& index, std::vector<qcVector<2>> const& points,
                        qcVector<2> const& point)
{
    return NearestSearch<Edges>(index, points, point).run();
}

std::size_t nearestVertex(EdgeIndex const& index, std::vector<qcVector<2>> const& points,
                          qcVector<2> const& point)
{
    return NearestSearch<Vertices>(index, points, point).run();
}

bool isRegularPoint(qcVector<2> const& point)
{
    // One by one: the larger of a number and NaN may be the number.
    return std::fabs(point.x()) <= kLargestRegular && std::fabs(point.y()) <= kLargestRegular;
}

}  // namespace qnInternal
