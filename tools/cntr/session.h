/// What went wrong during a run of the command, and the status it ends with.
#pragma once

#include <cstddef>
#include <exception>
#include <new>
#include <stdexcept>
#include <string>

#include <qc/core/exception.h>

namespace qnTool {

/// The exit status. Of several troubles the largest number is the one reported.
enum ExitStatus {
    eDone = 0,
    eUsage = 2,
    eBadInput = 3,   ///< unreadable or malformed
    eGeometry = 4,   ///< the library refused an outline
    eOverLimit = 5,  ///< too large, too deep, or out of memory
    eOutputLost = 6  ///< the result could not be written
};

/// Ends the run.
class CommandError : public std::runtime_error {
public:
    CommandError(ExitStatus status, std::string const& message)
        : std::runtime_error(message), status_(status)
    {
    }
    ExitStatus status() const noexcept { return status_; }

private:
    ExitStatus status_;
};

/// Class, number and message of an exception of the library.
std::string errorText(qcException const& error);

/// `1 crossing`, `2 crossings`
std::string counted(std::size_t count, std::string const& what);

class Session {
public:
    /// Prints the message on standard error; the run goes on.
    void fail(ExitStatus status, std::string const& message);
    /// Prints what the user should know although nothing failed.
    void note(std::string const& message) const;
    ExitStatus status() const noexcept { return status_; }

    /// Calls `work`; false after an exception of the library, reported as about `what`.
    template <class Work>
    bool attempt(std::string const& what, Work work)
    {
        try {
            work();
            return true;
        } catch (qcException const& error) {
            fail(eGeometry, what + ": " + errorText(error));
            return false;
        }
    }

private:
    ExitStatus status_ = eDone;
};

}  // namespace qnTool
