#pragma once

#define ZX_USE_UTF8 1
#include <ZXing/BarcodeFormat.h>
#include <ZXing/DecodeHints.h>
#include <ZXing/ReadBarcode.h>

#include <string>
#include <vector>

/// The bytes that an independent decoder reads in a symbol of cells as it comes from its encoder, or "unreadable"; with
/// FNC1 as 0x1D.
inline std::string ReadCells(std::vector<std::vector<bool>> const& cells, ZXing::BarcodeFormat format,
                             std::size_t cellHeight = 3) {
    constexpr std::size_t CellWidth = 3, Quiet = 12;  // pixels
    if (cells.empty()) return "unreadable";
    std::size_t const width = cells[0].size() * CellWidth + 2 * Quiet, height = cells.size() * cellHeight + 2 * Quiet;
    std::vector<std::uint8_t> pixels(width * height, 255);
    for (std::size_t y = Quiet; y < height - Quiet; ++y) {
        for (std::size_t x = Quiet; x < width - Quiet; ++x) {
            if (cells[(y - Quiet) / cellHeight][(x - Quiet) / CellWidth]) pixels[y * width + x] = 0;
        }
    }
    ZXing::DecodeHints hints;
    hints.setFormats(format).setIsPure(true);
    ZXing::ImageView const image(pixels.data(), static_cast<int>(width), static_cast<int>(height),
                                 ZXing::ImageFormat::Lum);
    auto const result = ZXing::ReadBarcode(image, hints);
    if (!result.isValid()) return "unreadable";
    return std::string(result.bytes().begin(), result.bytes().end());
}
