// The archive: its format, its refusals, its pointer records and its files.
#include <qc/core/archive.h>
#include <qc/core/handle.h>
#include <qc/features/edgelet.h>

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <functional>

namespace {

using Bytes = std::vector<unsigned char>;

int living = 0;

/// A counted object that points to others.
class Node : public virtual qcPersistent, public virtual qcRepBase {
public:
    Node() { ++living; }
    ~Node() override { --living; }
    static qcPersistent* make() { return new Node; }

    long value = 0;
    std::vector<qcPtrHandle<Node>> next;
    int reInits = 0;
    bool streamTwice = false;
    bool sawItself = false;
    void reInit() override { ++reInits; }

protected:
    void dispatchSerialize(qcArchive& ar) override
    {
        if (haveVisited(this, sizeof(Node)))
            return;
        unsigned char version = 3;
        ar || version;
        if (version != 3)
            throw qcArchive::UnknownVersion("node", 12);
        qcPersistent::dispatchSerialize(ar);
        ar || value;
        next.resize(ar.count(next.size(), 1));
        for (auto& handle : next) {
            qcPersistent* loaded = nullptr;
            serializePointer(ar, handle.get(), loaded);
            if (ar.isStoring())
                continue;
            sawItself = sawItself || (loaded == this && ar.isBeingLoaded(loaded));
            if (!ar.isBeingLoaded(loaded))  // a cycle of handles would never be deleted
                handle = qcPtrHandle<Node>(dynamic_cast<Node*>(loaded));
        }
        setVisited(this, sizeof(Node));
        if (streamTwice)
            ar || *this;  // silent: within its own record
    }

private:
    static qc_Instantiator sExemplar;
};

qc_Instantiator Node::sExemplar(typeid(Node), Node::make);

/// One that nobody counts.
struct Plain : qcPersistent {
    Plain() { ++living; }
    Plain(Plain const&) = delete;
    ~Plain() override { --living; }
    static qcPersistent* make() { return new Plain; }
};
qc_Instantiator const plainExemplar(typeid(Plain), Plain::make);

void storeUnregistered(qcArchive& archive)
{
    struct Unregistered : qcPersistent {
    } unknown;
    qcPersistent* none = nullptr;
    qcPersistent::serializePointer(archive, &unknown, none);
}

Bytes stored(std::function<void(qcArchive&)> const& write)
{
    qcMemoryArchive archive;
    write(archive);
    archive.close();
    return archive.bytes();
}

Bytes storedPointer(qcPersistent* object)
{
    return stored([&](qcArchive& ar) { qcPersistent::serializePointer(ar, object, object); });
}

/// Loads one pointer record and returns the exception's number, or 0.
long loadPointerError(Bytes const& bytes, long limit = qcArchive::kDefaultNestingLimit)
{
    qcMemoryArchive archive(bytes);
    archive.nestingLimit(limit);
    try {
        qcPersistent* loaded = nullptr;
        qcPersistent::serializePointer(archive, nullptr, loaded);
    } catch (qcArchive::Errors const& error) {
        return error.errorNumber();
    }
    return 0;
}

qcPtrHandle<Node> chain(int length)
{
    qcPtrHandle<Node> head;
    for (int i = 0; i < length; ++i) {
        qcPtrHandle<Node> const node(new Node);
        if (!head.isNull())
            node->next = {head};
        head = node;
    }
    return head;
}

struct Values {
    bool flag = true;
    unsigned char byte = 200;
    long negative = -2147483647L - 1;
    unsigned long large = 4294967295UL;
    double real = -0.1;
    qcVector<2> point{1.5, -2.0};
    qcEdgelet edge{{3.0, 4.0}, 0xABCD, qcAngle8(250)};
};

void stream(qcArchive& ar, Values& v)
{
    ar || v.flag || v.byte || v.negative || v.large || v.real || v.point || v.edge;
}

TEST(Archive, WritesOnePortableFormat)
{
    Values values, read{false, 0, 0, 0, 0.0, {}, {}};
    Bytes const bytes = stored([&](qcArchive& ar) { stream(ar, values); });
    // clang-format off
    Bytes const expected = {
        1, 200, 0x00, 0x00, 0x00, 0x80, 0xFF, 0xFF, 0xFF, 0xFF,  // to the unsigned
        0x9A, 0x99, 0x99, 0x99, 0x99, 0x99, 0xB9, 0xBF,  // -0.1
        0, 0, 0, 0, 0, 0, 0xF8, 0x3F, 0, 0, 0, 0, 0, 0, 0, 0xC0,  // the point
        0, 0, 0, 0, 0, 0, 0x08, 0x40, 0, 0, 0, 0, 0, 0, 0x10, 0x40, 0xCD, 0xAB, 250};
    // clang-format on
    EXPECT_EQ(bytes, expected);
    qcMemoryArchive archive(bytes);
    stream(archive, read);
    EXPECT_EQ(archive.remaining(), 0u);
    EXPECT_EQ(stored([&](qcArchive& ar) { stream(ar, read); }), bytes);
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        qcMemoryArchive truncated(bytes.data(), size);
        EXPECT_THROW(stream(truncated, read), qcArchive::EndOfData) << size;
    }
}

TEST(Archive, RefusesWhatAFieldCannotHold)
{
    bool flag = false;
    qcMemoryArchive two(Bytes{2}), storing;
    EXPECT_THROW(two || flag, qcArchive::ValueOutOfRange);
    for (long value : {2147483648L, -2147483649L})
        EXPECT_THROW(storing || value, qcArchive::ValueOutOfRange);
    unsigned long large = 4294967296UL;
    EXPECT_THROW(storing || large, qcArchive::ValueOutOfRange);
    EXPECT_TRUE(storing.bytes().empty());
    Bytes const bytes = {3, 0, 0, 0, 1, 2, 3, 4, 5, 6, 7, 8};  // a count of 3 and 8 bytes
    EXPECT_EQ(qcMemoryArchive(bytes).count(0, 2), 3u);
    EXPECT_THROW(qcMemoryArchive(bytes).count(0, 3), qcArchive::BadCount);
    qcMemoryArchive bomb(Bytes{0xFF, 0xFF, 0xFF, 0xFF, 0});
    EXPECT_THROW(bomb.count(0, static_cast<std::size_t>(-1)), qcArchive::BadCount);
}

TEST(Archive, NamesWhatIsWrongWithAPointerRecord)
{
    Node node;
    Bytes self = storedPointer(&node);
    self[self.size() - 4] = 1;                 // one neighbour:
    self.insert(self.end(), {2, 1, 0, 0, 0});  // object 1, itself
    Bytes version = storedPointer(&node);
    version[version.size() - 4 - 4 - 2] = 4;
    std::pair<Bytes, long> const cases[] = {
        {self, 0},
        {{2, 0, 0, 0, 0}, qcArchive::BadReference("").errorNumber()},
        {{3}, qcArchive::ValueOutOfRange("").errorNumber()},
        {{1, 1, 0, 0, 0, 'X'}, qcArchive::UnknownClass("").errorNumber()},
        {{1, 255, 255, 255, 255}, qcArchive::BadCount("").errorNumber()},  // a name of 4 GB
        {version, qcArchive::UnknownVersion("", 0).errorNumber()},
    };
    for (auto const& [bytes, error] : cases) {
        EXPECT_EQ(loadPointerError(bytes), error) << error;
        EXPECT_EQ(living, 1);
        EXPECT_EQ(loadPointerError(storedPointer(&node)), 0) << "the next load is unaffected";
    }
    qcMemoryArchive archive(self);
    qcPersistent* loaded = nullptr;
    qcPersistent::serializePointer(archive, nullptr, loaded);
    EXPECT_TRUE(dynamic_cast<Node*>(loaded)->sawItself);
    EXPECT_EQ(dynamic_cast<Node*>(loaded)->reInits, 1);
}

TEST(Archive, OwnsWhatNobodyCountsUntilItIsClaimed)
{
    ASSERT_EQ(living, 0);
    Bytes bytes = storedPointer(std::make_unique<Plain>().get());
    bytes.insert(bytes.end(), {2, 1, 0, 0, 0});
    std::unique_ptr<qcPersistent> mine;
    for (bool claim : {false, true}) {
        qcMemoryArchive archive(bytes);
        qcPersistent *loaded = nullptr, *again = nullptr;
        qcPersistent::serializePointer(archive, nullptr, loaded);
        if (claim) {
            mine = archive.claim(loaded);
            EXPECT_EQ(archive.claim(loaded), nullptr);
            EXPECT_THROW(qcPersistent::serializePointer(archive, nullptr, again),
                         qcArchive::BadReference);
        } else {
            qcPersistent::serializePointer(archive, nullptr, again);
            EXPECT_EQ(again, loaded);
        }
    }
    EXPECT_EQ(living, 1);
    mine.reset();
    EXPECT_EQ(living, 0);
}

TEST(Archive, TellsObjectsApartThatWereGoneBeforeTheNextWasStored)
{
    constexpr long kCount = 5;
    qcMemoryArchive storing;
    qcPersistent* none = nullptr;
    for (long value = 0; value < kCount; ++value) {
        qcPtrHandle<Node> const node(new Node);  // where the one before was, most likely
        node->value = value;
        qcPersistent::serializePointer(storing, node.get(), none);
    }
    storing.close();
    EXPECT_EQ(living, 0);
    qcMemoryArchive loading(storing.bytes());
    for (long value = 0; value < kCount; ++value) {
        qcPersistent* loaded = nullptr;
        qcPersistent::serializePointer(loading, nullptr, loaded);
        EXPECT_EQ(dynamic_cast<Node&>(*loaded).value, value);
    }
}

TEST(Archive, LimitsNestingBothWays)
{
    qcPtrHandle<Node> const deep = chain(1000);
    Bytes const bytes = storedPointer(deep.get());
    EXPECT_EQ(loadPointerError(bytes), 0);
    EXPECT_EQ(loadPointerError(bytes, 999), qcArchive::NestingTooDeep("").errorNumber());
    qcPtrHandle<Node> const deeper = chain(1001);
    EXPECT_THROW(storedPointer(deeper.get()), qcArchive::NestingTooDeep);
}

TEST(Archive, RemembersObjectsFromOpeningToClosing)
{
    Node node;
    node.streamTwice = true;
    Bytes const bytes = stored([&](qcArchive& ar) { ar || node; });
    EXPECT_EQ(bytes.size(), 1u + 1 + 4 + 4);
    Bytes twice = bytes;
    twice.insert(twice.end(), bytes.begin(), bytes.end());

    qcMemoryArchive loading(twice);
    Node other;
    loading || node;
    EXPECT_THROW(loading || node, qcArchive::AlreadyStreamed);
    loading || other;  // the refusal moved nothing
    EXPECT_EQ(loading.remaining(), 0u);
    EXPECT_FALSE(qcPersistent::haveVisited(&node, sizeof node)) << "no operation is under way";
    loading.close();
    EXPECT_THROW(loading || node, qcArchive::Unusable);

    qcMemoryArchive storing;
    storing || node;
    EXPECT_THROW(storing || node, qcArchive::AlreadyStreamed);
    qcPersistent* none = nullptr;
    EXPECT_THROW(qcPersistent::serializePointer(storing, &node, none), qcArchive::BadReference);
    EXPECT_THROW(storing || other, qcArchive::Unusable) << "after a failure";
    EXPECT_THROW(storing.close(), qcArchive::Unusable);
    EXPECT_THROW(other.loadSimple(storing), qcArchive::WrongDirection);
}

TEST(FileArchive, ReplacesAFileInOneStepOrNotAtAll)
{
    namespace fs = std::filesystem;
    fs::path const folder =
        fs::path(testing::TempDir()) / ("archive_test." + std::to_string(::getpid()));
    fs::create_directory(folder);
    auto const path = folder / "saved";
    auto const mine = fs::perms::owner_read | fs::perms::owner_write;
    auto const filesThere = [&] {
        return std::distance(fs::directory_iterator(folder), fs::directory_iterator());
    };
    auto const store = [&](long value, bool close, char const* name = "saved") {
        qcFileArchive archive(folder / name, qcFileArchive::eStore);
        archive || value;
        if (close)
            archive.close();
    };
    auto const load = [&] {
        qcFileArchive archive(path, qcFileArchive::eLoad);
        long value = 0;
        archive || value;
        EXPECT_THROW(archive || value, qcArchive::EndOfData);
        return value;
    };
    store(5, false);
    EXPECT_EQ(filesThere(), 0) << "never closed";
    store(6, true);
    fs::permissions(path, mine);
    fs::create_symlink(path, folder / "link");
    store(7, false);
    EXPECT_EQ(load(), 6);
    store(8, true, "link");
    EXPECT_TRUE(fs::is_symlink(folder / "link"));
    EXPECT_EQ(fs::status(path).permissions(), mine);
    {
        qcFileArchive archive(path, qcFileArchive::eStore);
        EXPECT_THROW(storeUnregistered(archive), qcArchive::UnknownClass);
        EXPECT_THROW(archive.close(), qcArchive::Unusable);
    }
    EXPECT_EQ(load(), 8);
    EXPECT_EQ(filesThere(), 2);
    fs::create_symlink("later", folder / "early");
    fs::create_symlink("loop", folder / "loop");
    store(9, true, "early");
    EXPECT_TRUE(fs::is_symlink(folder / "early") && fs::is_regular_file(folder / "later"));
    EXPECT_THROW(store(9, true, "loop"), qcArchive::FileError);
    EXPECT_TRUE(fs::is_symlink(folder / "loop"));
    auto const here = fs::current_path();
    fs::current_path(folder);
    qcFileArchive relative("saved", qcFileArchive::eStore);
    fs::current_path(here);
    long ten = 10;
    relative || ten;
    relative.close();
    EXPECT_EQ(load(), 10) << "after a change of the working folder";
    EXPECT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    EXPECT_THROW(qcFileArchive(folder / "pipe", qcFileArchive::eLoad), qcArchive::FileError);
    for (auto const direction : {qcFileArchive::eLoad, qcFileArchive::eStore})
        for (auto const& bad : {folder, folder / "no" / "where"})
            EXPECT_THROW(qcFileArchive(bad, direction), qcArchive::FileError);
    fs::remove_all(folder);
}

}  // namespace
