// Regions for tests and the curves they are made of.
#include "tests/support/regions.h"

#include "tests/support/outlines.h"

namespace qnTest {

namespace {

constexpr double kTurn = 6.283185307179586;

template <class Place>
Points sampled(std::size_t count, Place const& place)
{
    Points points;
    for (std::size_t i = 0; i < count; ++i)
        points.push_back(place(kTurn * static_cast<double>(i) / static_cast<double>(count)));
    return points;
}

}  // namespace

qcRegion regionOf(Figure const& figure)
{
    qcRegion region = regionOf(figure.outline);
    std::vector<Hole> holes;
    for (auto const& hole : figure.holes)
        holes.push_back(Hole(new qcRegion(regionOf(hole))));
    region.holes(holes);
    return region;
}

std::vector<NamedOutline> crossingCurves(unsigned seed)
{
    std::mt19937 random(seed);
    auto const uniform = [&](double low, double high) {
        return qnOutlines::uniform(random, low, high);
    };
    std::vector<NamedOutline> curves;
    for (int lobes = 2; lobes <= 14; lobes += 3) {
        double const turns = lobes, size = uniform(5, 300), reach = uniform(0.2, 1.8);
        for (double const sign : {1.0, -1.0})  // loops outside, loops inside
            curves.push_back({"trochoid " + std::to_string(sign * lobes),
                              sampled(static_cast<std::size_t>(37 * lobes), [&](double t) {
                                  return qcVector<2>(size, qcRadian(t)) +
                                         qcVector<2>(size * reach, qcRadian(sign * turns * t));
                              })});
        Points waves;
        for (int wave = 0; wave < 2 * lobes; ++wave)
            waves.emplace_back(size * uniform(0.2, 1) / (wave / 2 + 1),
                               qcRadian(uniform(0, kTurn)));
        auto const sum = [&](double t) {
            qcVector<2> p;
            for (int wave = 0; wave < 2 * lobes; ++wave) {
                double const turned = (wave % 2 ? -1 : 1) * (wave / 2 + 1) * t;
                p += qcMatrix<2>(qcRadian(turned), qcRadian(turned), 1, 1) *
                     waves[static_cast<std::size_t>(wave)];
            }
            return p;
        };
        curves.push_back(
            {"waves " + std::to_string(lobes), sampled(static_cast<std::size_t>(40 * lobes), sum)});
    }
    return curves;
}

}  // namespace qnTest
