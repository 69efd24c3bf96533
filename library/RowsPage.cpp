#include "library/RowsPage.h"

#include <zlib.h>

#include <cmath>
#include <cstdint>
#include <stdexcept>

namespace {

void AppendNumber(std::string& text, std::uint32_t number) {
    for (int shift = 24; shift >= 0; shift -= 8) text += static_cast<char>(number >> shift);
}

void AppendChunk(std::string& file, std::string_view name, std::string_view data) {
    AppendNumber(file, static_cast<std::uint32_t>(data.size()));
    std::size_t const begin = file.size();
    file.append(name).append(data);
    auto const* const bytes = reinterpret_cast<Bytef const*>(file.data() + begin);
    AppendNumber(file, static_cast<std::uint32_t>(::crc32(0, bytes, static_cast<uInt>(file.size() - begin))));
}

std::string Deflate(std::string const& bytes) {
    uLongf size = ::compressBound(bytes.size());
    std::string deflated(size, '\0');
    auto* const to = reinterpret_cast<Bytef*>(deflated.data());
    if (::compress2(to, &size, reinterpret_cast<Bytef const*>(bytes.data()), bytes.size(), Z_BEST_SPEED) != Z_OK)
        throw std::runtime_error("a page could not be compressed");
    deflated.resize(size);
    return deflated;
}

}  // namespace

void RowsPage::Blacken(int x, int y) {
    auto& byte = rows_[static_cast<std::size_t>(y) * BytesPerRow() + static_cast<std::size_t>(x) / 8];
    byte = static_cast<char>(byte | 0x80 >> x % 8);
}

RowsPage RowsPage::Turned(Scripting::FinishedPage& page, unsigned degrees) {
    auto const [width, height] = page.PageSize();
    std::string_view const from = page.PackedRows();
    RowsPage turned(degrees == 180 ? page.PageSize() : Scripting::Extent{height, width}, page.PageDpi(), {});
    turned.rows_.resize(turned.BytesPerRow() * static_cast<std::size_t>(turned.size_.height));
    std::size_t const stride = (static_cast<std::size_t>(width) + 7) / 8;
    for (std::size_t at = 0; at < from.size(); ++at) {
        auto const y = static_cast<int>(at / stride);
        auto const left = static_cast<int>(at % stride) * 8;
        // Most of a page is white.
        for (unsigned bits = static_cast<unsigned char>(from[at]), x = 0; bits != 0; bits = bits << 1 & 0xFF, ++x) {
            if ((bits & 0x80) == 0) continue;
            int const column = left + static_cast<int>(x);
            if (degrees == 90) turned.Blacken(height - 1 - y, column);
            if (degrees == 180) turned.Blacken(width - 1 - column, height - 1 - y);
            if (degrees == 270) turned.Blacken(y, width - 1 - column);
        }
    }
    return turned;
}

std::string_view RowsPage::DeflatedRows() {
    if (!deflated_.empty()) return deflated_;
    std::string filtered;
    filtered.reserve((BytesPerRow() + 1) * static_cast<std::size_t>(size_.height));
    for (std::size_t at = 0; at < rows_.size(); at += BytesPerRow()) {
        filtered += '\0';
        // White is 1 in a greyscale picture; the bits behind the last pixel may be anything.
        for (std::size_t i = 0; i < BytesPerRow(); ++i) filtered += static_cast<char>(~rows_[at + i]);
    }
    return deflated_ = Deflate(filtered);
}

std::string_view RowsPage::PngFile() {
    std::string header;
    AppendNumber(header, static_cast<std::uint32_t>(size_.width));
    AppendNumber(header, static_cast<std::uint32_t>(size_.height));
    header += std::string("\1\0\0\0\0", 5);  // one bit, greyscale, not interlaced
    file_ = "\x89PNG\r\n\x1A\n";
    AppendChunk(file_, "IHDR", header);
    if (dpi_ != 0) {
        constexpr double InchesPerMetre = 1 / 0.0254;
        auto const perMetre = static_cast<std::uint32_t>(std::lround(dpi_ * InchesPerMetre));
        std::string resolution;
        AppendNumber(resolution, perMetre);
        AppendNumber(resolution, perMetre);
        AppendChunk(file_, "pHYs", resolution + '\1');
    }
    AppendChunk(file_, "IDAT", DeflatedRows());
    AppendChunk(file_, "IEND", {});
    return file_;
}

std::string_view RowsPage::PbmFile() {
    return file_ = "P4\n" + std::to_string(size_.width) + " " + std::to_string(size_.height) + "\n" + rows_;
}
