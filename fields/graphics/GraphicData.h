#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Pictures in print streams and the forms that their data come in.
namespace ZplCore {

/// A 1-bit picture in dots: rows of `bytesPerRow` bytes from the top, most significant bit left, a set bit is black.
struct Picture {
    /// Larger pictures are refused: a row of 64 Ki dots, 64 MiB in all.
    static constexpr std::size_t MaximumBytesPerRow = 8 * 1024;
    static constexpr std::size_t MaximumBytes = 64UL * 1024 * 1024;

    unsigned bytesPerRow = 0;
    unsigned rowCount = 0;
    /// The rows from the top; those behind the last black dot may be missing.
    std::vector<std::uint8_t> rows;

    unsigned Width() const { return bytesPerRow * 8; }
    unsigned Height() const { return rowCount; }
    /// How many whole rows `rows` holds.
    unsigned StoredRows() const { return bytesPerRow ? static_cast<unsigned>(rows.size() / bytesPerRow) : 0; }

    friend bool operator==(Picture const&, Picture const&) = default;
};

/// An empty picture of `total` bytes in rows of `bytesPerRow`; nothing if a count is 0 or past a limit (reported). A
/// last row that the count does not fill counts as a row.
std::optional<Picture> MakePicture(unsigned total, unsigned bytesPerRow);

/// Fills `picture` with text data: hexadecimal digits with repeat codes, or `:B64:` / `:Z64:` with base64 and a check
/// sum. White space is skipped, missing rows stay white, surplus data are ignored. Damaged data are drawn as far as
/// they go, and reported.
void DecodeTextData(std::string_view text, Picture& picture);

/// Fills `picture` with raw bytes.
void DecodeBinaryData(std::string_view bytes, Picture& picture);

/// Reports that only so many rows came of a picture.
void ReportMissingRows(std::size_t rows, Picture const& picture);

/// CRC-16 with polynomial 1021 hex, start value 0, neither reflected nor inverted.
std::uint16_t Crc16(std::string_view text);
/// Four hexadecimal digits.
std::string CrcDigits(std::uint16_t crc);

}  // namespace ZplCore
