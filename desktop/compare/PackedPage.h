#pragma once

#include <cstddef>
#include <string>

/// A page of 1-bit pixels: rows of whole bytes from the top, most significant bit first; a set bit is black, those
/// right of the page are 0.
struct PackedPage {
    unsigned width = 0;   ///< pixels
    unsigned height = 0;  ///< pixels
    std::string rows;

    std::size_t BytesPerRow() const { return (std::size_t{width} + 7) / 8; }
    /// White for what lies beyond the page.
    bool IsBlack(unsigned x, unsigned y) const {
        if (x >= width || y >= height) return false;
        return (static_cast<unsigned char>(rows[y * BytesPerRow() + x / 8]) >> (7 - x % 8) & 1) != 0;
    }
};
