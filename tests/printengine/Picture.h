#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

/// A small black and white picture, kept dot by dot: the slow and simple counterpart of the engine's rasters.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<char> dots;  ///< rows from the top, 1 is black

    Picture() = default;
    Picture(int w, int h) : width(w), height(h), dots(static_cast<std::size_t>(w) * static_cast<std::size_t>(h)) {}

    bool Contains(int x, int y) const { return x >= 0 && y >= 0 && x < width && y < height; }
    char& At(int x, int y) {
        return dots[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)];
    }
    bool At(int x, int y) const {
        return Contains(x, y) &&
               dots[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)];
    }

    /// The picture of these rows packed most significant bit first.
    static Picture FromPacked(std::vector<std::uint8_t> const& rows, int w, int h) {
        Picture result(w, h);
        std::size_t const stride = static_cast<std::size_t>(w + 7) / 8;
        for (int y = 0; y < h; ++y) {
            for (int x = 0; x < w; ++x) {
                std::uint8_t const byte = rows[static_cast<std::size_t>(y) * stride + static_cast<std::size_t>(x) / 8];
                result.At(x, y) = (byte >> (7 - x % 8)) & 1;
            }
        }
        return result;
    }

    /// Rows packed most significant bit first.
    std::vector<std::uint8_t> Packed() const {
        std::size_t const stride = static_cast<std::size_t>(width + 7) / 8;
        std::vector<std::uint8_t> rows(stride * static_cast<std::size_t>(height));
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                if (At(x, y))
                    rows[static_cast<std::size_t>(y) * stride + static_cast<std::size_t>(x) / 8] |=
                        static_cast<std::uint8_t>(0x80 >> (x % 8));
            }
        }
        return rows;
    }

    /// Turned clockwise.
    Picture Turned(int degrees) const {
        Picture result(degrees % 180 ? height : width, degrees % 180 ? width : height);
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                char const dot = At(x, y);
                if (degrees == 0) result.At(x, y) = dot;
                if (degrees == 90) result.At(height - 1 - y, x) = dot;
                if (degrees == 180) result.At(width - 1 - x, height - 1 - y) = dot;
                if (degrees == 270) result.At(y, width - 1 - x) = dot;
            }
        }
        return result;
    }

    Picture Mirrored() const {
        Picture result(width, height);
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x) result.At(width - 1 - x, y) = At(x, y);
        return result;
    }

    Picture Cropped(int left, int top, int w, int h) const {
        Picture result(w, h);
        for (int y = 0; y < h; ++y)
            for (int x = 0; x < w; ++x) result.At(x, y) = At(left + x, top + y);
        return result;
    }

    /// The smallest box around all black dots: left, top, right, bottom (half open); all 0 if there are none.
    std::array<int, 4> InkBox() const {
        std::array<int, 4> box{width, height, 0, 0};
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                if (!At(x, y)) continue;
                box = {std::min(box[0], x), std::min(box[1], y), std::max(box[2], x + 1), std::max(box[3], y + 1)};
            }
        }
        return box[2] == 0 ? std::array<int, 4>{} : box;
    }
    int CountBlack() const { return static_cast<int>(std::count(dots.begin(), dots.end(), 1)); }

    friend bool operator==(Picture const& a, Picture const& b) = default;

    /// How a failing comparison shows a picture: its inked part as '#' and '.', at most 100 columns.
    friend void PrintTo(Picture const& picture, std::ostream* out) {
        auto const box = picture.InkBox();
        *out << picture.width << " x " << picture.height << ", ink from " << box[0] << ", " << box[1] << "\n";
        for (int y = box[1]; y < std::min(box[3], box[1] + 60); ++y) {
            for (int x = box[0]; x < std::min(box[2], box[0] + 100); ++x) *out << (picture.At(x, y) ? '#' : '.');
            *out << "\n";
        }
    }
};
