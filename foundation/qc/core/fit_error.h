/// \file
/// What the fitting services throw.
#pragma once

#include <qc/core/exception.h>
#include <qc/core/export.h>

/// Failures of the fits of curves to points.
class QC_EXPORT qcFitError {
public:
    class Errors;
    class BadParams;
    class NotFinite;
    class TooFewPoints;
    class Degenerate;
    class NotAnEllipse;
    class ResidualTooLarge;
};

/// Base of the failures of fits; carries a message.
class QC_EXPORT qcFitError::Errors : public qcExceptionWithString {
public:
    ~Errors() override;

protected:
    /// With a message.
    explicit Errors(wchar_t const* message);
    Errors(Errors const& other);
};

/// A parameter outside its range.
class QC_EXPORT qcFitError::BadParams : public qcFitError::Errors {
public:
    BadParams();
    BadParams(BadParams const& other);
    ~BadParams() override;
    long errorNumber() const override;
    void suicideAndRethrow() override;
};

/// A coordinate that is infinite or NaN, or a result beyond the range of double.
class QC_EXPORT qcFitError::NotFinite : public qcFitError::Errors {
public:
    NotFinite();
    NotFinite(NotFinite const& other);
    ~NotFinite() override;
    long errorNumber() const override;
    void suicideAndRethrow() override;
};

/// Fewer distinct points than the curve has freedoms.
class QC_EXPORT qcFitError::TooFewPoints : public qcFitError::Errors {
public:
    TooFewPoints();
    TooFewPoints(TooFewPoints const& other);
    ~TooFewPoints() override;
    long errorNumber() const override;
    void suicideAndRethrow() override;
};

/// The points do not pin down one curve: they lie on a line, or on two.
class QC_EXPORT qcFitError::Degenerate : public qcFitError::Errors {
public:
    Degenerate();
    Degenerate(Degenerate const& other);
    ~Degenerate() override;
    long errorNumber() const override;
    void suicideAndRethrow() override;
};

/// The best curve of second degree is no ellipse.
class QC_EXPORT qcFitError::NotAnEllipse : public qcFitError::Errors {
public:
    NotAnEllipse();
    NotAnEllipse(NotAnEllipse const& other);
    ~NotAnEllipse() override;
    long errorNumber() const override;
    void suicideAndRethrow() override;
};

/// The points lie further from the fitted curve than the caller accepts.
class QC_EXPORT qcFitError::ResidualTooLarge : public qcFitError::Errors {
public:
    ResidualTooLarge();
    ResidualTooLarge(ResidualTooLarge const& other);
    ~ResidualTooLarge() override;
    long errorNumber() const override;
    void suicideAndRethrow() override;
};
