/// Counts what the calling thread takes from operator new, and makes one of its calls fail. The
/// program's operator new is replaced for this.
#pragma once

namespace qnTest {

/// Counting begins with the object and ends with it; one at a time on a thread.
class Allocations {
public:
    Allocations();
    ~Allocations();

    Allocations(Allocations const&) = delete;
    Allocations& operator=(Allocations const&) = delete;

    /// Of the calls from now on, the one numbered `call`, from 0, throws std::bad_alloc.
    void fail(long call);

    /// None any more; says whether the failing call has come.
    bool endFailing();

    long liveBlocks() const;      ///< blocks taken and not given back on this thread
    long long peakBytes() const;  ///< the most that was taken at one time
};

}  // namespace qnTest
