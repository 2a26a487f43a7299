// Reads a photograph with libpng.
#include "image.h"

#include <png.h>

#include <stdexcept>

Image readPng(std::string const& path)
{
    png_image png{};
    png.version = PNG_IMAGE_VERSION;
    auto const fail = [&](std::string const& why) {
        png_image_free(&png);
        throw std::runtime_error(path + ": " + why);
    };
    if (!png_image_begin_read_from_file(&png, path.c_str()))
        fail(png.message);
    constexpr unsigned long kMostPixels = 50'000'000;  // the file names its size: do not trust it
    if (static_cast<unsigned long>(png.width) * png.height > kMostPixels)
        fail("more than 50 million pixels");
    png.format = PNG_FORMAT_GRAY;
    std::vector<png_byte> bytes(PNG_IMAGE_SIZE(png));
    png_color const black{};
    if (!png_image_finish_read(&png, &black, bytes.data(), 0, nullptr))
        fail(png.message);

    Image image(static_cast<int>(png.width), static_cast<int>(png.height));
    auto byte = bytes.begin();
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.at(x, y) = *byte++;
    }
    return image;
}
