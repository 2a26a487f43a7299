// The edge finder of examples/inspect_parts: against discs whose edges are known, and against
// another program's measurement of the photograph.
#include "report.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <set>

namespace {

struct Disc {
    double x, y, radius;
};

/// Discs of level 180 on a ground that grows brighter, every pixel the mean of 64 places in it.
Image drawn(int width, int height, std::vector<Disc> const& discs)
{
    constexpr int kParts = 8;
    Image image(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            int covered = 0;
            for (int k = 0; k < kParts * kParts; ++k) {
                double const px = x + (k % kParts + 0.5) / kParts - 0.5;
                double const py = y + (k / kParts + 0.5) / kParts - 0.5;
                covered += std::any_of(discs.begin(), discs.end(), [&](Disc const& disc) {
                    return std::hypot(px - disc.x, py - disc.y) < disc.radius;
                });
            }
            double const ground = 40 + 0.1 * x;
            image.at(x, y) = ground + (180 - ground) * covered / (kParts * kParts);
        }
    }
    return image;
}

TEST(InspectParts, FindsDiscsWithinATenthOfAPixel)
{
    std::vector<Disc> const discs{// the last one runs out of the picture
                                  {40.3, 30.7, 20.0},
                                  {120.0, 35.5, 25.25},
                                  {60.8, 100.1, 12.0},
                                  {150.0, 110.0, 24.0}};
    auto const parts = findParts(drawn(160, 140, discs), PartSettings());
    auto const regions = makeRegions(parts);
    ASSERT_EQ(parts.size(), discs.size());
    for (std::size_t k = 0; k < parts.size(); ++k) {
        qcVector<2> const center = regions[k]->centerOfMass(false);
        auto const disc = *std::find_if(discs.begin(), discs.end(), [&](Disc const& d) {
            return center.distance({d.x, d.y}) < d.radius;
        });
        SCOPED_TRACE(disc.x);
        EXPECT_EQ(parts[k].touchesBorder, disc.x == 150.0);
        // Blur of the pixels, the smoothing and the differences, of variance 1.5 in all, draws the
        // strongest gradient of a round edge inwards by half of that over the radius.
        double const radius = disc.radius - 0.75 / disc.radius;
        for (qcEdgelet const& e : parts[k].edge) {
            qcVector<2> const inward = qcVector<2>(disc.x, disc.y) - e.position();
            EXPECT_NEAR(inward.len(), radius, 0.1);
            // The angle points to the bright side, to within three codes.
            double const off = e.angle().toRadian().toDouble() - inward.angle().toDouble();
            EXPECT_GT(std::cos(off), std::cos(3 * qnAngle::kPi / 128));
        }
        if (parts[k].touchesBorder)
            continue;
        EXPECT_NEAR(center.x(), disc.x, 0.02);
        EXPECT_NEAR(center.y(), disc.y, 0.02);
        EXPECT_NEAR(std::sqrt(regions[k]->area(false) / qnAngle::kPi), radius, 0.01);
    }
}

TEST(InspectParts, AgreesWithAFloodFromOpenCvOnEveryCoin)
{
    auto const parts = findParts(readPng(EXAMPLES "/data/coins.png"), PartSettings());
    auto const measures = measure(makeRegions(parts), parts);
    ASSERT_EQ(measures.size(), 24u);
    std::ifstream file(EXAMPLES "/inspect_parts/opencv.csv");
    std::string line;
    std::getline(file, line);
    std::set<unsigned long> met;
    double area = 0, x = 0, y = 0;
    while (std::getline(file, line) && std::sscanf(line.c_str(), "%lf,%lf,%lf", &area, &x, &y) == 3)
        for (Measures const& m : measures)
            if (m.centroid.distance({x, y}) < 0.3 && std::fabs(m.area - area) < 0.01 * area &&
                !m.touchesBorder)
                met.insert(m.label);
    EXPECT_EQ(met.size(), 24u);
}

TEST(InspectParts, RefusesWhatIsNoPictureAndFindsNothingInAnEmptyOne)
{
    EXPECT_THROW(readPng(EXAMPLES "/data/coins.csv"), std::runtime_error);
    EXPECT_THROW(readPng(EXAMPLES "/data/none.png"), std::runtime_error);
    EXPECT_TRUE(findParts(Image(80, 60, 77.0), PartSettings()).empty());
}

}  // namespace
