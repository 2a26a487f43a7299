/// \file
/// Transforms of the plane as counted, persistent objects, for holders that must not know which
/// kind of transform they have.
#pragma once

#include <qc/core/angle.h>
#include <qc/core/export.h>
#include <qc/core/handle.h>
#include <qc/core/matrix.h>
#include <qc/core/persistent.h>
#include <qc/core/vector.h>

#include <cstddef>

class qcArchive;

/// A transform of the plane. Objects do not change but by assignment and loading.
class QC_EXPORT qc2XformBase : public virtual qcPersistent, public virtual qcRepBase {
public:
    ~qc2XformBase() override;

    /// A new object of the same class and value.
    virtual qcPtrHandle<qc2XformBase> clone() const = 0;

    /// The way back as a new transform; a null handle where there is none.
    virtual qcPtrHandle<qc2XformBase> inverseBase() const = 0;

    /// A new transform that applies `inner` first, then this one. Where both are linear it is a
    /// qc2XformLinear; where one is not it is a null handle, unless that class knows better.
    virtual qcPtrHandle<qc2XformBase> composeBase(qc2XformBase const& inner) const;

    /// The image of `point`.
    virtual qcVector<2> mapPoint(qcVector<2> const& point) const = 0;

    /// The affine transform that agrees with this one at `point` to first order.
    virtual qcXform<2> linearXform(qcVector<2> const& point) const = 0;

    /// Whether linearXform is the same at every point, so that it says everything.
    virtual bool isLinear() const = 0;

protected:
    qc2XformBase() noexcept {}
    qc2XformBase(qc2XformBase const& other) noexcept;
    qc2XformBase& operator=(qc2XformBase const& other) noexcept;

    void dispatchSerialize(qcArchive& archive) override = 0;
};

/// An affine transform as an object.
class QC_EXPORT qc2XformLinear : public qc2XformBase {
public:
    /// The identity.
    qc2XformLinear() noexcept {}
    /// The transform p -> matrix * p + trans.
    qc2XformLinear(qcMatrix<2> const& matrix, qcVector<2> const& trans) noexcept;
    /// The same transform as an object.
    explicit qc2XformLinear(qcXform<2> const& xform) noexcept;
    qc2XformLinear(qc2XformLinear const& other) noexcept;
    qc2XformLinear& operator=(qc2XformLinear const& other) noexcept;
    ~qc2XformLinear() override;

    /// Memory of the foundation, whichever allocator the caller's own module was built with.
    static void* operator new(std::size_t size);
    /// The memory at `place`.
    static void* operator new(std::size_t size, void* place) noexcept;
    /// Gives memory back to the foundation.
    static void operator delete(void* memory) noexcept;
    /// Does nothing: the memory is the caller's.
    static void operator delete(void* memory, void* place) noexcept;

    /// The transform as a value.
    qcXform<2> const& xform() const noexcept { return xform_; }
    /// The linear part.
    qcMatrix<2> const& matrix() const noexcept { return xform_.matrix(); }
    /// The translation.
    qcVector<2> const& trans() const noexcept { return xform_.trans(); }

    qcPtrHandle<qc2XformBase> clone() const override;
    /// Null for a singular matrix.
    qcPtrHandle<qc2XformBase> inverseBase() const override;
    qcVector<2> mapPoint(qcVector<2> const& point) const override;
    qcXform<2> linearXform(qcVector<2> const& point) const override;
    bool isLinear() const override;

protected:
    void dispatchSerialize(qcArchive& archive) override;

private:
    void serialize_(qcArchive& archive, unsigned char version);

    qcXform<2> xform_;
};

/// A rotation about the origin followed by a translation. Quarter turns are exact.
class QC_EXPORT qc2Rigid : public qc2XformBase {
public:
    /// The identity.
    qc2Rigid() noexcept {}
    /// The rotation by `angle`, then the translation by `trans`.
    qc2Rigid(qcDegree const& angle, qcVector<2> const& trans) noexcept;
    qc2Rigid(qc2Rigid const& other) noexcept;
    qc2Rigid& operator=(qc2Rigid const& other) noexcept;
    ~qc2Rigid() override;

    /// The angle as given.
    qcDegree angle() const noexcept { return angle_; }
    /// The translation as given.
    qcVector<2> const& trans() const noexcept { return xform_.trans(); }
    /// The transform as a value.
    qcXform<2> const& xform() const noexcept { return xform_; }

    qcPtrHandle<qc2XformBase> clone() const override;
    /// Again a qc2Rigid; null where angle or translation are not finite.
    qcPtrHandle<qc2XformBase> inverseBase() const override;
    qcVector<2> mapPoint(qcVector<2> const& point) const override;
    qcXform<2> linearXform(qcVector<2> const& point) const override;
    bool isLinear() const override;

protected:
    void dispatchSerialize(qcArchive& archive) override;

private:
    void serialize_(qcArchive& archive, unsigned char version);

    qcDegree angle_;
    qcXform<2> xform_;  // the same as matrix and vector
};
