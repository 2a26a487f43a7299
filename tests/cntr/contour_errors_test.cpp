// The exception classes: numbers, messages, bases, records; and which query throws on few points.
#include <cntr/contour.h>
#include <cntr/region.h>

#include <gtest/gtest.h>

#include <functional>
#include <sstream>

namespace {

struct Gone : qcChangeListener {
    Gone() { qcPersistent::addListener(*this); }
    ~Gone() override { qcPersistent::removeListener(*this); }
    void changed(qcPersistent const&) noexcept override { ++count; }
    int count = 0;
};

template <class Base, class E>
bool caughtAs(E const& e)
{
    try {
        throw e;
    } catch (Base const& caught) {
        return static_cast<void const*>(dynamic_cast<E const*>(&caught)) != nullptr;
    } catch (...) {
        return false;
    }
}

template <class E>
class ContourError : public testing::Test {
};

using Classes = testing::Types<qcContourDefs::EmptyContour, qcContourDefs::EmptyRegionSet,
                               qcContourDefs::BadParams, qcContourDefs::RegionCannotBeSetOpen>;
TYPED_TEST_SUITE(ContourError, Classes);

struct Facts {
    char const* name;
    long number;
};

template <class E>
constexpr Facts kFacts{};
template <>
constexpr Facts kFacts<qcContourDefs::EmptyContour>{"qcContourDefs::EmptyContour", 0x10004680};
template <>
constexpr Facts kFacts<qcContourDefs::EmptyRegionSet>{"qcContourDefs::EmptyRegionSet", 0x10004682};
template <>
constexpr Facts kFacts<qcContourDefs::BadParams>{"qcContourDefs::BadParams", 0x10004683};
template <>
constexpr Facts kFacts<qcContourDefs::RegionCannotBeSetOpen>{"qcContourDefs::RegionCannotBeSetOpen",
                                                             0x10004684};

TYPED_TEST(ContourError, IsCaughtByEveryBaseAndKeepsItsNumber)
{
    TypeParam const plain, said(L"so \u20AC");
    EXPECT_EQ(plain.message(), L"");
    std::wostringstream text;
    said.message_(text);
    EXPECT_EQ(text.str(), L"so \u20AC");
    EXPECT_TRUE(caughtAs<qcContourDefs::Errors>(said));
    EXPECT_TRUE(caughtAs<qcExceptionWithString>(said));
    EXPECT_TRUE(caughtAs<qcException>(said));
    EXPECT_TRUE(caughtAs<qcPersistent>(said));
    EXPECT_TRUE(caughtAs<std::exception>(said));
    EXPECT_EQ((caughtAs<qcContourDefs::BadParams>(said)),
              (std::is_same_v<TypeParam, qcContourDefs::BadParams>));
    try {
        throw said;
    } catch (qcContourDefs::Errors const& e) {
        EXPECT_EQ(e.errorNumber(), kFacts<TypeParam>.number);
    }
    TypeParam assigned;
    EXPECT_EQ(&(assigned = said), &assigned);
    EXPECT_EQ(assigned.message(), L"so \u20AC");
}

TYPED_TEST(ContourError, RethrowsItselfFromTheHeap)
{
    Gone gone;
    auto* const heap = new TypeParam(L"why");
    heap->tracking(true);
    try {
        heap->suicideAndRethrow();
        ADD_FAILURE() << "returned";
    } catch (TypeParam const& e) {
        EXPECT_EQ(gone.count, 1)
            << "the object on the heap, and it alone, was tracked and has ended";
        EXPECT_EQ(e.message(), L"why");
    }
}

TYPED_TEST(ContourError, ItsRecordIsTwoVersionsAndTheMessage)
{
    TypeParam stored(L"hi");
    qcMemoryArchive out;
    out || stored;
    std::vector<unsigned char> const bytes = out.bytes();
    EXPECT_EQ(bytes,
              (std::vector<unsigned char>{0, 0, 0, 0, 2, 0, 0, 0, 'h', 0, 0, 0, 'i', 0, 0, 0}));
    TypeParam loaded(L"other");
    qcMemoryArchive in(bytes);
    in || loaded;
    EXPECT_EQ(loaded.message(), L"hi");
    char const* const names[] = {kFacts<TypeParam>.name, "qcContourDefs::Errors"};
    for (std::size_t at = 0; at < 2; ++at)
        try {
            auto broken = bytes;
            broken[at] = 1;
            TypeParam target;
            qcMemoryArchive unknown(broken);
            unknown || target;
            ADD_FAILURE() << names[at];
        } catch (qcArchive::UnknownVersion const& e) {
            EXPECT_STREQ(e.file(), names[at]);
            EXPECT_EQ(e.line(), 0);
        }
}

TEST(ContourErrors, QueriesThatNeedEdgesThrowOnFewerThanTwoPoints)
{
    qcVector<2> const p(1, 1);
    qcRegion region({{7, 7}, {8, 8}});
    qcEllipse ellipse;
    double residual = 4;
    struct {
        char const* name;
        std::function<void(qcContour const&)> ask;
    } const cases[] = {
        {"mean position", [&](auto const& c) { c.meanPosition(); }},
        {"closest vertex", [&](auto const& c) { c.closestVertexIndex(p); }},
        {"closest point", [&](auto const& c) { c.closestPoint(p, false); }},
        {"closest vertex position", [&](auto const& c) { c.closestPoint(p, true); }},
        {"distance", [&](auto const& c) { c.distToPoint(p, false); }},
        {"vertices near", [&](auto const& c) { c.vertexIndex(p, -1); }},
        {"extremal vertex", [&](auto const& c) { c.extremalVertexIndex(qcRadian(1)); }},
        {"extremal position", [&](auto const& c) { c.extremalVertexPosition(qcRadian(1)); }},
        {"crossings", [&](auto const& c) { c.intersections(qcLineSeg(), true); }},
        {"crossings with another", [&](auto const& c) { c.intersections(qcContour()); }},
        {"rectangle", [&](auto const& c) { c.encloseRect(qcXform<2>::I); }},
        {"hull", [&](auto const& c) { c.convexHull(region); }},
        {"ellipse", [&](auto const& c) { c.fitEllipse(ellipse, residual); }},
    };
    for (auto const& c : cases)
        for (auto const& few : {qcContour(), qcContour({p}), qcContour({p}, false)})
            try {
                c.ask(few);
                ADD_FAILURE() << c.name;
            } catch (qcContourDefs::EmptyContour const& e) {
                EXPECT_EQ(e.message(), L"") << c.name;
            }
    EXPECT_EQ(region.points().size(), 2u);
    EXPECT_EQ(residual, 4);
    EXPECT_EQ(qcContour({p}).length(), 0);
}

}  // namespace
