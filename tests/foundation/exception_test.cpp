// Texts and records of exceptions; tracked objects and their listeners.
#include <qc/core/archive.h>

#include <gtest/gtest.h>

namespace {

class Failure : public qcExceptionWithString {
public:
    explicit Failure(wchar_t const* message) : qcExceptionWithString(message) {}
    long errorNumber() const override { return 77; }
    void suicideAndRethrow() override { suicideAndRethrowAs(this); }
};

TEST(Exception, SaysWhatHappened)
{
    EXPECT_STREQ(Failure(L"not gr\u00FC\u00DFe \u20AC \U0001F600").what(),
                 "not gr\xC3\xBC\xC3\x9F"
                 "e \xE2\x82\xAC \xF0\x9F\x98\x80");
    EXPECT_STREQ(Failure(nullptr).what(), "(anonymous namespace)::Failure");
    qcArchive::UnknownVersion const version("cntr/contour", 900);
    EXPECT_NE(std::string(version.what()).find("cntr/contour:900"), std::string::npos);
    EXPECT_EQ(std::string(qcArchive::UnknownVersion(version).what()), version.what());

    Failure changed(L"first");
    EXPECT_STREQ(changed.what(), "first");  // kept: an assignment drops it
    changed = Failure(L"second");
    EXPECT_STREQ(changed.what(), "second");
    qcMemoryArchive bad(std::vector<unsigned char>{0, 1});
    EXPECT_THROW(bad || changed, qcArchive::UnknownVersion);
    EXPECT_EQ(changed.message(), L"second");
}

struct Tracked : qcPersistent {
    void change() { notifyChange(); }
};

struct Listener : qcChangeListener {
    void changed(qcPersistent const& object) noexcept override
    {
        heard.push_back(&object);
        if (removeMyself)
            qcPersistent::removeListener(*this);
    }
    std::vector<qcPersistent const*> heard;
    bool removeMyself = false;
};

TEST(Tracking, TellsListenersWhichTrackedObjectChanged)
{
    Listener first;
    Listener second;
    second.removeMyself = true;
    qcPersistent::addListener(first);
    qcPersistent::addListener(second);
    qcPersistent const* gone = nullptr;
    Tracked quiet;
    {
        Tracked tracked;
        gone = &tracked;
        tracked.tracking(true);
        Tracked copy(tracked);
        EXPECT_FALSE(copy.tracking());
        quiet = tracked;
        quiet.change();
        copy.change();
        EXPECT_TRUE(first.heard.empty());
        tracked.change();
    }
    EXPECT_EQ(first.heard, (std::vector<qcPersistent const*>{gone, gone})) << "change, destruction";
    EXPECT_EQ(second.heard.size(), 1u);
    qcPersistent::removeListener(first);
    quiet.tracking(true);
    quiet.change();
    EXPECT_EQ(first.heard.size(), 2u);
}

}  // namespace
