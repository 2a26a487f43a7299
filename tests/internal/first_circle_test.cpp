// Points beyond the circle around the first vertex are outside where the plain steps say so.
#include "cntr/internal/first_circle.h"
#include "cntr/internal/ray_direction.h"
#include "tests/support/outlines.h"
#include "tests/support/plain_region.h"
#include "tests/support/regions.h"
#include "tests/support/rounds.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <string>

using namespace qnInternal;
using qnOutlines::uniform;
using qnTest::Points;
using qnTest::rounds;

namespace {

constexpr double kTurn = 2 * qnAngle::kPi;

/// Out and back again between its own turns.
Points spiral(std::size_t n, double turns)
{
    Points points;
    for (std::size_t i = 0; i < n; ++i) {
        double const part = 2 * static_cast<double>(i) / static_cast<double>(n);
        double const out = part < 1 ? part : 2 - part;
        points.emplace_back(turns * out + (part < 1 ? 0.1 : 0.6), qcRadian(kTurn * turns * out));
    }
    return points;
}

/// A centre and points around it, all equally far away or only some of them.
Points wheel(std::mt19937& random, std::size_t n)
{
    Points points{{0, 0}};
    double const least = random() % 2 == 0 ? 1 : 0.2;
    for (std::size_t i = 1; i < n; ++i) {
        double const part = static_cast<double>(i) / static_cast<double>(n);
        double const radius = random() % 2 == 0 ? 1 : uniform(random, least, 1);
        points.emplace_back(radius, qcRadian(kTurn * part));
    }
    return points;
}

Points someOutline(std::mt19937& random)
{
    std::size_t const n = 4 + random() % (random() % 4 == 0 ? 150 : 12);
    Points points = random() % 2 == 0 ? wheel(random, n) : spiral(n, uniform(random, 0.5, 4));
    if (random() % 3 == 0)
        std::rotate(points.begin(), points.begin() + long(random() % n), points.end());
    double const scale = std::pow(10.0, uniform(random, -5, 5));
    qcVector<2> const shift{uniform(random, -1e3, 1e3), uniform(random, -1e3, 1e3)};
    qcVector<2> const turned(scale, qcRadian(uniform(random, 0, kTurn)));
    for (auto& point : points)
        point = turned * point.x() + qcVector<2>(-turned.y(), turned.x()) * point.y() + shift;
    return points;
}

struct Known {
    explicit Known(Points const& outline) : box(boxOf(outline.front()))
    {
        for (auto const& point : outline) {
            enclose(box, point);
            radius = std::max(radius, outline.front().distance(point));
        }
    }

    Box box;
    double radius = 0;
};

/// In the box, many beyond the circle: anywhere, in corners, on the sides, and hardly beyond the circle,
/// now and then beside a vertex.
Points places(Points const& outline, Known const& known, std::mt19937& random)
{
    Points found;
    qcVector<2> const size = known.box.max - known.box.min;
    auto const within = [&](double x, double y) {
        return known.box.min + qcVector<2>(size.x() * x, size.y() * y);
    };
    for (int i = 0; i < 40; ++i) {
        double const x = uniform(random, 0, 1), y = uniform(random, 0, 1);
        double const one = std::round(uniform(random, 0, 1)),
                     other = std::round(uniform(random, 0, 1));
        qcVector<2> const& vertex = outline[random() % outline.size()];
        double const far = known.radius + std::pow(10.0, uniform(random, -9, -3));
        found.insert(found.end(), {within(x, y), within(x * x * x, 1 - y * y * y), within(one, y),
                                   within(x, other), within(one, other),
                                   outline.front() + qcVector<2>(far, qcRadian(kTurn * x)),
                                   outline.front() + (vertex - outline.front()).unit() * far});
    }
    found.erase(std::remove_if(found.begin(), found.end(),
                               [&](auto const& place) { return !holds(known.box, place); }),
                found.end());
    return found;
}

}  // namespace

TEST(FirstCircle, RaysThatBeginAndEndBeyondItCrossTheOutlineAnEvenNumberOfTimes)
{
    std::mt19937 random(31);
    int passed = 0, ended = 0, odd = 0, seenAbove = 0;
    for (int i = 0; i < rounds(600); ++i) {
        Points const outline = someOutline(random);
        Known const known(outline);
        ParityReach const reach(known.box, outline.size(), outline.front(),
                                {known.radius, known.radius});
        if (!reach.certain())
            continue;
        FirstCircle const circle(outline.front(), known.radius, reach);
        for (auto const& place : places(outline, known, random)) {
            if (!circle.isBeyond(place))
                continue;
            SCOPED_TRACE(testing::Message() << i << ": " << place.x() << ' ' << place.y());
            auto const ray = rayDirection(outline, place);
            ASSERT_TRUE(ray);
            bool const ends = circle.isBeyond(place + *ray * (2 * known.radius));
            bool const inside = qnPlain::insideCount(outline, place, false) % 2 == 1;
            EXPECT_FALSE(ends && inside);
            ended += ends;
            odd += inside;
            if (circle.isPassedFrom(place)) {
                ++passed;
                EXPECT_TRUE(ends);
                continue;
            }
            seenAbove += circle.lowestAngle(place) > 0;
            for (auto const& vertex : outline)
                EXPECT_GT((vertex - place).angle().norm().toDouble(),
                          circle.lowestAngle(place) - 1e-9);
        }
    }
    EXPECT_GT(passed, 1000);
    EXPECT_GT(ended, 5000);
    EXPECT_GT(seenAbove, 1000);
    EXPECT_GT(odd, 10) << "rays that end too soon";
}

TEST(FirstCircle, NoAnswerDependsOnIt)
{
    std::mt19937 random(32);
    for (int i = 0; i < rounds(300); ++i) {
        Points const outline = someOutline(random);
        qcRegion region = qnTest::regionOf(outline);
        for (auto const& place : places(outline, Known(outline), random))
            EXPECT_EQ(region.inside(place, false), qnPlain::inside({outline, {}}, place, false))
                << i << ": " << place.x() << ' ' << place.y();
    }
}
