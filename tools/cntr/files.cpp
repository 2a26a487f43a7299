// Writes beside the place of a file, then renames.
#include "files.h"

#include "session.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <filesystem>

namespace qnTool {

namespace {

namespace fs = std::filesystem;

[[noreturn]] void failWriting(std::string const& file, int error)
{
    throw CommandError(eOutputLost, file + ": cannot be written: " + std::strerror(error));
}

/// 0, or the error number.
int writeAll(int descriptor, std::string const& bytes)
{
    std::size_t done = 0;
    while (done < bytes.size()) {
        ssize_t const written = ::write(descriptor, bytes.data() + done, bytes.size() - done);
        if (written < 0 && errno != EINTR)
            return errno;
        done += written > 0 ? static_cast<std::size_t>(written) : 0;
    }
    return 0;
}

/// Where a name leads, so that a link is not replaced by a file. What is there need not exist.
fs::path behindLinks(fs::path path)
{
    constexpr int kMaxLinks = 40;  // a system follows no more
    std::error_code error;
    for (int links = 0; links < kMaxLinks && fs::is_symlink(path, error); ++links)
        path = path.parent_path() / fs::read_symlink(path, error);
    return path;
}

char const* unfinished = nullptr;  // for a handler, which can be given nothing

void removeUnfinished(int signal)
{
    ::unlink(unfinished);
    ::raise(signal);  // its action is the default again
}

/// While it lives, a signal that ends the process removes the file before.
class RemovedBySignals {
public:
    explicit RemovedBySignals(std::string const& file)
    {
        unfinished = file.c_str();
        struct sigaction action = {};
        action.sa_handler = removeUnfinished;
        action.sa_flags = static_cast<int>(SA_RESETHAND);
        for (std::size_t i = 0; i < kCount; ++i) {
            ::sigaction(kSignals[i], nullptr, &former_[i]);
            if (former_[i].sa_handler != SIG_IGN)
                ::sigaction(kSignals[i], &action, nullptr);
        }
    }
    ~RemovedBySignals()
    {
        for (std::size_t i = 0; i < kCount; ++i)
            ::sigaction(kSignals[i], &former_[i], nullptr);
    }
    RemovedBySignals(RemovedBySignals const&) = delete;
    RemovedBySignals& operator=(RemovedBySignals const&) = delete;

private:
    static constexpr std::size_t kCount = 3;
    static constexpr int kSignals[kCount] = {SIGINT, SIGTERM, SIGHUP};
    struct sigaction former_[kCount] = {};
};

/// A device or a pipe cannot be replaced: it is written to.
void writeInPlace(std::string const& file, std::string const& bytes)
{
    int const descriptor = ::open(file.c_str(), O_WRONLY | O_CLOEXEC);
    if (descriptor < 0)
        failWriting(file, errno);
    int error = writeAll(descriptor, bytes);
    if (::close(descriptor) != 0 && error == 0)
        error = errno;
    if (error != 0)
        failWriting(file, error);
}

void replaceFile(std::string const& file, std::string const& bytes, mode_t const* mode)
{
    std::string const target = behindLinks(file).string();
    std::string const beside = target + ".part-" + std::to_string(::getpid());
    RemovedBySignals const removed(beside);
    int const descriptor = ::open(beside.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (descriptor < 0)
        failWriting(file, errno);
    if (mode)
        (void)::fchmod(descriptor, *mode & 0777U);  // else the mode of a new file serves
    int error = writeAll(descriptor, bytes);
    if (error == 0 && ::fsync(descriptor) != 0)
        error = errno;
    if (::close(descriptor) != 0 && error == 0)
        error = errno;
    if (error == 0 && ::rename(beside.c_str(), target.c_str()) != 0)
        error = errno;
    if (error != 0) {
        ::unlink(beside.c_str());
        failWriting(file, error);
    }
}

void writeStandardOutput(std::string const& bytes)
{
    int const error = writeAll(STDOUT_FILENO, bytes);
    if (error != 0)
        failWriting("standard output", error);
}

}  // namespace

void writeWhole(std::string const& file, std::string const& bytes)
{
    if (file == "-") {
        writeStandardOutput(bytes);
        return;
    }
    struct stat status = {};
    bool const exists = ::stat(file.c_str(), &status) == 0;
    if (!exists && errno != ENOENT)
        failWriting(file, errno);
    if (exists && !S_ISREG(status.st_mode))
        writeInPlace(file, bytes);
    else
        replaceFile(file, bytes, exists ? &status.st_mode : nullptr);
}

bool sameFile(std::string const& a, std::string const& b)
{
    std::error_code error;
    if (fs::exists(a, error))
        return fs::is_regular_file(a, error) && fs::equivalent(a, b, error);
    auto const place = [&](std::string const& file) {
        return fs::weakly_canonical(fs::absolute(behindLinks(file), error), error);
    };
    return place(a) == place(b);
}

bool isAmong(std::string const& file, std::vector<std::string> const& inputs)
{
    return std::any_of(inputs.begin(), inputs.end(), [&](std::string const& input) {
        return sameFile(file, input == "-" ? "/dev/stdin" : input);
    });
}

}  // namespace qnTool
