// A grey picture in memory, and the smoothing and gradients that the edge finder asks of it.
#pragma once

#include <cntr/cntr.h>

#include <string>
#include <vector>

/// Grey levels, row by row from the top. Pixel centres lie at whole numbers: pixel (0, 0) covers
/// -0.5 to 0.5 in both directions, and y points down.
class Image {
public:
    Image(int width, int height, double level = 0.0);

    int width() const { return width_; }
    int height() const { return height_; }

    double at(int x, int y) const { return levels_[index(x, y)]; }
    double& at(int x, int y) { return levels_[index(x, y)]; }

    /// The nearest pixel's level for places outside: the picture goes on with its border.
    double clamped(int x, int y) const;

    /// Between the four pixel centres around a place, by bilinear interpolation.
    double between(qcVector<2> const& place) const;

    /// Whether a place lies `margin` inside the outermost pixel centres.
    bool within(qcVector<2> const& place, double margin) const;

    std::vector<double> const& levels() const { return levels_; }

private:
    std::size_t index(int x, int y) const
    {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) +
               static_cast<std::size_t>(x);
    }

    int width_;
    int height_;
    std::vector<double> levels_;
};

/// Reads a PNG file as 8-bit grey. Throws std::runtime_error where it is none or too large.
Image readPng(std::string const& path);

/// Smoothed by a Gaussian of `sigma` pixels.
Image smoothed(Image const& image, double sigma);

/// What of the picture is brighter than its surroundings: the picture less its opening by a square
/// of 2 * half + 1 pixels, which swallows every bright object narrower than the square.
Image aboveSurroundings(Image const& image, int half);

/// Grey levels per pixel, along x and along y.
struct Gradient {
    explicit Gradient(Image const& image);

    qcVector<2> at(qcVector<2> const& place) const { return {x.between(place), y.between(place)}; }

    Image x;
    Image y;
};
