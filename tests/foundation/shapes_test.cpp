// Vectors, angles, matrices, shapes and transforms.
#include <qc/core/archive.h>
#include <qc/core/compare.h>
#include <qc/core/exception.h>
#include <qc/core/internal/plane.h>
#include <qc/core/random.h>
#include <qc/core/shapes.h>
#include <qc/core/xform_base.h>

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <iterator>
#include <limits>
#include <stdexcept>
#include <type_traits>

namespace {

using V = qcVector<2>;
constexpr double kPi = 3.14159265358979323846;
constexpr double kInf = std::numeric_limits<double>::infinity();
double const kNaN = std::nan("");

static_assert(std::is_trivially_copyable<V>::value &&
              std::is_trivially_copyable<qcXform<2>>::value &&
              std::is_trivially_copyable<qcPair<long>>::value &&
              std::is_trivially_copyable<qcRadian>::value);
static_assert(qcXform<2>() * V(3, 4) == V(3, 4) && V(1, 0).cross(V(0, 1)) == 1.0);

}  // namespace

TEST(Angle, ComesIntoOneTurn)
{
    double const turn = 2 * kPi;
    double const cases[][2] = {{0, 0},         {-0.0, 0},   {1, 1},     {turn, 0},
                               {-1, turn - 1}, {-1e-20, 0}, {-turn, 0}, {7, 7 - turn}};
    for (auto const& c : cases) {
        EXPECT_EQ(qcRadian(c[0]).norm().toDouble(), c[1]) << c[0];
        EXPECT_FALSE(std::signbit(qcRadian(c[0]).norm().toDouble())) << c[0];
    }
    EXPECT_EQ(qcDegree(-90).norm(), qcDegree(270));
    EXPECT_TRUE(std::isnan(qcRadian(kInf).norm().toDouble()));
    EXPECT_DOUBLE_EQ(qcDegree(qcAngle8(64).toRadian()).toDouble(), 90.0);
}

TEST(Vector, HasDirectionAndUnitAtEverySize)
{
    EXPECT_EQ(V(-1e-200, 0).angle(), qcRadian(kPi));  // the square underflows
    for (auto const& v : {V(3, 4), V(3e-200, 4e-200), V(3e200, 4e200)})
        EXPECT_TRUE(qfRealEq(v.unit(), V(0.6, 0.8), 1e-15)) << v.x();
    EXPECT_EQ(V().unit(), V());
}

TEST(Compare, IsAbsoluteAndFlooringIsDefined)
{
    EXPECT_TRUE(qfRealEq(V(1, kInf), V(1.25, kInf), 0.25));
    EXPECT_FALSE(qfRealEq(V(1, 2), V(1, 2.26), 0.25) || qfRealEq(V(kNaN, 0), V(kNaN, 0), 1.0));
    for (int k = 0; k < 4; ++k) {
        qcMatrix<2> off;
        off.element(k / 2, k % 2, off.element(k / 2, k % 2) + 0.5);
        EXPECT_FALSE(qfRealEq(qcMatrix<2>(), off, 0.4)) << k;
        EXPECT_TRUE(qfRealEq(qcMatrix<2>(), off, 0.5)) << k;
    }
    std::pair<double, long> const cases[] = {
        {2.7, 2},           {-2.1, -3}, {5.0, 5},         {9223372036854775808.0, LONG_MAX},
        {-1e300, LONG_MIN}, {kNaN, 0},  {-kInf, LONG_MIN}};
    for (auto const& [value, floored] : cases)
        EXPECT_EQ(qfIFloor(value), floored) << value;
}

TEST(Matrix, InvertsWhateverDoublesHold)
{
    qcMatrix<2> const rotation(qcRadian(0.3), qcRadian(0.3), 1.0, 1.0);
    EXPECT_EQ(rotation.element(0, 1), -std::sin(0.3));
    EXPECT_EQ(rotation.element(1, 0), std::sin(0.3));
    for (double const scale : {1e-200, 1.0, 1e200}) {  // the determinant alone would not hold these
        qcMatrix<2> const m(2 * scale, scale, 7 * scale, 4 * scale);
        EXPECT_TRUE(qfRealEq(m * m.inverse(), qcMatrix<2>(), 1e-14)) << scale;
    }
    for (auto const& m :
         {qcMatrix<2>(0, 0, 0, 0), qcMatrix<2>(1, 2, 2, 4), qcMatrix<2>(kNaN, 0, 0, 1),
          qcMatrix<2>(kInf, 0, 0, 1), qcMatrix<2>(5e-324, 0, 0, 5e-324)})
        EXPECT_THROW(m.inverse(), qcMathError::Singular);
    qcXform<2> const x(qcMatrix<2>(2, 1, 7, 4), V(5, -6));
    EXPECT_TRUE(qfRealEq(x.inverse() * (x * V(3, 8)), V(3, 8), 1e-12));
    EXPECT_EQ((x * qcXform<2>(rotation, V(1, 2))) * V(), x * V(1, 2));
}

TEST(Line, AnswersInEveryPosition)
{
    qcLine const diagonal = qcLineSeg({1, 1}, {4, 4}).line();
    EXPECT_EQ(diagonal, qcLine({1, 1}, {3, 3}));
    qcLine const none({5, 7}, {0, 0});
    struct {
        qcLine a, b;
        bool parallel;
        V crossing;
    } const cases[] = {
        {diagonal, {{0, 4}, {1, -1}}, false, {2, 2}},
        {diagonal, {{0, 4}, {-2, -2}}, true, {2, 2}},  // foot of the other base
        {diagonal, none, true, {6, 6}},
        {none, diagonal, true, {5, 7}},
        {{{0, 0}, {1, 0}}, {{0, 1}, {1, 0.99e-10}}, true, {-1 / 0.99e-10, 0}},
        {{{0, 0}, {1, 0}}, {{0, 1}, {1, 1.01e-10}}, false, {-1 / 1.01e-10, 0}},
    };
    for (auto const& c : cases) {
        EXPECT_EQ(c.a.isParallel(c.b), c.parallel) << &c - cases;
        EXPECT_LT(c.a.intersect(c.b).distToPoint(c.crossing), 1e-4) << &c - cases;
    }
    EXPECT_EQ(diagonal.proj({0, 4}).position(), V(2, 2));
    EXPECT_DOUBLE_EQ(diagonal.distToPoint({0, 4}), 2 * std::sqrt(2.0));
    EXPECT_EQ(none.proj({9, 9}).position(), V(5, 7));
    EXPECT_EQ(none.distToPoint({8, 11}), 5.0);
}

TEST(LineSeg, DistanceIsToTheNearestOfItsPoints)
{
    V const a(0, 0), b(10, 0);
    std::pair<V, double> const cases[] = {
        {{4, -3}, 3}, {{-3, 4}, 5}, {{13, 4}, 5}, {{7, 0}, 0}, {{15, 0}, 5}};
    for (auto const& [x, distance] : cases) {
        EXPECT_EQ(qcLineSeg(a, b).distToPoint(x), distance);
        EXPECT_EQ(qcLineSeg(b, a).distToPoint(x), distance) << "reversed";
    }
    EXPECT_EQ(qcLineSeg({2, 2}, {2, 2}).distToPoint({5, 6}), 5);
}

TEST(LineSeg, DistanceIsThatOfTheDividedPlaceOfTheFoot)
{
    auto const divided = [](V const& a, V const& b, V const& x) {
        double const t = ((x - a) * (b - a)) / ((b - a) * (b - a));
        if (!(t > 0))
            return x.distance(a);
        return t >= 1 ? x.distance(b) : std::fabs((b - a).cross(x - a)) / (b - a).len();
    };
    // Squares and quotients that vanish, that overflow, that are NaN.
    double const numbers[] = {0,     1,     -3,     0.1,   5e-324, 1e-160, -1e-155, 1e-100,
                              1e100, 1e154, -2e154, 1e160, 1e308,  kInf,   -kInf,   kNaN};
    qcRandomUniform random(1);
    auto const any = [&] { return numbers[qfIFloor(random.next(0, std::size(numbers)))]; };
    for (int round = 0; round < 100'000; ++round) {
        V const a(any(), any()), b(any(), any()), x(any(), any());
        double const expected = divided(a, b, x), d = qnInternal::segmentDistance(a, b, x);
        ASSERT_TRUE(d == expected || (d != d && expected != expected))
            << a.x() << ' ' << a.y() << ", " << b.x() << ' ' << b.y() << ", " << x.x() << ' '
            << x.y() << ": " << d << " for " << expected;
    }
}

TEST(Rect, IsClosedAndEnclosesExactly)
{
    qcRect const rect({1, 2}, {3, 4});
    for (auto const& p : {V(1, 2), V(4, 6), V(1, 6)})
        EXPECT_TRUE(rect.within(p));
    for (auto const& p : {V(0.999, 3), V(4.001, 3), V(2, 1.999), V(2, 6.001), V(kNaN, 3)})
        EXPECT_FALSE(rect.within(p)) << p.x() << ' ' << p.y();
    EXPECT_EQ(rect, qcRect({4, 6}, {-3, -4}));
    // 0.1 + (1e17 - 0.1) is not 0.1 any more when taken through a size.
    qcRect const far = qcRect({0.1, -0.3}, {0, 0}).enclose(qcRect({1e17, 7}, {0, 0}));
    EXPECT_EQ(far.origin(), V(0.1, -0.3));
    EXPECT_EQ(far.lr(), V(1e17, 7));
    EXPECT_EQ(qcRect().enclose(rect), rect.enclose(qcRect()));
}

TEST(Shapes, EllipseAndPolygonKeepWhatTheyAreGiven)
{
    for (bool const clockwise : {false, true})
        for (bool const opposite : {false, true}) {
            qcEllipse const e({{0, 0}, {4, 2}, qcRadian(kPi / 2), clockwise, opposite});
            V const quarter(clockwise == opposite ? -2 : 2, 0);
            EXPECT_TRUE(qfRealEq(e.pointAt(qcRadian(0)), V(0, opposite ? -4 : 4), 1e-14));
            EXPECT_TRUE(qfRealEq(e.pointAt(qcRadian(kPi / 2)), quarter, 1e-14));
        }
    qcPolygon const polygon({{1, 1}, {2, 1}}, qcPolygon::PolyFillMode(0));
    EXPECT_THROW(polygon[2], std::out_of_range);
    EXPECT_THROW(polygon[-1], std::out_of_range);
}

TEST(Xform, GoesThereAndBack)
{
    using Handle = qcPtrHandle<qc2XformBase>;
    Handle const linear(new qc2XformLinear(qcMatrix<2>(2, 1, 0, 3), V(5, 6)));
    Handle const rigid(new qc2Rigid(qcDegree(-270), V(1, 2)));
    EXPECT_EQ(rigid->mapPoint({1, 0}), V(1, 3));  // a quarter turn, exactly
    V const p(7, -2);
    for (auto const& x :
         {linear, rigid, linear->composeBase(*rigid), rigid->composeBase(*linear)}) {
        EXPECT_TRUE(x->isLinear());
        EXPECT_TRUE(qfRealEq(x->inverseBase()->mapPoint(x->mapPoint(p)), p, 1e-13));
        EXPECT_EQ(x->clone()->mapPoint(p), x->mapPoint(p));
        EXPECT_EQ(x->linearXform(p) * p, x->mapPoint(p));
        EXPECT_EQ(x->clone()->refCount(), 1u);
    }
    EXPECT_EQ(linear->composeBase(*rigid)->mapPoint(p), linear->mapPoint(rigid->mapPoint(p)));
    EXPECT_TRUE(qc2XformLinear(qcMatrix<2>(1, 2, 2, 4), V()).inverseBase().isNull());
    EXPECT_TRUE(qc2Rigid(qcDegree(kNaN), V()).inverseBase().isNull());
    EXPECT_NE(dynamic_cast<qc2Rigid*>(rigid->inverseBase().get()), nullptr);
}

namespace {

template <class T>
void expectRoundTrip(T const& original, T loaded)
{
    qcMemoryArchive out;
    T stored(original);
    out || stored;
    out.close();
    qcMemoryArchive in(out.bytes());
    in || loaded;
    EXPECT_TRUE(loaded == original);
    for (std::size_t cut = 0; cut < out.bytes().size(); ++cut) {
        T untouched(original);
        qcMemoryArchive part(out.bytes().data(), cut);
        EXPECT_THROW(part || untouched, qcArchive::EndOfData) << cut;
        EXPECT_TRUE(untouched == original) << cut;
    }
    auto bytes = out.bytes();
    bytes[0] = 9;
    qcMemoryArchive newer(bytes);
    EXPECT_THROW(newer || loaded, qcArchive::UnknownVersion);
}

}  // namespace

TEST(Shapes, AreStoredAndLoaded)
{
    expectRoundTrip(qcLine({1, 2}, {3, 4}), qcLine());
    expectRoundTrip(qcLineSeg({1, 2}, {3, 4}), qcLineSeg());
    expectRoundTrip(qcRect({1, 2}, {3, 4}), qcRect());
    expectRoundTrip(qcCircle({1, 2}, 3), qcCircle());

    qc2XformLinear linear(qcMatrix<2>(2, 1, 0, 3), V(5, 6));
    qc2Rigid rigid(qcDegree(30), V(-1, 2));
    for (qc2XformBase* x :
         {static_cast<qc2XformBase*>(&linear), static_cast<qc2XformBase*>(&rigid)}) {
        qcMemoryArchive out;
        qcPersistent* loaded = nullptr;
        qcPersistent::serializePointer(out, x, loaded);
        out.close();
        qcMemoryArchive in(out.bytes());
        qcPersistent::serializePointer(in, nullptr, loaded);
        qcPtrHandle<qc2XformBase> const back(dynamic_cast<qc2XformBase*>(loaded));
        EXPECT_EQ(dynamic_cast<qc2Rigid*>(back.get()) != nullptr, x == &rigid);
        EXPECT_EQ(back->mapPoint({7, 8}), x->mapPoint({7, 8}));
    }
}

TEST(Random, IsSeededAndNeverReachesTheTop)
{
    qcRandomUniform a(1), b(1), other(2);
    bool differs = false;
    for (int i = 0; i < 2000; ++i) {
        double const value = a.next(0.0, 8.0);
        ASSERT_EQ(value, b.next(0.0, 8.0));
        ASSERT_TRUE(value >= 0.0 && value < 8.0);
        differs |= value != other.next(0.0, 8.0);
        // Neighbours: half of all values would round up to the bound.
        ASSERT_EQ(a.next(1.0, std::nextafter(1.0, 2.0)), 1.0);
        b.next(0.0, 1.0);
    }
    EXPECT_TRUE(differs);
    for (double const value : {a.next(3.0, 3.0), a.next(3.0, 2.0), a.next(3.0, kNaN)})
        EXPECT_EQ(value, 3.0);
    EXPECT_TRUE(std::isfinite(a.next(-1.7e308, 1.7e308)));
}
