/// \file
/// The archive: its life, the objects it knows, pointer records.
#include <qc/core/archive.h>
#include <qc/core/handle.h>
#include <qc/core/internal/factories.h>

#include <functional>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace {

enum PointerTag : unsigned char { kNull = 0, kNew = 1, kReference = 2 };

// What `objects_->numbers` holds for an object that was streamed in place.
constexpr unsigned long kInPlace = 0;

struct Block {
    void* address;
    unsigned long long size;
    bool operator==(Block const& b) const noexcept
    {
        return address == b.address && size == b.size;
    }
};

struct BlockHash {
    std::size_t operator()(Block const& b) const noexcept
    {
        return std::hash<void*>()(b.address) + std::hash<unsigned long long>()(b.size) * 31;
    }
};

void const* wholeObject(qcPersistent const* object)
{
    return dynamic_cast<void const*>(object);
}

// The archive whose operation is under way on this thread. Plain data, so that it does not keep
// the library in memory.
thread_local qcArchive* current = nullptr;

}  // namespace

struct qcArchive::Objects {
    struct Created {
        qcPersistent* object;
        qcRepBase const* rep;  // shared by the archive when the class is counted
        bool owned;            // otherwise: not claimed
        bool complete;
    };

    std::unordered_set<Block, BlockHash> visited;
    std::unordered_map<void const*, unsigned long> numbers;
    std::vector<Created> created;          // while loading, by number less 1
    std::vector<qcRepBase const*> shared;  // while storing: kept, so that no address is used twice
    unsigned long lastStored = 0;

    Created* find(qcPersistent const* object)
    {
        if (!object)
            return nullptr;
        auto const found = numbers.find(wholeObject(object));
        bool const known = found != numbers.end() && found->second != kInPlace;
        return known && found->second <= created.size() ? &created[found->second - 1] : nullptr;
    }

    ~Objects()
    {
        for (Created const& one : created) {
            qc_PtrHandleBase_RepAccessor::release(one.rep);
            if (!one.rep && one.owned)
                delete one.object;
        }
        for (qcRepBase const* rep : shared)
            qc_PtrHandleBase_RepAccessor::release(rep);
    }
};

/// One level of nesting: while it lives, haveVisited and setVisited speak to its archive.
class qcArchive::Operation {
public:
    explicit Operation(qcArchive& archive) : archive_(archive), outer_(current)
    {
        if (archive.depth_ >= archive.nestingLimit_) {
            throw NestingTooDeep("objects within objects beyond the limit of " +
                                 std::to_string(archive.nestingLimit_));
        }
        ++archive.depth_;
        current = &archive;
    }

    ~Operation()
    {
        --archive_.depth_;
        current = outer_;
    }

    Operation(Operation const&) = delete;
    Operation& operator=(Operation const&) = delete;

private:
    qcArchive& archive_;
    qcArchive* outer_;
};

// --- life -----------------------------------------------------------------------------------------

qcArchive::qcArchive(bool storing) : storing_(storing), objects_(std::make_unique<Objects>()) {}

qcArchive::~qcArchive() = default;

void qcArchive::close()
{
    if (closed_)
        return;
    if (depth_ > 0)
        throw Unusable("an archive cannot be closed by an object that it is streaming");
    closed_ = true;
    std::unique_ptr<Objects> const done = std::move(objects_);
    if (storing_ && spoiled_)
        throw Unusable("storing failed, so there is no archive to close");
    close_();
}

void qcArchive::requireUsable() const
{
    if (closed_)
        throw Unusable("the archive is closed");
    if (spoiled_)
        throw Unusable("an earlier operation on the archive failed");
}

// --- objects --------------------------------------------------------------------------------------

bool qcPersistent::haveVisited(void* address, unsigned long long size)
{
    return current && current->objects_->visited.count(Block{address, size}) != 0;
}

void qcPersistent::setVisited(void* address, unsigned long long size)
{
    if (current)
        current->objects_->visited.insert(Block{address, size});
}

void qcPersistent::serializePointer(qcArchive& archive, qcPersistent* object, qcPersistent*& loaded)
{
    archive.requireUsable();
    try {
        if (archive.isStoring())
            archive.storePointer(object);
        else
            loaded = archive.loadPointer();
    } catch (...) {
        archive.spoiled_ = true;
        throw;
    }
}

qcArchive& operator||(qcArchive& archive, qcPersistent& object)
{
    archive.requireUsable();
    archive.streamInPlace(object);
    return archive;
}

void qcArchive::streamInPlace(qcPersistent& object)
{
    auto const entry = objects_->numbers.emplace(wholeObject(&object), kInPlace);
    if (!entry.second && depth_ == 0) {
        throw AlreadyStreamed(storing_ ? "an object at this address has been stored before"
                                       : "an object at this address has been loaded before");
    }
    try {
        Operation const operation(*this);
        streamObject(object);
    } catch (...) {
        spoiled_ = true;
        throw;
    }
}

void qcArchive::streamObject(qcPersistent& object)
{
    object.dispatchSerialize(*this);
    if (!storing_)
        object.reInit();
}

void qcArchive::storePointer(qcPersistent* object)
{
    unsigned char tag = kNull;
    if (!object) {
        *this || tag;
        return;
    }
    auto const known = objects_->numbers.find(wholeObject(object));
    if (known == objects_->numbers.end()) {
        storeNew(*object);
        return;
    }
    if (known->second == kInPlace)
        throw BadReference("an object stored in place cannot be stored by pointer as well");
    tag = kReference;
    *this || tag;
    unsigned long number = known->second;
    *this || number;
}

void qcArchive::storeNew(qcPersistent& object)
{
    std::string const name = qnInternal::registeredName(typeid(object));
    if (name.empty())
        throw UnknownClass(std::string("no factory for the class of the object: ") +
                           typeid(object).name());
    objects_->numbers.emplace(wholeObject(&object), ++objects_->lastStored);

    // Only what a handle holds may be shared: another object may be on the stack.
    auto const rep = dynamic_cast<qcRepBase const*>(&object);
    if (rep && rep->refCount() > 0) {
        objects_->shared.push_back(rep);
        qc_PtrHandleBase_RepAccessor::retain(rep);
    }
    Operation const operation(*this);
    unsigned char tag = kNew;
    *this || tag;
    className(name);
    streamObject(object);
}

std::string qcArchive::className(std::string name)
{
    name.resize(count(name.size(), 1));
    bytes(reinterpret_cast<unsigned char*>(&name[0]), name.size());
    return name;
}

qcPersistent* qcArchive::loadPointer()
{
    unsigned char tag = kNull;
    *this || tag;
    if (tag == kNull)
        return nullptr;
    if (tag == kNew)
        return loadNew();
    if (tag != kReference)
        throw ValueOutOfRange("a pointer record that is neither null, new nor a reference");
    unsigned long number = 0;
    *this || number;
    if (number == 0 || number > objects_->created.size())
        throw BadReference("a reference to object " + std::to_string(number) + " of " +
                           std::to_string(objects_->created.size()));
    Objects::Created const& target = objects_->created[number - 1];
    if (!target.rep && !target.owned)
        throw BadReference("a second reference to an object that has only one owner");
    return target.object;
}

qcPersistent* qcArchive::loadNew()
{
    Operation const operation(*this);
    std::string const name = className({});
    qc_Instantiator::Factory const make = qnInternal::findFactory(name);
    if (!make)
        throw UnknownClass("no factory for a class of the archive");

    auto& created = objects_->created;
    created.reserve(created.size() == created.capacity() ? 2 * created.size() + 1 : 0);
    qcPersistent* const object = make();
    if (!object)
        throw UnknownClass("the factory of " + name + " makes nothing");
    auto const rep = dynamic_cast<qcRepBase const*>(object);
    qc_PtrHandleBase_RepAccessor::retain(rep);
    created.push_back({object, rep, true, false});  // has room: from here on it cannot be lost
    std::size_t const index = created.size() - 1;
    objects_->numbers[wholeObject(object)] = static_cast<unsigned long>(index + 1);
    streamObject(*object);
    created[index].complete = true;
    return object;
}

bool qcArchive::isBeingLoaded(qcPersistent const* object) const
{
    Objects::Created const* const one = objects_ ? objects_->find(object) : nullptr;
    return one && !one->complete;
}

std::unique_ptr<qcPersistent> qcArchive::claim(qcPersistent* object)
{
    Objects::Created* const one = objects_ ? objects_->find(object) : nullptr;
    if (!one || one->rep || !one->owned)
        return nullptr;
    one->owned = false;
    return std::unique_ptr<qcPersistent>(object);
}
