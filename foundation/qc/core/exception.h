/// \file
/// The roots of all exceptions, and those of the foundation that are not the archive's.
#pragma once

#include <qc/core/persistent.h>

#include <atomic>
#include <exception>
#include <iosfwd>
#include <string>

/// Lets handlers that know only the standard library see what happened.
class QC_EXPORT qcExceptionBase : public std::exception {
public:
    ~qcExceptionBase() override;

    /// The message in UTF-8 when there is one, else the plain C++ name of the exception's class.
    char const* what() const noexcept override;

protected:
    qcExceptionBase() noexcept = default;
    qcExceptionBase(qcExceptionBase const& other) noexcept;
    qcExceptionBase& operator=(qcExceptionBase const& other) noexcept;

    /// Gives what() a text of its own.
    void describe(std::string const& text);

    /// Forgets the text, so that what() looks at the message again.
    void forgetText() noexcept;

private:
    // Made by the first what(), which handlers in several threads may call on one object.
    mutable std::atomic<char const*> text_{nullptr};
};

/// Root of the exceptions of this system. They are thrown by value and caught by reference.
class QC_EXPORT qcException : public qcPersistent, public qcExceptionBase {
public:
    ~qcException() override;

    /// The number of the concrete class; every class has its own.
    virtual long errorNumber() const = 0;

    /// For an exception made with `new`: deletes it and throws a copy of it by value. Concrete
    /// classes call suicideAndRethrowAs.
    virtual void suicideAndRethrow() = 0;

protected:
    qcException();
    qcException(qcException const& other);
    qcException& operator=(qcException const& other);

    /// Streams version 0: the version byte, the persistent base, and the message as a count and
    /// four bytes a character.
    void dispatchSerialize(qcArchive& archive) override;

    /// Copies `*self`, deletes `self` and throws the copy as an E.
    template <class E>
    [[noreturn]] static void suicideAndRethrowAs(E* self)
    {
        E const copy(*self);
        delete self;
        throw copy;
    }

private:
    friend class qcExceptionWithString;
    friend class qcExceptionBase;

    std::wstring messageText_;  // here, since this class streams it
};

/// An exception with a message.
class QC_EXPORT qcExceptionWithString : public qcException {
public:
    ~qcExceptionWithString() override;

    /// Writes the message to `out`.
    virtual void message_(std::wostream& out) const;

    /// The message.
    std::wstring message() const;

protected:
    /// A null `message` is the empty one.
    explicit qcExceptionWithString(wchar_t const* message);
    qcExceptionWithString(qcExceptionWithString const& other);
    qcExceptionWithString& operator=(qcExceptionWithString const& other);
};

/// A null or invalid pointer or handle was used.
class QC_EXPORT qcBadPointer : public qcException {
public:
    qcBadPointer();
    qcBadPointer(qcBadPointer const& other);
    ~qcBadPointer() override;
    long errorNumber() const override;
    void suicideAndRethrow() override;
};

/// Failures of numeric services.
class QC_EXPORT qcMathError {
public:
    class Errors;
    class Singular;
};

/// Base of the numeric failures.
class QC_EXPORT qcMathError::Errors : public qcException {
public:
    ~Errors() override;

protected:
    Errors();
    Errors(Errors const& other);
};

/// A matrix or a system of equations has no unique solution.
class QC_EXPORT qcMathError::Singular : public qcMathError::Errors {
public:
    Singular();
    Singular(Singular const& other);
    ~Singular() override;
    long errorNumber() const override;
    void suicideAndRethrow() override;
};

/// Failures of image services.
class QC_EXPORT qcPel {
public:
    class Errors;
    class BadWindow;
};

/// Base of the image failures.
class QC_EXPORT qcPel::Errors : public qcException {
public:
    ~Errors() override;

protected:
    Errors();
    Errors(Errors const& other);
};

/// An operation that this object does not provide.
class QC_EXPORT qcPel::BadWindow : public qcPel::Errors {
public:
    BadWindow();
    BadWindow(BadWindow const& other);
    ~BadWindow() override;
    long errorNumber() const override;
    void suicideAndRethrow() override;
};
