/// @file
/// qcRegionSet: an ordered collection of shared regions treated as one figure.
#pragma once

#include <cntr/config.h>
#include <cntr/contour_defs.h>
#include <cntr/region.h>

#include <array>
#include <memory>
#include <optional>
#include <vector>

class qc_EncloseRectCache;

/// Regions taken together: a point is inside the set when it is inside any of them.
///
/// The set holds its regions through counted const handles and never changes them. A caller who
/// keeps a handle of his own and changes a region leaves the set's caches stale: nothing tells it.
/// Null handles may be added; every operation that reaches one throws qcBadPointer.
///
/// Queries fill caches of the set and of its regions: a set and all that it shares belong to one
/// thread at a time. What each query costs stands in docs/cost.md.
///
/// A list of regions in braces fits two overloads each: give a vector with its type.
class CNTR_EXPORT qcRegionSet : public virtual qcPersistent, public virtual qcRepBase {
public:
    /// A set without regions.
    qcRegionSet() : qcRegionSet(std::vector<qcPtrHandle_const<qcRegion>>()) {}

    /// A set of the given regions, in order. `mode` says what becomes of outlines that cross
    /// themselves or each other; what outerHull() and regularize() throw passes.
    explicit qcRegionSet(std::vector<qcPtrHandle_const<qcRegion>> const& regions,
                         qcContourDefs::IntersectionMode mode = qcContourDefs::eIgnore);
    /// The same from handles to regions that may change.
    explicit qcRegionSet(std::vector<qcPtrHandle<qcRegion>> const& regions,
                         qcContourDefs::IntersectionMode mode = qcContourDefs::eIgnore);

    /// Copies handles and caches; regions and cached result sets are shared.
    qcRegionSet(qcRegionSet const& other);

    /// Like the copy constructor; a throw leaves this set as it was. No change is notified.
    qcRegionSet& operator=(qcRegionSet const& other);

    ~qcRegionSet() override;

    /// Equal numbers of regions, equal one by one in order (outlines compared, holes not). Throws
    /// qcBadPointer on a null handle that is reached.
    bool operator==(qcRegionSet const& other) const;
    bool operator!=(qcRegionSet const& other) const { return !(*this == other); }

    /// A copy of the list of regions.
    std::vector<qcPtrHandle_const<qcRegion>> regions() const { return regions_; }

    /// Replaces the regions, then applies `mode`; a throw while it is applied leaves the new regions
    /// in place and the caches dropped.
    void regions(std::vector<qcPtrHandle_const<qcRegion>> const& regions,
                 qcContourDefs::IntersectionMode mode);
    /// The same from handles to regions that may change.
    void regions(std::vector<qcPtrHandle<qcRegion>> const& regions,
                 qcContourDefs::IntersectionMode mode);

    /// Appends one region, then applies `mode` as regions() does.
    void add(qcPtrHandle_const<qcRegion> const& region, qcContourDefs::IntersectionMode mode);

    /// The cache of encloseRect() holds at most this many results plus one.
    long cachedVectorSize() const { return cachedVectorSize_; }

    /// Sets that bound; a fuller cache is not trimmed. Throws qcContourDefs::BadParams on a negative
    /// number.
    void cachedVectorSize(long size);

    /// Sum of the regions' areas; 0 for an empty set. What a region throws passes.
    double area(bool considerHoles) const;

    /// Area-weighted mean of the regions' centres; (0, 0) where the areas sum to no more than 1e-15.
    /// Throws qcContourDefs::EmptyRegionSet on an empty set.
    qcVector<2> centerOfMass(bool considerHoles) const;

    /// Central second moments of all regions together. Throws qcContourDefs::EmptyRegionSet on an
    /// empty set, and with `considerHoles` what a region with holes throws.
    qcMatrix<2> inertiaMatrix(bool considerHoles) const;

    /// Whether any region contains `point`.
    bool inside(qcVector<2> const& point, bool considerHoles) const;

    /// The smallest of the regions' distances, infinity where none is comparable. Throws
    /// qcContourDefs::EmptyRegionSet on an empty set.
    double distToPoint(qcVector<2> const& point, bool verticesOnly, bool considerHoles,
                       bool insideIsZero) const;

    /// Whether a region's outline crosses itself or two regions' outlines meet; holes are not looked
    /// at, nor is a region inside another. After a throw the answer reached so far stays cached until
    /// the set changes.
    bool isSelfIntersecting() const;

    /// Rectangle around all outlines mapped by `xform`. The results of the last few transforms are
    /// kept (one with NaN elements is not). Throws qcContourDefs::EmptyRegionSet on an empty set.
    qcRect encloseRect(qcXform<2> const& xform) const;

    /// Assigns to `result` a set in which regions whose outlines meet are spliced into one and every
    /// region is regularised.
    ///
    /// One pass over the pairs of regions: after a splice the last region takes the place of the
    /// second one and is not compared with the spliced one again, so where three or more meet,
    /// regions of the result can still overlap. A set that isSelfIntersecting() denies is assigned
    /// as it is. Computed once and kept; `result` may be this set. Errors as the region's
    /// regularize().
    void regularize(qcRegionSet& result) const;

    /// Like regularize(), with the outer hull of every region.
    void outerHull(qcRegionSet& result) const;

    /// Draws every region with its own three-argument draw(): plain regions draw nothing.
    void draw(qcUITablet& tablet, qcColor const& color, qcUITablet::Layers const& layer) const;

protected:
    void dispatchSerialize(qcArchive& archive) override;

    /// Streams the fields of `version`; throws qcArchive::UnknownVersion for one it does not know.
    virtual void serialize_(qcArchive& archive, unsigned char version);

    /// Brings what a derived class keeps per region in step with the list. Here: drops the caches.
    virtual void makeDataConsistentWithPoints();

    /// Brings the list in step with what a derived class keeps. Here: drops the caches.
    virtual void makePointsConsistentWithData();

    /// Notifies the change and drops everything derived from the regions.
    virtual void cleanCacheInfo();

    /// Replaces the list and nothing else, caches included.
    void setRegions(std::vector<qcPtrHandle_const<qcRegion>> const& regions);

    /// Throws qcContourDefs::EmptyRegionSet on an empty set.
    void checkEmptyRegionSet() const;

private:
    /// A result set, held for all copies; the handle stays beyond `valid` until it is replaced.
    struct Result {
        bool valid = false;
        qcPtrHandle_const<qcRegionSet> set;
    };

    static qcPersistent* make();
    static qc_Instantiator sExemplar;

    void dropCaches() noexcept;
    void applyMode(qcContourDefs::IntersectionMode mode);
    bool anyTwoOutlinesMeet() const;

    // Nothing for null handles and for outlines that may be anywhere.
    std::vector<std::optional<qnInternal::Box>> outlineBoxes() const;

    void cleaned(Result& cache, bool useOuterHull, qcRegionSet& result) const;
    void outerHullRegularize(qcRegionSet& result, bool useOuterHull) const;
    std::vector<qcPtrHandle_const<qcRegion>> mergedRegions() const;

    std::vector<qcPtrHandle_const<qcRegion>> regions_;
    long cachedVectorSize_ = 3;

    // By considerHoles.
    mutable std::array<std::optional<qcVector<2>>, 2> centerOfMass_;
    mutable std::array<std::optional<double>, 2> area_;
    mutable std::array<std::optional<qcMatrix<2>>, 2> inertiaMatrix_;
    mutable std::optional<bool> selfIntersecting_;
    mutable std::unique_ptr<qc_EncloseRectCache> encloseRectCache_;
    mutable Result regularized_;
    mutable Result outerHull_;
};
