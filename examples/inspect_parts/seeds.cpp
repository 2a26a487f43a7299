// Flatten, threshold, fill, open, label.
#include "seeds.h"

#include <algorithm>
#include <array>
#include <functional>

namespace {

constexpr int kBins = 256;

/// The level that splits the histogram into two classes of least spread within (Otsu's method).
double otsuLevel(Image const& image)
{
    double const highest =
        std::max(1.0, *std::max_element(image.levels().begin(), image.levels().end()));
    std::array<double, kBins> counts{};
    double sum = 0;
    for (double const level : image.levels()) {
        int const bin = std::clamp(static_cast<int>(level / highest * kBins), 0, kBins - 1);
        ++counts[static_cast<std::size_t>(bin)];
        sum += bin;
    }
    double const all = static_cast<double>(image.levels().size());
    double best = -1, below = 0, sumBelow = 0;
    int split = 0;
    for (int bin = 0; bin < kBins; ++bin) {
        double const count = counts[static_cast<std::size_t>(bin)];
        below += count;
        sumBelow += bin * count;
        if (below == 0 || below == all)
            continue;
        double const difference = sumBelow / below - (sum - sumBelow) / (all - below);
        double const between = below * (all - below) * difference * difference;
        if (between > best) {
            best = between;
            split = bin;
        }
    }
    return (split + 1) * highest / kBins;
}

/// Calls visit(x, y) for every pixel that is reached from (x, y) over sides through pixels of
/// `from`, and changes them to `to`.
void flood(Image& mask, int startX, int startY, double from, double to,
           std::function<void(int, int)> const& visit)
{
    std::vector<std::array<int, 2>> open;
    auto const take = [&](int x, int y) {
        if (x < 0 || y < 0 || x >= mask.width() || y >= mask.height() || mask.at(x, y) != from)
            return;
        mask.at(x, y) = to;
        visit(x, y);
        open.push_back({x, y});
    };
    take(startX, startY);
    while (!open.empty()) {
        auto const [x, y] = open.back();
        open.pop_back();
        take(x - 1, y);
        take(x + 1, y);
        take(x, y - 1);
        take(x, y + 1);
    }
}

void fillHoles(Image& mask)
{
    constexpr double kGround = -1;
    auto const nothing = [](int, int) {};
    for (int x = 0; x < mask.width(); ++x) {
        flood(mask, x, 0, 0, kGround, nothing);
        flood(mask, x, mask.height() - 1, 0, kGround, nothing);
    }
    for (int y = 0; y < mask.height(); ++y) {
        flood(mask, 0, y, 0, kGround, nothing);
        flood(mask, mask.width() - 1, y, 0, kGround, nothing);
    }
    for (int y = 0; y < mask.height(); ++y) {
        for (int x = 0; x < mask.width(); ++x)
            mask.at(x, y) = mask.at(x, y) == kGround ? 0 : 1;
    }
}

/// Only what a square of 5 pixels fits into stays: threads and specks of the ground go.
Image opened(Image const& mask)
{
    Image thin = aboveSurroundings(mask, 2);
    for (int y = 0; y < mask.height(); ++y) {
        for (int x = 0; x < mask.width(); ++x)
            thin.at(x, y) = mask.at(x, y) - thin.at(x, y);
    }
    return thin;
}

}  // namespace

std::vector<std::vector<qcVector<2>>> findSeeds(Image const& smooth, PartSettings const& settings)
{
    Image mask = aboveSurroundings(smooth, (settings.widest + 1) / 2);
    double const level = settings.seedLevel * otsuLevel(mask);
    for (int y = 0; y < mask.height(); ++y) {
        for (int x = 0; x < mask.width(); ++x)
            mask.at(x, y) = mask.at(x, y) > level ? 1 : 0;
    }
    fillHoles(mask);
    mask = opened(mask);

    std::vector<std::vector<qcVector<2>>> seeds;
    for (int y = 0; y < mask.height(); ++y) {
        for (int x = 0; x < mask.width(); ++x) {
            std::vector<qcVector<2>> seed;
            flood(mask, x, y, 1, 0, [&](int px, int py) {
                seed.push_back({double(px), double(py)});
            });
            if (static_cast<double>(seed.size()) >= settings.leastArea)
                seeds.push_back(std::move(seed));
        }
    }
    return seeds;
}
