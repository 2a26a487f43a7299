// The exceptions of the fits.
#include <qc/core/fit_error.h>

qcFitError::Errors::Errors(wchar_t const* message) : qcExceptionWithString(message) {}
qcFitError::Errors::Errors(Errors const& other) : qcExceptionWithString(other) {}
qcFitError::Errors::~Errors() = default;

qcFitError::BadParams::BadParams() : Errors(L"fit: a parameter is out of range") {}
qcFitError::BadParams::BadParams(BadParams const& other) : Errors(other) {}
qcFitError::BadParams::~BadParams() = default;

long qcFitError::BadParams::errorNumber() const
{
    return 301;
}

void qcFitError::BadParams::suicideAndRethrow()
{
    suicideAndRethrowAs(this);
}

qcFitError::NotFinite::NotFinite() : Errors(L"fit: a coordinate or the result is not finite") {}
qcFitError::NotFinite::NotFinite(NotFinite const& other) : Errors(other) {}
qcFitError::NotFinite::~NotFinite() = default;

long qcFitError::NotFinite::errorNumber() const
{
    return 302;
}

void qcFitError::NotFinite::suicideAndRethrow()
{
    suicideAndRethrowAs(this);
}

qcFitError::TooFewPoints::TooFewPoints() : Errors(L"fit: too few distinct points") {}
qcFitError::TooFewPoints::TooFewPoints(TooFewPoints const& other) : Errors(other) {}
qcFitError::TooFewPoints::~TooFewPoints() = default;

long qcFitError::TooFewPoints::errorNumber() const
{
    return 303;
}

void qcFitError::TooFewPoints::suicideAndRethrow()
{
    suicideAndRethrowAs(this);
}

qcFitError::Degenerate::Degenerate() : Errors(L"fit: the points do not pin down one curve") {}
qcFitError::Degenerate::Degenerate(Degenerate const& other) : Errors(other) {}
qcFitError::Degenerate::~Degenerate() = default;

long qcFitError::Degenerate::errorNumber() const
{
    return 304;
}

void qcFitError::Degenerate::suicideAndRethrow()
{
    suicideAndRethrowAs(this);
}

qcFitError::NotAnEllipse::NotAnEllipse() : Errors(L"fit: the best curve is no ellipse") {}
qcFitError::NotAnEllipse::NotAnEllipse(NotAnEllipse const& other) : Errors(other) {}
qcFitError::NotAnEllipse::~NotAnEllipse() = default;

long qcFitError::NotAnEllipse::errorNumber() const
{
    return 305;
}

void qcFitError::NotAnEllipse::suicideAndRethrow()
{
    suicideAndRethrowAs(this);
}

qcFitError::ResidualTooLarge::ResidualTooLarge()
    : Errors(L"fit: the residual is larger than accepted")
{
}
qcFitError::ResidualTooLarge::ResidualTooLarge(ResidualTooLarge const& other) : Errors(other) {}
qcFitError::ResidualTooLarge::~ResidualTooLarge() = default;

long qcFitError::ResidualTooLarge::errorNumber() const
{
    return 306;
}

void qcFitError::ResidualTooLarge::suicideAndRethrow()
{
    suicideAndRethrowAs(this);
}
