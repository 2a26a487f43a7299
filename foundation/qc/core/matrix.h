/// \file
/// 2x2 matrices and affine transforms of the plane.
#pragma once

#include <qc/core/angle.h>
#include <qc/core/export.h>
#include <qc/core/vector.h>

#include <cmath>

template <int Dimension>
class qcMatrix;

/// A 2x2 matrix of doubles, trivially copyable. It carries its determinant along.
template <>
class qcMatrix<2> {
public:
    /// The identity.
    constexpr qcMatrix() noexcept : e00_(1.0), e01_(0.0), e10_(0.0), e11_(1.0), dt_(1.0) {}
    /// The elements row by row.
    constexpr qcMatrix(double e00, double e01, double e10, double e11) noexcept
        : e00_(e00), e01_(e01), e10_(e10), e11_(e11), dt_(0.0)
    {
        setdt();
    }
    /// The map that turns the x axis by `xAngle` and the y axis by `yAngle`, and stretches them by
    /// `xScale` and `yScale`. Equal angles and scales of 1 make it a rotation.
    explicit qcMatrix(qcRadian xAngle, qcRadian yAngle, double xScale, double yScale) noexcept
        : qcMatrix(xScale * std::cos(xAngle.toDouble()), -(yScale * std::sin(yAngle.toDouble())),
                   xScale * std::sin(xAngle.toDouble()), yScale * std::cos(yAngle.toDouble()))
    {
    }

    /// The element in `row` and `column`, each 0 or 1 (any other number counts as 1).
    constexpr double element(int row, int column) const noexcept
    {
        return row == 0 ? (column == 0 ? e00_ : e01_) : (column == 0 ? e10_ : e11_);
    }
    /// Sets one element.
    constexpr void element(int row, int column, double value) noexcept
    {
        (row == 0 ? (column == 0 ? e00_ : e01_) : (column == 0 ? e10_ : e11_)) = value;
        setdt();
    }
    /// e00 * e11 - e01 * e10.
    constexpr double determinant() const noexcept { return dt_; }

    /// The inverse. Throws qcMathError::Singular when there is none, or none that doubles hold:
    /// rows that are multiples of each other, elements that are not finite.
    QC_EXPORT qcMatrix inverse() const;

    /// The matrix product: applies `m` first.
    constexpr qcMatrix operator*(qcMatrix const& m) const noexcept
    {
        return {e00_ * m.e00_ + e01_ * m.e10_, e00_ * m.e01_ + e01_ * m.e11_,
                e10_ * m.e00_ + e11_ * m.e10_, e10_ * m.e01_ + e11_ * m.e11_};
    }
    /// The image of a vector.
    constexpr qcVector<2> operator*(qcVector<2> const& v) const noexcept
    {
        return {e00_ * v.x() + e01_ * v.y(), e10_ * v.x() + e11_ * v.y()};
    }

    /// Exact comparison of all elements.
    friend constexpr bool operator==(qcMatrix const& a, qcMatrix const& b) noexcept
    {
        return a.e00_ == b.e00_ && a.e01_ == b.e01_ && a.e10_ == b.e10_ && a.e11_ == b.e11_;
    }
    friend constexpr bool operator!=(qcMatrix const& a, qcMatrix const& b) noexcept
    {
        return !(a == b);
    }

private:
    /// Brings the kept determinant up to date; called after every change of an element.
    constexpr void setdt() noexcept { dt_ = e00_ * e11_ - e01_ * e10_; }

    double e00_;
    double e01_;
    double e10_;
    double e11_;
    double dt_;
};

template <int Dimension>
class qcXform;

/// An affine transform of the plane: p -> matrix * p + trans. Trivially copyable.
template <>
class qcXform<2> {
public:
    /// The identity.
    constexpr qcXform() noexcept = default;
    /// The map p -> matrix * p + trans.
    constexpr qcXform(qcMatrix<2> const& matrix, qcVector<2> const& trans) noexcept
        : matrix_(matrix), trans_(trans)
    {
    }

    /// The identity, there before any dynamic initialisation.
    QC_EXPORT static qcXform const I;

    /// The linear part.
    constexpr qcMatrix<2> const& matrix() const noexcept { return matrix_; }
    /// The translation, which follows the linear part.
    constexpr qcVector<2> const& trans() const noexcept { return trans_; }

    /// The image of a point.
    constexpr qcVector<2> operator*(qcVector<2> const& point) const noexcept
    {
        return matrix_ * point + trans_;
    }
    /// The transform that applies `inner` first.
    constexpr qcXform operator*(qcXform const& inner) const noexcept
    {
        return {matrix_ * inner.matrix_, *this * inner.trans_};
    }
    /// The way back. Throws qcMathError::Singular where the matrix has no inverse.
    QC_EXPORT qcXform inverse() const;

    friend constexpr bool operator==(qcXform const& a, qcXform const& b) noexcept
    {
        return a.matrix_ == b.matrix_ && a.trans_ == b.trans_;
    }
    friend constexpr bool operator!=(qcXform const& a, qcXform const& b) noexcept
    {
        return !(a == b);
    }

private:
    qcMatrix<2> matrix_;
    qcVector<2> trans_;
};
