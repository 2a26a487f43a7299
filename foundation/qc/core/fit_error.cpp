// The exceptions of the fits.
#include <qc/core/fit_error.h>
#include <qc/core/internal/exception_class.h>

qcFitError::Errors::Errors(wchar_t const* message) : qcExceptionWithString(message) {}
qcFitError::Errors::Errors(Errors const& other) = default;
qcFitError::Errors::~Errors() = default;

qcFitError::BadParams::BadParams() : Errors(L"fit: a parameter is out of range") {}
qcFitError::NotFinite::NotFinite() : Errors(L"fit: a coordinate or the result is not finite") {}
qcFitError::TooFewPoints::TooFewPoints() : Errors(L"fit: too few distinct points") {}
qcFitError::Degenerate::Degenerate() : Errors(L"fit: the points do not pin down one curve") {}
qcFitError::NotAnEllipse::NotAnEllipse() : Errors(L"fit: the best curve is no ellipse") {}
qcFitError::ResidualTooLarge::ResidualTooLarge()
    : Errors(L"fit: the residual is larger than accepted")
{
}

QC_EXCEPTION_MEMBERS(qcFitError::BadParams, BadParams, 0x10001501)
QC_EXCEPTION_MEMBERS(qcFitError::NotFinite, NotFinite, 0x10001502)
QC_EXCEPTION_MEMBERS(qcFitError::TooFewPoints, TooFewPoints, 0x10001503)
QC_EXCEPTION_MEMBERS(qcFitError::Degenerate, Degenerate, 0x10001504)
QC_EXCEPTION_MEMBERS(qcFitError::NotAnEllipse, NotAnEllipse, 0x10001505)
QC_EXCEPTION_MEMBERS(qcFitError::ResidualTooLarge, ResidualTooLarge, 0x10001506)
