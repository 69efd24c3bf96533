#pragma once

#include <png.h>

#include <filesystem>

#include "tests/printengine/Picture.h"

/// A file as libpng reads it; empty if there is none.
inline Picture ReadPng(std::filesystem::path const& file) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_file(&image, file.c_str())) return {};
    image.format = PNG_FORMAT_GRAY;
    std::vector<std::uint8_t> pixels(PNG_IMAGE_SIZE(image));
    png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr);
    Picture page(static_cast<int>(image.width), static_cast<int>(image.height));
    std::transform(pixels.begin(), pixels.end(), page.dots.begin(), [](std::uint8_t pixel) { return pixel < 128; });
    return page;
}
