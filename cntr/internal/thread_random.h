/// The random source of the calling thread, from which full caches draw the entry to replace.
#pragma once

class qc_ThreadLocal;

namespace qnInternal {

/// A uniformly drawn index from 0 to count - 1. Every thread has a generator of its own, made with
/// seed 1 on first use and deleted when the thread ends, so each draws the same sequence.
long randomIndex(long count);

/// Where each thread's generator is kept; created on first use, destroyed with the library.
qc_ThreadLocal& randomSlot();

}  // namespace qnInternal
