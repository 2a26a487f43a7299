// A library that comes and goes while threads live: it uses everything of the foundation that
// could keep a library in memory.
#include <qc/core/archive.h>
#include <qc/core/handle.h>
#include <qc/core/thread.h>

namespace {

struct Counted : qcPersistent, qcRepBase {
    static qcPersistent* make() { return new Counted; }
};
qc_Instantiator const exemplar(typeid(Counted), Counted::make);

void freeNumber(qcThreadID const&, void* data)
{
    delete static_cast<int*>(data);
}

struct Withdraw {
    ~Withdraw() { qcThreadID::withdraw(freeNumber, qcThreadID::eRunNow); }
} const withdrawAtUnload;

}  // namespace

/// Returns 0 when every step did what it should.
extern "C" __attribute__((visibility("default"))) int usePlugin()
{
    qfGetCurrentThreadID().atexit(freeNumber, new int(1));
    qcPtrHandle<Counted> const object(new Counted);
    qcMemoryArchive archive;
    qcPersistent* none = nullptr;
    qcPersistent::serializePointer(archive, object.get(), none);
    try {
        (void)*qcPtrHandle<Counted>();
    } catch (qcBadPointer const&) {
        return archive.bytes().empty() ? 2 : 0;
    }
    return 1;
}
