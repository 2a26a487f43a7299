/// \file
/// The roots of the exceptions and the small families of the foundation.
#include <qc/core/archive.h>
#include <qc/core/exception.h>
#include <qc/core/internal/class_name.h>
#include <qc/core/internal/exception_class.h>

#include <cstring>
#include <sstream>
#include <utility>

namespace {

void appendUtf8(std::string& out, unsigned long code)
{
    bool const isCharacter = code < 0xD800 || (code > 0xDFFF && code <= 0x10FFFF);
    if (!isCharacter)
        code = 0xFFFD;  // the replacement character
    auto const tail = [&](int shift) { out += static_cast<char>(0x80 | ((code >> shift) & 0x3F)); };
    if (code < 0x80) {
        out += static_cast<char>(code);
    } else if (code < 0x800) {
        out += static_cast<char>(0xC0 | (code >> 6));
        tail(0);
    } else if (code < 0x10000) {
        out += static_cast<char>(0xE0 | (code >> 12));
        tail(6);
        tail(0);
    } else {
        out += static_cast<char>(0xF0 | (code >> 18));
        tail(12);
        tail(6);
        tail(0);
    }
}

std::string utf8(std::wstring const& text)
{
    std::string out;
    for (wchar_t const c : text)
        appendUtf8(out, static_cast<unsigned long>(c) & 0xFFFFFFFFUL);
    return out;
}

char const* copyOf(char const* text)
{
    std::size_t const size = std::strlen(text) + 1;
    return static_cast<char const*>(std::memcpy(new char[size], text, size));
}

}  // namespace

// --- qcExceptionBase ------------------------------------------------------------------------------

qcExceptionBase::~qcExceptionBase()
{
    forgetText();
}

qcExceptionBase::qcExceptionBase(qcExceptionBase const& other) noexcept : std::exception(other)
{
    *this = other;
}

qcExceptionBase& qcExceptionBase::operator=(qcExceptionBase const& other) noexcept
{
    if (this == &other)
        return *this;
    forgetText();
    try {
        if (char const* const text = other.text_.load())
            text_ = copyOf(text);
    } catch (std::bad_alloc const&) {
        forgetText();  // what() falls back on the message and the class
    }
    return *this;
}

void qcExceptionBase::describe(std::string const& text)
{
    char const* const copy = copyOf(text.c_str());
    forgetText();
    text_ = copy;
}

void qcExceptionBase::forgetText() noexcept
{
    delete[] text_.exchange(nullptr);
}

char const* qcExceptionBase::what() const noexcept
{
    if (char const* const text = text_.load())
        return text;
    try {
        std::string text;
        if (auto const withString = dynamic_cast<qcExceptionWithString const*>(this))
            text = utf8(withString->message());
        if (text.empty())
            text = qnInternal::plainClassName(typeid(*this));
        char const* const mine = copyOf(text.c_str());
        char const* first = nullptr;
        if (text_.compare_exchange_strong(first, mine))
            return mine;
        delete[] mine;  // another thread was faster
        return first;
    } catch (...) {
        return typeid(*this).name();
    }
}

// --- qcException, qcExceptionWithString -----------------------------------------------------------

qcException::qcException() = default;
qcException::qcException(qcException const& other) = default;
qcException& qcException::operator=(qcException const& other) = default;
qcException::~qcException() = default;

void qcException::dispatchSerialize(qcArchive& archive)
{
    if (haveVisited(this, sizeof(qcException)))
        return;
    unsigned char version = 0;
    archive || version;
    if (version != 0)
        throw qcArchive::UnknownVersion("qcException", 0);
    qcPersistent::dispatchSerialize(archive);

    std::wstring text = messageText_;
    text.resize(archive.count(text.size(), 4));
    for (wchar_t& c : text) {
        unsigned long code = static_cast<unsigned long>(c) & 0xFFFFFFFFUL;
        archive || code;
        c = static_cast<wchar_t>(code);
    }
    if (!archive.isStoring()) {
        messageText_ = std::move(text);
        forgetText();
    }
    setVisited(this, sizeof(qcException));
}

qcExceptionWithString::qcExceptionWithString(wchar_t const* message)
{
    if (message)
        messageText_ = message;
}

qcExceptionWithString::qcExceptionWithString(qcExceptionWithString const& other) = default;
qcExceptionWithString& qcExceptionWithString::operator=(qcExceptionWithString const&) = default;
qcExceptionWithString::~qcExceptionWithString() = default;

void qcExceptionWithString::message_(std::wostream& out) const
{
    out << messageText_;
}

std::wstring qcExceptionWithString::message() const
{
    std::wostringstream out;
    message_(out);
    return out.str();
}

// --- the families ---------------------------------------------------------------------------------

qcBadPointer::qcBadPointer()
{
    describe("qcBadPointer: null or invalid pointer or handle");
}

qcMathError::Errors::Errors() = default;
qcMathError::Errors::Errors(Errors const& other) = default;
qcMathError::Errors::~Errors() = default;

qcMathError::Singular::Singular()
{
    describe("qcMathError::Singular: no unique solution");
}

qcPel::Errors::Errors() = default;
qcPel::Errors::Errors(Errors const& other) = default;
qcPel::Errors::~Errors() = default;

qcPel::BadWindow::BadWindow()
{
    describe("qcPel::BadWindow: the operation is not provided");
}

QC_EXCEPTION_MEMBERS(qcBadPointer, qcBadPointer, 0x10001001)
QC_EXCEPTION_MEMBERS(qcMathError::Singular, Singular, 0x10001101)
QC_EXCEPTION_MEMBERS(qcPel::BadWindow, BadWindow, 0x10001201)
