/// The types behind the owned caches of contours and region sets.
#pragma once

#include "cntr/internal/bounded_cache.h"
#include "cntr/internal/vertex_grid.h"
#include "cntr/internal/xform_order.h"

#include <qc/core/line.h>
#include <qc/core/shapes.h>

#include <memory>
#include <vector>

/// Per edge, in edge order: its segment and whether its ends differ. Never changed once built.
class qc_EdgeData {
public:
    std::vector<qcLineSeg> segments;
    std::vector<bool> valid;
};

/// Bounding rectangles by transform.
class qc_EncloseRectCache
    : public qnInternal::BoundedCache<qcXform<2>, qcRect, qnInternal::XformLess> {};

/// Vertex indices by direction angle in radians, not normalised.
class qc_ExtremalVertexCache : public qnInternal::BoundedCache<double, long> {};

namespace qnInternal {

/// A copy of the object, or null for null.
template <class T>
std::unique_ptr<T> copyOf(std::unique_ptr<T> const& source)
{
    return source ? std::make_unique<T>(*source) : nullptr;
}

/// The rectangle of `xform` from the cache, computed and entered where it is not there yet;
/// `stored` is called after an entry was made. A transform with NaN is never entered.
template <class Compute, class Stored>
qcRect cachedRect(std::unique_ptr<qc_EncloseRectCache>& cache, qcXform<2> const& xform, long bound,
                  Compute compute, Stored stored)
{
    if (!isOrdered(xform))
        return compute();
    if (!cache)
        cache = std::make_unique<qc_EncloseRectCache>();
    if (qcRect const* known = cache->find(xform))
        return *known;
    qcRect const rect = compute();
    cache->insert(xform, rect, bound);
    stored();
    return rect;
}

}  // namespace qnInternal
