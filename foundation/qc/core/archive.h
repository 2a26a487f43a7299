/// \file
/// The two-way stream that objects are written to and read from, over memory and over files.
#pragma once

#include <qc/core/exception.h>
#include <qc/core/vector.h>

#include <cstddef>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

class qcRepBase;

/// A two-way stream: `archive || value` writes `value` while the archive is storing, and reads into
/// it while it is loading. The format is the same on every machine, little-endian:
///
/// | what            | bytes                                                              |
/// |-----------------|--------------------------------------------------------------------|
/// | bool            | 1: 0 or 1                                                          |
/// | unsigned char   | 1                                                                  |
/// | long            | 4, two's complement                                                |
/// | unsigned long   | 4                                                                  |
/// | double          | 8, IEEE; a qcVector<2> is two of them                              |
/// | pointer record  | 0 for null; 1, the class name (count and characters) and the       |
/// |                 | object; 2 and the 4-byte number of an object of the archive, which |
/// |                 | count from 1 in the order of their records                         |
///
/// What is read is not trusted: whatever the bytes are, reading ends in values of the right type or
/// in one of the exceptions below, with memory bounded by a small multiple of the data.
///
/// `archive || object` streams a persistent object in place. The archive remembers every object
/// from its opening to its closing. At the top level it refuses an object at an address that it
/// has streamed already (AlreadyStreamed): the visited check of the class would silently stream
/// nothing. So each object needs an address of its own until the archive closes. Within the record
/// of another object a second visit streams nothing, on both sides alike.
///
/// An object or a pointer record that ends in an exception spoils the archive (Unusable from then
/// on), since its position is that of no record; AlreadyStreamed at the top level alone does not,
/// for it comes before anything moves. Other archives are not affected.
///
/// One archive is used by one thread at a time; different archives are independent.
class QC_EXPORT qcArchive {
public:
    class Errors;
    class UnknownVersion;
    class EndOfData;
    class UnknownClass;
    class BadReference;
    class ValueOutOfRange;
    class BadCount;
    class NestingTooDeep;
    class AlreadyStreamed;
    class WrongDirection;
    class Unusable;
    class FileError;
    class Promise;

    /// How deep objects may stand within objects unless nestingLimit() says otherwise.
    static constexpr long kDefaultNestingLimit = 1000;

    qcArchive(qcArchive const&) = delete;
    qcArchive& operator=(qcArchive const&) = delete;

    /// Lets go of the objects that nobody took. Unlike close() it finishes nothing.
    virtual ~qcArchive();

    /// True while values are written, false while they are read.
    bool isStoring() const noexcept { return storing_; }

    /// Ends the archive's work: what was written is complete, what was visited is forgotten, and
    /// the loaded objects that nobody took are deleted. Streaming afterwards throws Unusable.
    /// Closing again does nothing. Throws Unusable when a storing operation had failed: what was
    /// written is no archive.
    void close();

    /// Throws EndOfData when loading from too few bytes, ValueOutOfRange on a byte other than 0
    /// and 1.
    qcArchive& operator||(bool& value);

    /// Throws ValueOutOfRange when storing a value that does not fit 32 bits.
    qcArchive& operator||(long& value);
    /// As for long.
    qcArchive& operator||(unsigned long& value);

    /// Any double, NaN and infinities with it.
    qcArchive& operator||(double& value);

    /// `count` bytes as they are.
    void bytes(unsigned char* values, std::size_t count);

    /// `count` doubles in one block.
    void doubles(double* values, std::size_t count);

    /// `count` vectors in one block, the same bytes as streaming each.
    void vectors(qcVector<2>* values, std::size_t count);

    /// Streams a count of items as an unsigned long and returns it: `n` when storing, the stored
    /// number when loading. There it throws BadCount, before the caller allocates anything, when
    /// that many items of at least `minimumBytesPerItem` bytes each (0 counts as 1) cannot follow.
    /// Bytes promised to the items of an outer list (Promise) do not count as following.
    unsigned long count(unsigned long n, std::size_t minimumBytesPerItem);

    /// The bytes that are still to be read; 0 when storing.
    unsigned long long remaining() const;

    /// The deepest nesting of objects within objects, in place and by pointer, that is written or
    /// read; deeper throws NestingTooDeep. Each level takes stack (a few hundred bytes for most
    /// classes). A limit below 1 refuses every object.
    long nestingLimit() const noexcept { return nestingLimit_; }
    /// Sets the limit.
    void nestingLimit(long limit) noexcept { nestingLimit_ = limit; }

    /// Whether `object` was created by a pointer record that has not been read to its end: a
    /// pointer to it, read now, closes a cycle.
    bool isBeingLoaded(qcPersistent const* object) const;

    /// Hands the ownership of an object that a pointer record created to the caller; for classes
    /// that are not counted. Null when the archive does not own `object`: it did not create it,
    /// the object is counted, or was claimed before. The object must live until the archive closes,
    /// and further references to it are refused (BadReference).
    std::unique_ptr<qcPersistent> claim(qcPersistent* object);

    friend QC_EXPORT qcArchive& operator||(qcArchive& archive, qcPersistent& object);

protected:
    /// An open archive that stores or loads.
    explicit qcArchive(bool storing);

private:
    friend class qcPersistent;
    class Operation;
    struct Objects;

    virtual void write_(unsigned char const* values, std::size_t count) = 0;
    /// Called with no more than remaining_() bytes.
    virtual void read_(unsigned char* values, std::size_t count) = 0;
    virtual unsigned long long remaining_() const = 0;
    /// Completes what was written.
    virtual void close_() = 0;

    void number(unsigned long& value);
    void requireUsable() const;
    void streamInPlace(qcPersistent& object);
    void streamObject(qcPersistent& object);
    void storePointer(qcPersistent* object);
    void storeNew(qcPersistent& object);
    qcPersistent* loadPointer();
    qcPersistent* loadNew();
    std::string className(std::string name);

    bool storing_;
    bool closed_ = false;
    bool spoiled_ = false;
    long nestingLimit_ = kDefaultNestingLimit;
    long depth_ = 0;
    unsigned long long promised_ = 0;
    std::unique_ptr<Objects> objects_;
};

/// Keeps bytes of a loading archive for the items of a list that are still to be read, one each, so
/// that lists within lists cannot all claim the same bytes and take memory many times the data.
class qcArchive::Promise {
public:
    /// Keeps one byte for each of `items`; keeps none when the archive is storing.
    Promise(qcArchive& archive, unsigned long long items) noexcept
        : archive_(archive), items_(archive.isStoring() ? 0 : items)
    {
        archive_.promised_ += items_;
    }

    ~Promise() { archive_.promised_ -= items_; }

    Promise(Promise const&) = delete;
    Promise& operator=(Promise const&) = delete;

    /// The next item is about to be read.
    void keepOne() noexcept
    {
        if (items_ == 0)
            return;
        --items_;
        --archive_.promised_;
    }

private:
    qcArchive& archive_;
    unsigned long long items_;
};

/// One byte.
QC_EXPORT qcArchive& operator||(qcArchive& archive, unsigned char& value);

/// One point: x, then y.
QC_EXPORT qcArchive& operator||(qcArchive& archive, qcVector<2>& value);

/// A persistent object in place. Throws qcArchive::AlreadyStreamed, qcArchive::NestingTooDeep and
/// what the object's own record throws.
QC_EXPORT qcArchive& operator||(qcArchive& archive, qcPersistent& object);

/// Base of all archive failures. Their text says what was wrong; it is not streamed.
class QC_EXPORT qcArchive::Errors : public qcException {
public:
    ~Errors() override;

protected:
    /// `text` is what what() says.
    explicit Errors(std::string const& text);
    Errors(Errors const& other);
};

/// The archive holds a version that this code cannot read.
class QC_EXPORT qcArchive::UnknownVersion : public qcArchive::Errors {
public:
    /// `file`, which may be null, must outlive the exception: a literal.
    UnknownVersion(char const* file, int line);
    UnknownVersion(UnknownVersion const& other);
    ~UnknownVersion() override;
    /// The source file that refused the version; may be null.
    char const* file() const noexcept { return file_; }
    /// The line given by that source.
    int line() const noexcept { return line_; }
    long errorNumber() const override;
    void suicideAndRethrow() override;

private:
    char const* file_;
    int line_;
};

/// Declares a failure of the archive that carries nothing but a text.
#define QC_ARCHIVE_ERROR(name)                                                                     \
    class QC_EXPORT qcArchive::name : public qcArchive::Errors {                                   \
    public:                                                                                        \
        explicit name(std::string const& text);                                                    \
        name(name const& other);                                                                   \
        ~name() override;                                                                          \
        long errorNumber() const override;                                                         \
        void suicideAndRethrow() override;                                                         \
    }

/// The data end before the value.
QC_ARCHIVE_ERROR(EndOfData);
/// No factory is registered for the class of a pointer record.
QC_ARCHIVE_ERROR(UnknownClass);
/// A pointer record that refers to no object of the archive, or to one that cannot be shared.
QC_ARCHIVE_ERROR(BadReference);
/// A value that its field cannot hold.
QC_ARCHIVE_ERROR(ValueOutOfRange);
/// A count of items that the remaining data cannot hold.
QC_ARCHIVE_ERROR(BadCount);
/// Objects within objects beyond the archive's limit.
QC_ARCHIVE_ERROR(NestingTooDeep);
/// An object streamed for a second time at top level.
QC_ARCHIVE_ERROR(AlreadyStreamed);
/// Writing to a loading archive, or reading from a storing one.
QC_ARCHIVE_ERROR(WrongDirection);
/// The archive is closed, or an operation on it has failed.
QC_ARCHIVE_ERROR(Unusable);
/// The file cannot be opened, read or written.
QC_ARCHIVE_ERROR(FileError);

#undef QC_ARCHIVE_ERROR

/// An archive in memory.
class QC_EXPORT qcMemoryArchive : public qcArchive {
public:
    /// Stores into bytes().
    qcMemoryArchive();

    /// Loads from `bytes`.
    explicit qcMemoryArchive(std::vector<unsigned char> bytes);

    /// Loads from `size` bytes at `data`, which must stay until the archive closes.
    qcMemoryArchive(unsigned char const* data, std::size_t size);

    ~qcMemoryArchive() override;

    /// What has been stored so far, or what is loaded from (nothing when that is not owned).
    std::vector<unsigned char> const& bytes() const noexcept { return bytes_; }

private:
    void write_(unsigned char const* values, std::size_t count) override;
    void read_(unsigned char* values, std::size_t count) override;
    unsigned long long remaining_() const override;
    void close_() override;

    std::vector<unsigned char> bytes_;
    unsigned char const* next_ = nullptr;
    unsigned char const* end_ = nullptr;
};

/// An archive in a regular file.
///
/// Storing writes a new file beside the named one, and close() puts it in its place in one step:
/// until then, and when anything fails, the named file is untouched. An archive destroyed without
/// close() leaves nothing behind.
class QC_EXPORT qcFileArchive : public qcArchive {
public:
    /// What the file is opened for.
    enum Direction { eLoad, eStore };

    /// Throws FileError when the file cannot be opened or is not a regular file.
    qcFileArchive(std::string const& path, Direction direction);
    ~qcFileArchive() override;

private:
    void write_(unsigned char const* values, std::size_t count) override;
    void read_(unsigned char* values, std::size_t count) override;
    unsigned long long remaining_() const override;
    void close_() override;
    void openForLoading();
    void openForStoring();
    void abandon() noexcept;

    std::string path_;
    std::string temporaryPath_;
    std::FILE* file_ = nullptr;
    unsigned long long remainingBytes_ = 0;
};
