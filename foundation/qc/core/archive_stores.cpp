/// \file
/// Where the bytes of an archive are: in memory or in a file.
#include <qc/core/archive.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {

[[noreturn]] void fail(std::string const& action, std::string const& path, int error)
{
    throw qcArchive::FileError("cannot " + action + " '" + path + "': " + std::strerror(error));
}

// Where a link leads, so that the link stays and the file behind it is replaced, or made; the same
// place after a change of the working folder.
std::string behindLinks(std::filesystem::path path)
{
    constexpr int kMaxLinks = 40;  // a system follows no more
    std::error_code error;
    for (int links = 0; links < kMaxLinks && std::filesystem::is_symlink(path, error); ++links)
        path = path.parent_path() / std::filesystem::read_symlink(path, error);
    auto const whole = std::filesystem::absolute(path, error);
    return (error ? path : whole).string();
}

}  // namespace

// --- memory ---------------------------------------------------------------------------------------

qcMemoryArchive::qcMemoryArchive() : qcArchive(true) {}

qcMemoryArchive::qcMemoryArchive(std::vector<unsigned char> bytes)
    : qcArchive(false), bytes_(std::move(bytes)), next_(bytes_.data()), end_(next_ + bytes_.size())
{
}

qcMemoryArchive::qcMemoryArchive(unsigned char const* data, std::size_t size)
    : qcArchive(false), next_(data), end_(data + size)
{
}

qcMemoryArchive::~qcMemoryArchive() = default;

void qcMemoryArchive::write_(unsigned char const* values, std::size_t count)
{
    // A few bytes mostly follow a long block; they must not make it move.
    constexpr std::size_t kRoom = 256;
    if (bytes_.capacity() - bytes_.size() < count)
        bytes_.reserve(std::max(bytes_.size() + count + kRoom, 2 * bytes_.size()));
    bytes_.insert(bytes_.end(), values, values + count);
}

void qcMemoryArchive::read_(unsigned char* values, std::size_t count)
{
    if (count == 0)
        return;
    std::memcpy(values, next_, count);
    next_ += count;
}

unsigned long long qcMemoryArchive::remaining_() const
{
    return static_cast<unsigned long long>(end_ - next_);
}

void qcMemoryArchive::close_() {}

// --- file -----------------------------------------------------------------------------------------

qcFileArchive::qcFileArchive(std::string const& path, Direction direction)
    : qcArchive(direction == eStore), path_(path)
{
    if (isStoring())
        openForStoring();
    else
        openForLoading();
}

qcFileArchive::~qcFileArchive()
{
    abandon();
}

void qcFileArchive::openForLoading()
{
    // Not to wait for the other end of a pipe, which is refused below.
    int const descriptor = ::open(path_.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0)
        fail("open", path_, errno);
    struct stat status = {};
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
        ::close(descriptor);
        throw FileError("not a regular file: '" + path_ + "'");
    }
    remainingBytes_ = static_cast<unsigned long long>(status.st_size);
    file_ = ::fdopen(descriptor, "rb");
    if (!file_) {
        int const error = errno;
        ::close(descriptor);
        fail("open", path_, error);
    }
}

void qcFileArchive::openForStoring()
{
    static std::atomic<unsigned> serial{0};
    path_ = behindLinks(path_);
    struct stat status = {};
    bool const exists = ::stat(path_.c_str(), &status) == 0;
    if (!exists && errno != ENOENT)
        fail("create", path_, errno);
    if (exists && !S_ISREG(status.st_mode))
        throw FileError("not a regular file: '" + path_ + "'");

    std::string const candidate =
        path_ + ".part-" + std::to_string(::getpid()) + "-" + std::to_string(++serial);
    int const descriptor = ::open(candidate.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (descriptor < 0)
        fail("create", candidate, errno);
    temporaryPath_ = candidate;
    if (exists)
        (void)::fchmod(descriptor, status.st_mode & 0777U);  // else the mode of a new file serves
    file_ = ::fdopen(descriptor, "wb");
    if (!file_) {
        int const error = errno;
        ::close(descriptor);
        abandon();
        fail("create", candidate, error);
    }
}

void qcFileArchive::abandon() noexcept
{
    if (file_)
        std::fclose(std::exchange(file_, nullptr));
    if (!temporaryPath_.empty())
        ::unlink(temporaryPath_.c_str());
    temporaryPath_.clear();
}

void qcFileArchive::write_(unsigned char const* values, std::size_t count)
{
    if (std::fwrite(values, 1, count, file_) != count)
        fail("write", path_, errno);
}

void qcFileArchive::read_(unsigned char* values, std::size_t count)
{
    if (std::fread(values, 1, count, file_) != count)
        fail("read", path_, std::ferror(file_) ? errno : EIO);
    remainingBytes_ -= count;
}

unsigned long long qcFileArchive::remaining_() const
{
    return remainingBytes_;
}

void qcFileArchive::close_()
{
    if (!isStoring()) {
        abandon();
        return;
    }
    // An earlier write may have failed without anybody listening.
    bool good = std::ferror(file_) == 0;
    errno = 0;
    good = good && std::fflush(file_) == 0 && ::fsync(::fileno(file_)) == 0;
    int error = errno;
    good = std::fclose(std::exchange(file_, nullptr)) == 0 && good;
    if (good && ::rename(temporaryPath_.c_str(), path_.c_str()) == 0) {
        temporaryPath_.clear();
        return;
    }
    error = good || error == 0 ? errno : error;
    abandon();
    fail("write", path_, error == 0 ? EIO : error);
}
