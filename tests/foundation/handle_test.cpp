// Counted handles: who is held, how often, and what a release costs.
#include <qc/core/exception.h>
#include <qc/core/handle.h>

#include <gtest/gtest.h>

#include <atomic>

namespace {

struct Declared;

// Everything but making a handle works where the class is only declared.
struct Keeper {
    qcPtrHandle<Declared> handle;
    qcPtrHandle_const<Declared> constHandle;
    Keeper copy() const { return *this; }
    void drop() { *this = Keeper(); }
    void share() { constHandle = handle; }
};

std::atomic<int> living{0};

struct Link : virtual qcRepBase {
    Link() { ++living; }
    Link(Link const& other) : qcRepBase(other), next(other.next) { ++living; }
    ~Link() override { --living; }
    qcPtrHandle<Link> next;
};

struct Other {
    virtual ~Other() = default;
    long padding = 7;
};

struct Declared : Other, Link {};

TEST(Handle, CountsItsHoldersAndDeletesWithTheLast)
{
    ASSERT_EQ(living, 0);
    auto* const object = new Declared;
    Keeper keeper;
    keeper.handle = qcPtrHandle<Declared>(object);
    keeper.share();
    Keeper second = keeper.copy();
    EXPECT_EQ(object->refCount(), 4u);
    EXPECT_TRUE(second.handle == keeper.constHandle);
    EXPECT_EQ(Link(*object).refCount(), 0u) << "a copy has a count of its own";
    {
        qcPtrHandle<Link> const base = second.handle;  // another address in the object
        qcPtrHandle_const<Link> const constBase = base;
        EXPECT_EQ(&*constBase, static_cast<Link const*>(object));
        EXPECT_EQ(object->refCount(), 6u);
        second.drop();
        keeper.drop();
        EXPECT_EQ(object->refCount(), 2u);
        EXPECT_EQ(living, 1);
    }
    EXPECT_EQ(living, 0);
}

TEST(Handle, MovesAndAssignsWithoutLosingCount)
{
    qcPtrHandle<Link> a(new Link);
    Link* const object = a.get();
    qcPtrHandle<Link> b(std::move(a));
    EXPECT_TRUE(a.isNull());
    EXPECT_EQ(object->refCount(), 1u);
    auto& self = b;
    b = self;
    EXPECT_EQ(object->refCount(), 1u);
    b = qcPtrHandle<Link>(new Link);
    EXPECT_EQ(living, 1) << "the replaced object is gone";
    b = qcPtrHandle<Link>();
    EXPECT_EQ(living, 0);
    EXPECT_TRUE(a == b && !(a != b)) << "null equals null";
    EXPECT_THROW(*b, qcBadPointer);
    EXPECT_THROW((void)b->next, qcBadPointer);
}

TEST(Handle, ReleasesAChainOfAMillionOnABoundedStack)
{
    qcPtrHandle<Link> head;
    for (int i = 0; i < 1000000; ++i) {
        qcPtrHandle<Link> const link(new Link);
        link->next = head;
        head = link;
    }
    EXPECT_EQ(living, 1000000);
    head = qcPtrHandle<Link>();
    EXPECT_EQ(living, 0);
}

}  // namespace
