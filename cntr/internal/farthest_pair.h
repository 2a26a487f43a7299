/// The two points of a contour that are farthest apart.
#pragma once

#include "cntr/internal/edge_index.h"

#include <qc/core/vector.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <vector>

namespace qnInternal {

/// Two points by index, first < second, and their distance; 0 where no two differ.
struct FarthestPair {
    double distance = 0;
    std::size_t first = 0;
    std::size_t second = 0;
};

/// The pair of largest rounded distance among those considered, the first in index order on a tie.
class FarthestSoFar {
public:
    /// Pairs whose squared distance is below `lowest` are never kept.
    explicit FarthestSoFar(std::vector<qcVector<2>> const& points, double lowest = 0)
        : points_(points), lowest_(lowest)
    {
    }

    /// `i` and `j` differ.
    void consider(std::size_t i, std::size_t j)
    {
        qcVector<2> const d = points_[i] - points_[j];
        if (!(d * d < lowest_))
            keep(i < j ? i : j, i < j ? j : i);
    }

    /// Pairs of smaller squared distance are smaller after rounding as well.
    double lowest() const { return lowest_; }

    FarthestPair const& pair() const { return best_; }

private:
    void keep(std::size_t first, std::size_t second)
    {
        double const d = points_[first].distance(points_[second]);
        bool const earlier = first < best_.first || (first == best_.first && second < best_.second);
        if (d > best_.distance || (d == best_.distance && d > 0 && earlier)) {
            best_ = {d, first, second};
            // A root that is not rounded to less is above the middle between two neighbours, the
            // square of the lower one is not, however it is rounded.
            double const below = d * (1 - 0x1p-53);
            lowest_ = below * below;
        }
    }

    std::vector<qcVector<2>> const& points_;
    FarthestPair best_;
    double lowest_;
};

/// The pair of largest distance, the first in index order on a tie. Quadratic.
FarthestPair farthestPair(std::vector<qcVector<2>> const& points);

/// The same through a regular index: pairs of boxes are looked at whose corners are far enough apart.
/// Where these are too many, as on a circle, the hull is asked.
FarthestPair farthestPair(std::vector<qcVector<2>> const& points, EdgeIndex const& index);

}  // namespace qnInternal
