/// @file
/// Contours, regions and region sets that carry one datum per vertex; provided for qcEdgelet.
#pragma once

#include <cntr/config.h>
#include <cntr/contour.h>
#include <cntr/region.h>
#include <cntr/regionst.h>

#include <qc/core/handle.h>
#include <qc/core/xform_base.h>
#include <qc/features/edgelet.h>

#include <vector>

template <class Datum>
class CNTR_EXPORT qcRegionT;

/// A contour with one edge point per vertex, in the same order, and a transform that maps contour
/// points to the positions of the data.
///
/// Setting the points rebuilds the data, with magnitude 0 and angle code 0; setting the data
/// rebuilds the points. The transform is shared between copies and never changed. Loading takes
/// points and data as they are stored.
template <class Datum>
class CNTR_EXPORT qcContourT : public virtual qcContour {
public:
    /// An empty closed contour without a transform: setting any points throws qcBadPointer; they then
    /// stand without data.
    qcContourT();

    /// A closed contour of the data, with a new identity transform.
    explicit qcContourT(std::vector<Datum> const& data);

    /// The same with a clone of the given transform; a null handle stands for the identity. Throws
    /// qcBadPointer where there are data and the transform has no inverse.
    qcContourT(std::vector<Datum> const& data,
               qcPtrHandle_const<qc2XformBase> const& dataFromPointsXform);

    /// Copies points, caches and data; shares the transform.
    qcContourT(qcContourT const& other);

    /// Like the copy constructor; a throw leaves this contour as it was.
    qcContourT& operator=(qcContourT const& other);

    ~qcContourT() override;

    /// Equal points and the same transform object; data, label and closed state are not compared. So
    /// a copy equals its source, while two contours built from the same data do not.
    bool operator==(qcContourT const& other) const;
    bool operator!=(qcContourT const& other) const { return !(*this == other); }

    /// The data, one for each point in the same order.
    std::vector<Datum> const& data() const { return data_; }

    /// Replaces the data; the points are rebuilt from them and everything derived is dropped. Throws
    /// qcBadPointer where there are data and the transform is missing or has no inverse.
    void data(std::vector<Datum> const& data);

    /// The transform, null where there is none.
    qcPtrHandle_const<qc2XformBase> dataFromPointsXform() const { return dataFromPointsXform_; }

    /// The datum of a point: mapped position, magnitude 0, angle code 0. Throws qcBadPointer without
    /// a transform.
    Datum datum(qcVector<2> const& point) const;

    /// The point of a datum: its position mapped back. Throws qcBadPointer where the transform is
    /// missing or has no inverse.
    qcVector<2> point(Datum const& datum);

    /// Not provided: throws qcPel::BadWindow.
    void convexHullT(qcRegionT<Datum>& hull) const;

    /// Not provided: throws qcPel::BadWindow.
    void mapT(qcXform<2> const& xform, qcContourT& result) const;

protected:
    void dispatchSerialize(qcArchive& archive) override;
    void serialize_(qcArchive& archive, unsigned char version) override;

    /// Rebuilds the data from the points. A throw leaves the data built so far.
    void makeDataConsistentWithPoints() override;

    /// Rebuilds the points from the data; the data stay as they are.
    void makePointsConsistentWithData() override;

private:
    friend class qcRegionT<Datum>;

    static qcPersistent* make();
    static qc_Instantiator sExemplar;

    void takeData(qcContourT const& other, std::vector<Datum>&& data) noexcept;

    qcPtrHandle<qc2XformBase> dataFromPointsXform_;
    std::vector<Datum> data_;
    bool inverseValid_ = false;
    qcPtrHandle<qc2XformBase> pointsFromDataXform_;  // meaningful while inverseValid_
};

/// A region whose outline carries one edge point per vertex.
///
/// It has a typed hole list beside the region's own: the typed one enters no query, is not tested
/// and is not stored. Reach the region's own as qcRegion::holes(); setting it rebuilds the data as
/// setting the points does, so magnitudes and angles are lost, and without a transform it throws
/// qcBadPointer. Archives keep outline, label and the region's own holes, not the data.
template <class Datum>
class CNTR_EXPORT qcRegionT : public qcContourT<Datum>, public qcRegion {
public:
    qcRegionT();

    /// A region of the data with a new identity transform.
    qcRegionT(std::vector<Datum> const& data, unsigned long label);

    /// The same with a clone of the given transform; a null handle stands for the identity.
    qcRegionT(std::vector<Datum> const& data, qcPtrHandle_const<qc2XformBase> const& xform,
              unsigned long label);

    /// A region of a data-carrying contour, whose transform it shares.
    qcRegionT(qcContourT<Datum> const& contour, unsigned long label);

    qcRegionT(qcRegionT const& other);

    /// Like the copy constructor; a throw leaves this region as it was.
    qcRegionT& operator=(qcRegionT const& other);

    ~qcRegionT() override;

    /// Compares as data-carrying contours: equal points, the same transform object.
    bool operator==(qcRegionT const& other) const;
    bool operator!=(qcRegionT const& other) const { return !(*this == other); }

    /// The typed holes.
    std::vector<qcPtrHandle_const<qcRegionT>> const& holes() const { return typedHoles_; }

    /// Replaces the typed holes and drops everything derived. No test is made.
    void holes(std::vector<qcPtrHandle_const<qcRegionT>> const& holes);

    /// Does nothing for true; throws qcContourDefs::RegionCannotBeSetOpen for false.
    void isClosed(bool closed) override;
    using qcRegion::isClosed;

    /// Draws one tick per datum: one unit long, centred on its position, at right angles to its
    /// angle. Outline and holes are not drawn.
    void draw(qcUITablet& tablet, qcColor const& color,
              qcUITablet::Layers const& layer) const override;
    using qcRegion::draw;

    /// Not provided: throws qcPel::BadWindow.
    void mapT(qcXform<2> const& xform, qcRegionT& result) const;

    /// Not provided: throws qcPel::BadWindow.
    void regularizeT(qcRegionT& result) const;

protected:
    void dispatchSerialize(qcArchive& archive) override;
    void serialize_(qcArchive& archive, unsigned char version) override;
    void makeDataConsistentWithPoints() override;
    void makePointsConsistentWithData() override;
    void cleanCacheInfo() override;

private:
    static qcPersistent* make();
    static qc_Instantiator sExemplar;

    std::vector<qcPtrHandle_const<qcRegionT>> typedHoles_;
};

/// A region set with a typed list of data-carrying regions beside the set's own list.
///
/// Built from typed regions, both lists hold the same objects in the same order, and all queries run
/// on the set's own list. The inherited setters take plain regions: the typed list then receives new
/// regions made from their outlines, with a new identity transform each, data of magnitude 0 and
/// angle code 0, label 0 and no holes; the set's own list keeps the plain ones.
template <class Datum>
class CNTR_EXPORT qcRegionSetT : public qcRegionSet {
public:
    qcRegionSetT();
    /// A set of the given regions, in order; a null handle is taken as it is.
    explicit qcRegionSetT(std::vector<qcPtrHandle_const<qcRegionT<Datum>>> const& regions);
    /// The same from handles to regions that may change.
    explicit qcRegionSetT(std::vector<qcPtrHandle<qcRegionT<Datum>>> regions);
    qcRegionSetT(qcRegionSetT const& other);

    /// Like the copy constructor; a throw leaves this set as it was.
    qcRegionSetT& operator=(qcRegionSetT const& other);

    ~qcRegionSetT() override;

    /// Compares the sets' own lists as plain region sets.
    bool operator==(qcRegionSetT const& other) const;
    bool operator!=(qcRegionSetT const& other) const { return !(*this == other); }

    /// A copy of the typed list.
    std::vector<qcPtrHandle_const<qcRegionT<Datum>>> regionsT() const { return typedRegions_; }

    /// Not provided: throws qcPel::BadWindow.
    void mapT(qcXform<2> const& xform, qcRegionSetT& result) const;

    /// Not provided: throws qcPel::BadWindow.
    void regularizeT(qcRegionSetT& result) const;

protected:
    void dispatchSerialize(qcArchive& archive) override;
    void serialize_(qcArchive& archive, unsigned char version) override;

    /// Rebuilds the typed list from the set's own. Throws qcBadPointer on a null handle.
    void makeDataConsistentWithPoints() override;

    /// Rebuilds the set's own list from the typed one.
    void makePointsConsistentWithData() override;

    void cleanCacheInfo() override;

private:
    static qcPersistent* make();
    static qc_Instantiator sExemplar;

    std::vector<qcPtrHandle_const<qcRegionT<Datum>>> typedRegions_;
};

// The library holds the one instantiation, and registers it at a certain place in its order.
template <>
qc_Instantiator qcContourT<qcEdgelet>::sExemplar;
template <>
qc_Instantiator qcRegionT<qcEdgelet>::sExemplar;
template <>
qc_Instantiator qcRegionSetT<qcEdgelet>::sExemplar;

extern template class qcContourT<qcEdgelet>;
extern template class qcRegionT<qcEdgelet>;
extern template class qcRegionSetT<qcEdgelet>;
