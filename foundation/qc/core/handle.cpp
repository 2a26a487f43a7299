/// \file
/// The end of counted objects.
#include <qc/core/exception.h>
#include <qc/core/handle.h>

namespace {

// Plain data without a destructor: one with a destructor would keep the library in memory for as
// long as any thread lives that has released a handle.
struct DeleteList {
    bool active = false;
    qcRepBase const* first = nullptr;
};

thread_local DeleteList toDelete;

}  // namespace

qcRepBase::~qcRepBase() = default;

void qc_PtrHandleBase_RepAccessor::throwBadPointer()
{
    throw qcBadPointer();
}

void qc_PtrHandleBase_RepAccessor::destroy(qcRepBase const* rep) noexcept
{
    rep->nextToDelete_ = toDelete.first;
    toDelete.first = rep;
    if (toDelete.active)
        return;  // a destructor below on the stack runs in the loop of an outer call
    toDelete.active = true;
    while (toDelete.first) {
        qcRepBase const* const next = toDelete.first;
        toDelete.first = next->nextToDelete_;
        delete next;
    }
    toDelete.active = false;
}
