/// \file
/// The persistent base and the listeners to changes. Visited blocks and pointer records are with
/// the archive.
#include <qc/core/archive.h>
#include <qc/core/persistent.h>

#include <atomic>
#include <mutex>

namespace {

struct Listening {
    qcChangeListener* listener;  // null once removed
    Listening* next;
};

// Plain data, and a mutex whose destructor does nothing: tracked objects may be destroyed after
// everything static here.
std::recursive_mutex listenersMutex;
std::atomic<int> listenerCount{0};
Listening* listeners = nullptr;
int tellingDepth = 0;

void sweepRemoved() noexcept
{
    Listening** link = &listeners;
    while (*link) {
        Listening* const one = *link;
        if (one->listener) {
            link = &one->next;
        } else {
            *link = one->next;
            delete one;
        }
    }
}

}  // namespace

qcChangeListener::~qcChangeListener() = default;

qcPersistent::~qcPersistent()
{
    notifyChange();
}

void qcPersistent::dispatchSerialize(qcArchive& archive)
{
    if (haveVisited(this, sizeof(qcPersistent)))
        return;
    unsigned char version = 0;
    archive || version;
    if (version != 0)
        throw qcArchive::UnknownVersion("qcPersistent", 0);
    setVisited(this, sizeof(qcPersistent));
}

void qcPersistent::reInit() {}

void qcPersistent::loadSimple(qcArchive& archive)
{
    if (archive.isStoring())
        throw qcArchive::WrongDirection("an object cannot be loaded from a storing archive");
    archive || *this;
}

void qcPersistent::addListener(qcChangeListener& listener)
{
    std::lock_guard<std::recursive_mutex> const lock(listenersMutex);
    listeners = new Listening{&listener, listeners};
    ++listenerCount;
}

void qcPersistent::removeListener(qcChangeListener& listener) noexcept
{
    std::lock_guard<std::recursive_mutex> const lock(listenersMutex);
    for (Listening* one = listeners; one; one = one->next) {
        if (one->listener == &listener) {
            one->listener = nullptr;
            --listenerCount;
            break;
        }
    }
    if (tellingDepth == 0)
        sweepRemoved();
}

void qcPersistent::mutating_() const noexcept
{
    if (listenerCount.load(std::memory_order_acquire) == 0)
        return;
    std::lock_guard<std::recursive_mutex> const lock(listenersMutex);
    ++tellingDepth;
    for (Listening* one = listeners; one; one = one->next) {
        if (one->listener)
            one->listener->changed(*this);
    }
    if (--tellingDepth == 0)
        sweepRemoved();
}
