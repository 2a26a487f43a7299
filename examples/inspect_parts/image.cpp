// Pixels, smoothing, opening and gradients.
#include "image.h"

#include <algorithm>
#include <cmath>

Image::Image(int width, int height, double level)
    : width_(width), height_(height),
      levels_(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), level)
{
}

double Image::clamped(int x, int y) const
{
    return at(std::clamp(x, 0, width_ - 1), std::clamp(y, 0, height_ - 1));
}

double Image::between(qcVector<2> const& place) const
{
    int const x = static_cast<int>(std::floor(place.x()));
    int const y = static_cast<int>(std::floor(place.y()));
    double const right = place.x() - x;
    double const down = place.y() - y;
    return (1 - down) * ((1 - right) * clamped(x, y) + right * clamped(x + 1, y)) +
           down * ((1 - right) * clamped(x, y + 1) + right * clamped(x + 1, y + 1));
}

bool Image::within(qcVector<2> const& place, double margin) const
{
    return place.x() >= margin && place.x() <= width_ - 1 - margin && place.y() >= margin &&
           place.y() <= height_ - 1 - margin;
}

namespace {

/// Every pixel becomes what `combine` makes of its row (or column) from -reach to +reach.
template <class Combine>
Image alongLines(Image const& image, bool rows, Combine combine)
{
    Image result(image.width(), image.height());
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            result.at(x, y) = combine(
                [&](int k) { return rows ? image.clamped(x + k, y) : image.clamped(x, y + k); });
        }
    }
    return result;
}

template <class Better>
Image extreme(Image const& image, int half, Better better)
{
    auto const best = [&](auto const& level) {
        double found = level(-half);
        for (int k = 1 - half; k <= half; ++k)
            found = better(found, level(k));
        return found;
    };
    return alongLines(alongLines(image, true, best), false, best);
}

}  // namespace

Image smoothed(Image const& image, double sigma)
{
    int const half = static_cast<int>(std::ceil(4 * sigma));
    std::vector<double> weights;
    double sum = 0;
    for (int k = -half; k <= half; ++k) {
        weights.push_back(std::exp(-k * k / (2 * sigma * sigma)));
        sum += weights.back();
    }
    auto const mean = [&](auto const& level) {
        double total = 0;
        auto weight = weights.begin();
        for (int k = -half; k <= half; ++k)
            total += *weight++ * level(k);
        return total / sum;
    };
    return alongLines(alongLines(image, true, mean), false, mean);
}

Image aboveSurroundings(Image const& image, int half)
{
    auto const smaller = [](double a, double b) { return std::min(a, b); };
    auto const larger = [](double a, double b) { return std::max(a, b); };
    Image result = extreme(extreme(image, half, smaller), half, larger);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            result.at(x, y) = image.at(x, y) - result.at(x, y);
    }
    return result;
}

Gradient::Gradient(Image const& image)
    : x(alongLines(image, true, [](auto const& level) { return (level(1) - level(-1)) / 2; })),
      y(alongLines(image, false, [](auto const& level) { return (level(1) - level(-1)) / 2; }))
{
}
