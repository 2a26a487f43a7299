/// Counts what the calling thread takes from operator new, and makes one of its calls fail. The
/// program's operator new is replaced for this.
#pragma once

namespace qnTest {

/// Counting begins with the object and ends with it; one at a time on a thread.
class Allocations {
public:
    /// The allocation numbered `failing`, from 0, throws std::bad_alloc; -1 for none.
    explicit Allocations(long failing = -1);
    ~Allocations();

    Allocations(Allocations const&) = delete;
    Allocations& operator=(Allocations const&) = delete;

    long count() const;           ///< calls so far
    long liveBlocks() const;      ///< blocks taken and not given back on this thread
    long long peakBytes() const;  ///< the most that was taken at one time
    bool failed() const;          ///< whether the failing call has come
};

}  // namespace qnTest
