// One uniform random generator for each thread, in a slot that lives as long as the library.
#include "cntr/internal/thread_random.h"

#include <qc/core/compare.h>
#include <qc/core/random.h>
#include <qc/core/thread.h>

#include <memory>

namespace qnInternal {

namespace {

void deleteGenerator(qcThreadID const&, void* generator);

class Slot {
public:
    Slot() = default;

    ~Slot()
    {
        // Threads may outlive the library; their generators and what would delete them must not.
        qcThreadID::withdraw(deleteGenerator, qcThreadID::eRunNow);
    }

    Slot(Slot const&) = delete;
    Slot& operator=(Slot const&) = delete;

    qc_ThreadLocal value;
};

void deleteGenerator(qcThreadID const&, void* generator)
{
    randomSlot().OSValue(nullptr);
    delete static_cast<qcRandomUniform*>(generator);
}

qcRandomUniform& threadRandomUniform()
{
    qc_ThreadLocal& slot = randomSlot();
    if (void* const known = slot.OSValue())
        return *static_cast<qcRandomUniform*>(known);
    auto generator = std::make_unique<qcRandomUniform>(1);
    qfGetCurrentThreadID().atexit(deleteGenerator, generator.get());
    auto* const owned = generator.release();  // by the callback from here on
    slot.OSValue(owned);
    return *owned;
}

}  // namespace

qc_ThreadLocal& randomSlot()
{
    static Slot slot;
    return slot.value;
}

long randomIndex(long count)
{
    return qfIFloor(threadRandomUniform().next(0.0, static_cast<double>(count)));
}

}  // namespace qnInternal
