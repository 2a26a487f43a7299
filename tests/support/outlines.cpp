// The outlines that tests share.
#include "tests/support/outlines.h"

#include <cmath>
#include <tuple>

namespace qnOutlines {

namespace {

using Points = std::vector<qcVector<2>>;
constexpr double kTurn = 6.283185307179586;

Points around(int n, double turns, double (*radius)(double part))
{
    Points points;
    for (int i = 0; i < n; ++i) {
        double const part = static_cast<double>(i) / n;
        points.emplace_back(radius(part), qcRadian(kTurn * turns * part));
    }
    return points;
}

Points comb(int n)
{
    Points points;
    for (int i = 0; i < n; ++i)
        points.emplace_back(i / 2, (i + 1) / 2 % 2 * 5.0);
    points.emplace_back(n / 2, -1);
    points.emplace_back(0, -1);
    return points;
}

/// Spokes through one place: many hits of equal key.
Points pinwheel(int n)
{
    Points points;
    for (int i = 0; i < n; ++i)
        for (double const side : {1.0, -1.0})
            points.emplace_back(side * (i % 2 ? 3 : 6 - i), side * (i % 2 ? i - 4 : 2));
    return points;
}

Points scattered(std::mt19937& random, int n, int kind)
{
    double const nudges[] = {0, 0, 0, 4e-16, 2e-15, 1e-7, 0.9e-6, 1.1e-6, -1e-6};
    Points points;
    for (int i = 0; i < n; ++i) {
        double x = uniform(random, -3, 4), y = uniform(random, -3, 4);
        if (kind > 0) {
            x = std::floor(x);
            y = std::floor(y);
        }
        if (kind > 1) {
            x += nudges[random() % 9];
            y += nudges[random() % 9];
        }
        points.emplace_back(x, y);
        if (kind > 0 && random() % 8 == 0)
            points.push_back(points[random() % points.size()]);
    }
    return points;
}

Points star(std::mt19937& random, int n)
{
    auto points = around(n, 1, [](double) { return 1.0; });
    for (auto& point : points)
        point = point * uniform(random, 0.5, 9);
    return points;
}

}  // namespace

double uniform(std::mt19937& random, double low, double high)
{
    return low + (high - low) * (static_cast<double>(random()) / 4294967296.0);
}

std::vector<Outline> named()
{
    return {
        {"nothing", {}, true},
        {"one point", {{1, 2}}, true},
        {"one edge", {{0, 0}, {2, 0}}, false},
        {"there and back", {{0, 0}, {2, 0}}, true},
        {"square", {{0, 0}, {4, 0}, {4, 4}, {0, 4}}, true},
        {"clockwise square", {{0, 4}, {4, 4}, {4, 0}, {0, 0}}, true},
        {"bow-tie", {{0, 0}, {2, 2}, {2, 0}, {0, 2}}, true},
        {"vertex on a far edge", {{0, 0}, {4, 0}, {4, 4}, {2, 0}}, true},
        {"doubling back", {{0, 0}, {2, 0}, {1, 0}}, false},
        {"all the same", {{1, 1}, {1, 1}, {1, 1}}, true},
        {"repeated start", {{0, 0}, {0, 0}, {3, 0}, {3, 0}, {3, 4}}, true},
        {"collinear run", {{0, 0}, {1, 0}, {2, 0}, {5, 0}, {5, 5}, {0, 5}}, true},
        {"pentagon", {{0, 0}, {4, 0}, {5, 3}, {1, 4}, {-1, 2}}, true},
        {"L", {{0, 10}, {1, 10}, {1, 1}, {10, 1}, {10, 0}, {0, 0}}, true},
        {"pentagram", around(5, 2, [](double) { return 3.0; }), true},
        {"rose", around(60, 1, [](double t) { return 4 * std::cos(kTurn * 3 * t); }), true},
        {"comb", comb(24), true},
        {"pinwheel", pinwheel(6), true},
    };
}

std::vector<Outline> randomised(unsigned seed, int count)
{
    double const scales[] = {1e-200, 1e-160, 1e-17, 1e-7, 1e-3, 1e7, 1e100, 1e153, 1e154, 1e160};
    std::mt19937 random(seed);
    std::vector<Outline> outlines;
    for (int i = 0; i < count; ++i) {
        int const n = static_cast<int>(random() % (i % 23 == 5 ? 400 : 33));
        Outline outline{"", {}, random() % 3 != 0};
        auto const points = [&]() -> std::pair<char const*, Points> {
            // clang-format off
            switch (i % 9) {
            case 0: return {"star", star(random, n)};
            case 1: return {"loose", scattered(random, n, 0)};
            case 3: return {"nudged", scattered(random, n, 2)};
            case 4: return {"comb", comb(n)};
            case 5: return {"pinwheel", pinwheel(n)};
            case 6: return {"spiral", around(n, 3, [](double t) { return 9 * t; })};
            case 7: return {"circle", around(n, 1, [](double) { return 3.0; })};
            default: return {"lattice", scattered(random, n, 1)};
            }
            // clang-format on
        };
        std::tie(outline.name, outline.points) = points();
        double const scale = i % 4 == 1 ? scales[random() % 10] : 1;
        qcVector<2> const shift = i % 4 == 2 ? qcVector<2>(1e6, -3e5) : qcVector<2>();
        for (auto& point : outline.points)
            point = point * scale + shift;
        outline.name += " " + std::to_string(i) + " of " + std::to_string(seed);
        outlines.push_back(outline);
    }
    return outlines;
}

std::vector<Outline> foldedBack(unsigned seed, int count)
{
    std::mt19937 random(seed);
    std::vector<Outline> outlines;
    for (int i = 0; i < count; ++i) {
        bool const isSpiral = i % 2 == 0;
        int const n = 300 + static_cast<int>(random() % 700);
        double const stretches = 3 + static_cast<double>(random() % 6);
        int const bump = static_cast<int>(random() % 1000) % n;
        int const width = 2 + static_cast<int>(random() % 20);
        double const height = uniform(random, -2, 2);
        Outline outline{(isSpiral ? "spiral " : "band ") + std::to_string(i), {}, i % 3 == 0};
        for (int k = 0; k < n; ++k) {
            double const along = stretches * k / n;
            double part = along - std::floor(along);
            double const aside = k < bump || k > bump + width
                                     ? 0
                                     : height * std::sin(kTurn / 2 * (k - bump) / width);
            if (isSpiral) {
                outline.points.emplace_back(3 + along + aside, qcRadian(kTurn * along));
                continue;
            }
            part = static_cast<int>(along) % 2 == 0 ? part : 1 - part;
            outline.points.emplace_back(10 * part,
                                        std::floor(along) + 0.2 * std::sin(9 * part) + aside);
        }
        outlines.push_back(outline);
    }
    return outlines;
}

}  // namespace qnOutlines
