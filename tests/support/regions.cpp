// Regions for tests and the curves they are made of.
#include "tests/support/regions.h"

#include <cmath>

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
        return low + (high - low) * (static_cast<double>(random()) / 4294967296.0);
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
        double const a = lobes, b = lobes + 1, phase = uniform(0.1, 1.4);
        curves.push_back({"Lissajous " + std::to_string(lobes),
                          sampled(static_cast<std::size_t>(41 * lobes), [&](double t) {
                              return qcVector<2>(size * std::sin(a * t + phase),
                                                 size * std::sin(b * t));
                          })});
        std::vector<qcVector<2>> waves;
        for (int wave = 0; wave < 2 * lobes; ++wave)
            waves.push_back(qcVector<2>(uniform(0.2, 1), qcRadian(uniform(0, kTurn))) * size);
        curves.push_back({"waves " + std::to_string(lobes),
                          sampled(static_cast<std::size_t>(40 * lobes), [&](double t) {
                              qcVector<2> p;
                              for (int w = 0; w < 2 * lobes; ++w) {
                                  auto const& wave = waves[static_cast<std::size_t>(w)];
                                  double const turnsNow = (w % 2 ? -1 : 1) * (w / 2 + 1);
                                  p +=
                                      qcVector<2>(wave.len() / (w / 2 + 1),
                                                  qcRadian(turnsNow * t + wave.angle().toDouble()));
                              }
                              return p;
                          })});
    }
    return curves;
}

}  // namespace qnTest
