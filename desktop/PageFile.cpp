#include "desktop/PageFile.h"

#include <zlib.h>

#include <cmath>
#include <cstdint>
#include <cstdlib>

namespace {

constexpr std::string_view Signature = "\x89PNG\r\n\x1a\n";
constexpr double InchesPerMeter = 1 / 0.0254;
constexpr std::uint64_t MostBytes = std::uint64_t{1} << 30;

std::uint32_t BigEndian32(std::string_view bytes, std::size_t at) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i) value = (value << 8) | static_cast<std::uint8_t>(bytes[at + i]);
    return value;
}

/// What a filter has taken off a byte, by the bytes left of it, above it and left of that (ISO/IEC 15948, clause 9).
unsigned Predicted(unsigned filter, unsigned left, unsigned above, unsigned corner) {
    auto const off = [&](unsigned from) {
        return std::abs(static_cast<int>(left + above - corner) - static_cast<int>(from));
    };
    switch (filter) {
        case 1: return left;
        case 2: return above;
        case 3: return (left + above) / 2;
        case 4:
            if (off(left) <= off(above) && off(left) <= off(corner)) return left;
            return off(above) <= off(corner) ? above : corner;
        default: return 0;
    }
}

}  // namespace

std::optional<PageFile> PageFile::Parse(std::string bytes) {
    PageFile page;
    page.file_ = std::move(bytes);
    if (!page.ReadChunks() || !page.UnpackRows()) return std::nullopt;
    return page;
}

std::string_view PageFile::PbmFile() {
    pbm_ = "P4\n" + std::to_string(width_) + " " + std::to_string(height_) + "\n" + rows_;
    return pbm_;
}

bool PageFile::ReadChunks() {
    constexpr std::size_t ChunkFrame = 12;  // length, type and checksum
    std::string_view const bytes = file_;
    if (!bytes.starts_with(Signature)) return false;
    for (std::size_t at = Signature.size(); at + ChunkFrame <= bytes.size();) {
        std::size_t const length = BigEndian32(bytes, at);
        if (length > bytes.size() - at - ChunkFrame) return false;
        auto const type = bytes.substr(at + 4, 4);
        auto const content = bytes.substr(at + 8, length);
        if (type == "IHDR" && length >= 13) {
            width_ = BigEndian32(content, 0);
            height_ = BigEndian32(content, 4);
            // One bit a sample, greyscale, deflate, adaptive filters, no interlace.
            if (content.substr(8, 5) != std::string_view("\1\0\0\0\0", 5)) return false;
        } else if (type == "pHYs" && length >= 9) {
            dpi_ = static_cast<unsigned>(std::lround(BigEndian32(content, 0) / InchesPerMeter));
        } else if (type == "IDAT") {
            data_ += content;
        }
        at += ChunkFrame + length;
    }
    return width_ != 0 && height_ != 0 && (std::uint64_t{width_} / 8 + 2) * height_ <= MostBytes;
}

/// Inflates the rows, undoes their filters, and turns 1 for white into 1 for black.
bool PageFile::UnpackRows() {
    std::size_t const stride = (std::size_t{width_} + 7) / 8;
    std::string filtered((stride + 1) * height_, '\0');
    uLongf size = filtered.size();
    int const result = uncompress(reinterpret_cast<Bytef*>(filtered.data()), &size,
                                  reinterpret_cast<Bytef const*>(data_.data()), data_.size());
    if (result != Z_OK || size != filtered.size()) return false;
    rows_.resize(stride * height_);
    std::string above(stride + 1, '\0');  // behind a byte that is left of the page
    std::string row(stride + 1, '\0');
    unsigned const spare = static_cast<unsigned>(stride * 8 - width_);
    for (std::size_t y = 0; y < height_; ++y) {
        char const* const source = filtered.data() + y * (stride + 1);
        auto const filter = static_cast<std::uint8_t>(source[0]);
        if (filter > 4) return false;
        auto const byte = [](char c) { return static_cast<unsigned>(static_cast<std::uint8_t>(c)); };
        for (std::size_t x = 1; x <= stride; ++x) {
            unsigned const predicted = Predicted(filter, byte(row[x - 1]), byte(above[x]), byte(above[x - 1]));
            row[x] = static_cast<char>(byte(source[x]) + predicted);
            rows_[y * stride + x - 1] = static_cast<char>(~row[x]);
        }
        char& last = rows_[(y + 1) * stride - 1];
        last = static_cast<char>(last & (0xFF << spare));
        row.swap(above);
    }
    return true;
}
