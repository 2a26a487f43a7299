// The outlines that benchmarks measure on.
#include "support/outlines.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <fstream>
#include <functional>
#include <map>
#include <random>
#include <sstream>
#include <stdexcept>

namespace qnBench {

namespace {

constexpr double kTurn = 6.283185307179586;
constexpr double kSide = 4000;

/// The same with every standard library.
double uniform(std::mt19937& random)
{
    return static_cast<double>(random()) / 4294967296.0;
}

/// `n` points around the middle of the square, at the radius that `radius` gives for the angle.
Points around(std::size_t n, double turns, std::function<double(double)> const& radius)
{
    Points points;
    for (std::size_t i = 0; i < n; ++i) {
        double const angle =
            kTurn * turns * (static_cast<double>(i) + 0.3) / static_cast<double>(n);
        points.push_back(qcVector<2>(kSide / 2, kSide / 2) +
                         qcVector<2>(radius(angle), qcRadian(angle)));
    }
    return points;
}

Points star(std::size_t n, std::mt19937& random)
{
    std::array<std::array<double, 2>, 12> waves{};
    for (auto& wave : waves)
        wave = {uniform(random), kTurn * uniform(random)};
    return around(n, 1, [&](double angle) {
        double radius = 1300;
        for (std::size_t k = 0; k < waves.size(); ++k) {
            auto const order = static_cast<double>(k + 1);
            radius += 500 * waves[k][0] * std::cos(order * angle + waves[k][1]) / order;
        }
        return std::max(radius, 100.0);
    });
}

Points comb(std::size_t n, std::mt19937& random)
{
    auto const teeth = std::max<std::size_t>(1, static_cast<std::size_t>(std::sqrt(n) / 2));
    std::size_t const flanks = 2 * teeth;
    double const phase = kTurn * uniform(random);
    double const spacing = 2600.0 / static_cast<double>(flanks);
    Points points;
    for (std::size_t k = 0; k < n; ++k) {
        std::size_t const flank = k * flanks / n;
        std::size_t const first = (flank * n + flanks - 1) / flanks;
        std::size_t const last = ((flank + 1) * n + flanks - 1) / flanks - 1;
        double part =
            last > first ? static_cast<double>(k - first) / static_cast<double>(last - first) : 0.5;
        if (flank % 2 == 1)
            part = 1 - part;
        // The first and the last flank reach below the others, where the back of the comb runs.
        double const low = flank == 0 || flank + 1 == flanks ? -100 : 0;
        double const y = low + part * (2600 - low);
        double const x = static_cast<double>(flank) * spacing + 120 * std::sin(y / 400 + phase);
        points.emplace_back(1000 + x * std::cos(0.3) - y * std::sin(0.3),
                            200 + x * std::sin(0.3) + y * std::cos(0.3));
    }
    return points;
}

Points teeth(std::size_t n)
{
    std::size_t const count = std::max<std::size_t>(1, n / 4);
    double const spacing = 2600 / static_cast<double>(count);
    Points points;
    for (std::size_t k = 0; k < std::max<std::size_t>(n, 4); ++k) {
        bool const isTip = k % 4 == 1 || k % 4 == 2;
        double const x = (static_cast<double>(k / 4) + (k % 4 > 1 ? 0.5 : 0.0)) * spacing;
        // The way back from the last tooth to the first stays clear of the others.
        double const y = isTip ? 2600 : k == 0 || k + 1 >= n ? -100 : 0;
        points.emplace_back(1000 + x * std::cos(0.3) - y * std::sin(0.3),
                            200 + x * std::sin(0.3) + y * std::cos(0.3));
    }
    return points;
}

/// Goes around `windings` times while the radius swings `windings` + `more` times.
Points rosette(std::size_t n, double windings, double more)
{
    return around(n, windings, [=](double angle) {
        return 1200 + 700 * std::sin(angle * (windings + more) / windings);
    });
}

/// A round outline that curls into five small loops, each of which it crosses once.
Points loops(std::size_t n)
{
    constexpr double kCurls = 6;
    Points points;
    for (std::size_t i = 0; i < n; ++i) {
        double const angle = kTurn * static_cast<double>(i) / static_cast<double>(n);
        points.push_back(qcVector<2>(2000, 2000) + qcVector<2>(1500.0, qcRadian(angle)) +
                         qcVector<2>(300.0, qcRadian(kCurls * angle)));
    }
    return points;
}

Points oval(std::size_t n, std::mt19937& random)
{
    Points points;
    for (std::size_t i = 0; i < n; ++i) {
        double const angle = kTurn * static_cast<double>(i) / static_cast<double>(n);
        double const noise = 1 + 0.01 * (uniform(random) - 0.5);
        double const u = 1800 * noise * std::cos(angle), v = 900 * noise * std::sin(angle);
        points.emplace_back(2000 + 0.8 * u - 0.6 * v, 2000 + 0.6 * u + 0.8 * v);
    }
    return points;
}

Points spiral(std::size_t n)
{
    double const turns = std::max(1.0, std::sqrt(static_cast<double>(n)) / 8);
    double const pitch = 1900 / (turns + 1);
    Points points;
    for (std::size_t i = 0; i < n; ++i) {
        double const part = 2 * static_cast<double>(i) / static_cast<double>(n);
        double const out = part < 1 ? part : 2 - part;
        double const radius = pitch * (turns * out + (part < 1 ? 0.1 : 0.6));
        points.push_back(qcVector<2>(2000, 2000) +
                         qcVector<2>(radius, qcRadian(kTurn * turns * out)));
    }
    return points;
}

Points grid(std::size_t n)
{
    auto const columns = std::max<std::size_t>(1, static_cast<std::size_t>(std::sqrt(n)));
    Points points;
    for (std::size_t i = 0; i < n; ++i) {
        std::size_t const row = i / columns;
        std::size_t const column = row % 2 == 0 ? i % columns : columns - 1 - i % columns;
        points.emplace_back(static_cast<double>(10 * column), static_cast<double>(10 * row));
    }
    points.back() = qcVector<2>(-10, points.back().y() + 10);  // the way back stays clear
    return points;
}

/// The ring or line with the most points in a WKT file.
Points longestOf(std::string const& file)
{
    std::ifstream in(std::string(CNTR_EXAMPLE_DATA) + "/" + file);
    Points best;
    for (std::string line; std::getline(in, line);) {
        if (line.empty() || line.front() == '#')
            continue;
        std::replace_if(
            line.begin(), line.end(), [](char c) { return c == '(' || c == ')'; }, '\n');
        std::istringstream rings(line);
        for (std::string ring; std::getline(rings, ring);) {
            std::replace(ring.begin(), ring.end(), ',', ' ');
            std::istringstream numbers(ring);
            Points points;
            for (double x = 0, y = 0; numbers >> x >> y;)
                points.emplace_back(x, y);
            if (points.size() > best.size())
                best = points;
        }
    }
    if (best.size() < 3)
        throw std::runtime_error("no outline in " + file);
    return best;
}

/// `n` points, evenly spaced in the numbering of the given ones, moved and scaled into the square: so
/// that the library's tolerances, which are absolute, mean as little as with the other shapes.
Points resampled(Points points, std::size_t n)
{
    qcVector<2> low = points.front(), high = points.front();
    for (auto const& point : points) {
        low = {std::min(low.x(), point.x()), std::min(low.y(), point.y())};
        high = {std::max(high.x(), point.x()), std::max(high.y(), point.y())};
    }
    double const scale = kSide / std::max(high.x() - low.x(), high.y() - low.y());
    for (auto& point : points)
        point = (point - low) * scale;
    Points result;
    for (std::size_t i = 0; i < n; ++i) {
        double const place = static_cast<double>(i) * static_cast<double>(points.size() - 1) /
                             static_cast<double>(n);
        auto const k = static_cast<std::size_t>(place);
        double const part = place - static_cast<double>(k);
        result.push_back(points[k] + (points[k + 1] - points[k]) * part);
    }
    return result;
}

}  // namespace

Points outline(std::string const& shape, std::size_t n, unsigned seed)
{
    std::mt19937 random(seed);
    double const windings = std::max(2.0, std::round(std::sqrt(static_cast<double>(n) / 10)));
    std::map<std::string, std::function<Points()>> const shapes{
        {"star", [&] { return star(n, random); }},
        {"comb", [&] { return comb(n, random); }},
        {"teeth", [&] { return teeth(n); }},
        {"rose", [&] { return rosette(n, windings, 1); }},
        {"few", [&] { return rosette(n, 2, 3); }},
        {"loops", [&] { return loops(n); }},
        {"oval", [&] { return oval(n, random); }},
        {"circle", [&] { return around(n, 1, [](double) { return 1900.0; }); }},
        {"spiral", [&] { return spiral(n); }},
        {"grid", [&] { return grid(n); }},
        {"border", [&] { return resampled(longestOf("borders.wkt"), n); }},
        {"glyph", [&] { return resampled(longestOf("glyphs.wkt"), n); }},
    };
    auto const found = shapes.find(shape);
    if (found == shapes.end())
        throw std::runtime_error("no shape is called " + shape);
    Points points = found->second();
    if (seed != 1)
        for (auto& point : points)
            point += qcVector<2>(7.31, 4.17) * static_cast<double>(seed - 1);
    return points;
}

}  // namespace qnBench
