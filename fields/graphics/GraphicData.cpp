#include "fields/graphics/GraphicData.h"

#include <zlib.h>

#include <algorithm>
#include <charconv>
#include <string>

#include "fields/graphics/HexGraphicDecoder.h"
#include "foundation/Base64.h"
#include "foundation/Log.h"

namespace ZplCore {

namespace {

constexpr std::string_view Base64Lead = ":B64:";
constexpr std::string_view PackedLead = ":Z64:";

/// Inflates a zlib stream (RFC 1950) up to `limit` bytes; what was inflated before an error is kept.
std::vector<std::uint8_t> Inflate(std::string_view packed, std::size_t limit) {
    std::vector<std::uint8_t> bytes;
    z_stream stream{};
    if (inflateInit(&stream) != Z_OK) return bytes;
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.data()));
    stream.avail_in = static_cast<uInt>(packed.size());
    int status = Z_OK;
    while (status == Z_OK && bytes.size() < limit) {
        std::size_t const step = std::min<std::size_t>(limit - bytes.size(), 64 * 1024);
        std::size_t const size = bytes.size();
        bytes.resize(size + step);
        stream.next_out = bytes.data() + size;
        stream.avail_out = static_cast<uInt>(step);
        status = inflate(&stream, Z_NO_FLUSH);
        bytes.resize(bytes.size() - stream.avail_out);
    }
    inflateEnd(&stream);
    if (status != Z_OK && status != Z_STREAM_END)
        Log::Report(LogTopic::Data, "the packed data of a picture are damaged; what can be read of them is drawn");
    return bytes;
}

}  // namespace

void ReportMissingRows(std::size_t rows, Picture const& picture) {
    Log::Report(LogTopic::Data, "the data of a picture end behind " + std::to_string(rows) + " of " +
                                    std::to_string(picture.rowCount) + " rows; the rest is white");
}

namespace {

void FillRows(std::uint8_t const* bytes, std::size_t count, Picture& picture) {
    count = std::min(count, std::size_t{picture.bytesPerRow} * picture.rowCount);
    picture.rows.assign(bytes, bytes + count);
    std::size_t const rows = (count + picture.bytesPerRow - 1) / picture.bytesPerRow;
    picture.rows.resize(rows * picture.bytesPerRow);
    if (rows < picture.rowCount) ReportMissingRows(rows, picture);
}

std::string WithoutWhiteSpace(std::string_view text) {
    std::string dense;
    dense.reserve(text.size());
    std::copy_if(text.begin(), text.end(), std::back_inserter(dense),
                 [](char c) { return c != ' ' && c != '\t' && c != '\r' && c != '\n'; });
    return dense;
}

void CheckCrc(std::string_view text, std::string_view expected) {
    std::uint16_t crc = 0;
    auto const digits = expected.substr(0, 4);
    auto const result = std::from_chars(digits.data(), digits.data() + digits.size(), crc, 16);
    bool const isWhole = result.ec == std::errc() && result.ptr == digits.data() + digits.size() && digits.size() == 4;
    // Drawn all the same: a picture with a wrong check sum is most often whole.
    std::uint16_t const right = Crc16(text);
    if (isWhole && crc == right) return;
    Log::Report(LogTopic::Data, "the check sum of a picture's data is " + CrcDigits(right) + ", and not \"" +
                                    std::string(digits) + "\" as sent; it is drawn all the same");
}

void DecodeBase64Data(std::string_view body, bool isPacked, Picture& picture) {
    std::string const dense = WithoutWhiteSpace(body);
    auto const colon = dense.find(':');
    std::string_view const text = std::string_view(dense).substr(0, colon);
    CheckCrc(text, colon == std::string::npos ? std::string_view() : std::string_view(dense).substr(colon + 1));
    std::string const bytes = Base64::DecodeLeniently(text);
    if (isPacked) {
        auto const inflated = Inflate(bytes, std::size_t{picture.bytesPerRow} * picture.rowCount);
        FillRows(inflated.data(), inflated.size(), picture);
    } else {
        DecodeBinaryData(bytes, picture);
    }
}

}  // namespace

std::optional<Picture> MakePicture(unsigned total, unsigned bytesPerRow) {
    if (total == 0 || bytesPerRow == 0) return std::nullopt;
    std::size_t const rowCount = (std::size_t{total} + bytesPerRow - 1) / bytesPerRow;
    if (bytesPerRow > Picture::MaximumBytesPerRow || rowCount * bytesPerRow > Picture::MaximumBytes) {
        Log::Report(LogTopic::Limit, "a picture of " + std::to_string(total) + " bytes in rows of " +
                                         std::to_string(bytesPerRow) + " is too large and is left out");
        return std::nullopt;
    }
    return Picture{bytesPerRow, static_cast<unsigned>(rowCount), {}};
}

void DecodeTextData(std::string_view text, Picture& picture) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
    if (text.starts_with(Base64Lead) || text.starts_with(PackedLead)) {
        DecodeBase64Data(text.substr(Base64Lead.size()), text.starts_with(PackedLead), picture);
    } else {
        DecodeHexData(text, picture);
    }
}

void DecodeBinaryData(std::string_view bytes, Picture& picture) {
    FillRows(reinterpret_cast<std::uint8_t const*>(bytes.data()), bytes.size(), picture);
}

std::string CrcDigits(std::uint16_t crc) {
    constexpr std::string_view Digits = "0123456789ABCDEF";
    std::string digits;
    for (int shift = 12; shift >= 0; shift -= 4) digits += Digits[crc >> shift & 15];
    return digits;
}

std::uint16_t Crc16(std::string_view text) {
    constexpr std::uint16_t Polynomial = 0x1021;
    static constexpr auto Table = [] {
        std::array<std::uint16_t, 256> table{};
        for (unsigned i = 0; i < 256; ++i) {
            unsigned crc = i << 8;
            for (int bit = 0; bit < 8; ++bit) crc = (crc & 0x8000) != 0 ? crc << 1 ^ Polynomial : crc << 1;
            table[i] = static_cast<std::uint16_t>(crc);
        }
        return table;
    }();
    std::uint16_t crc = 0;
    for (char const c : text)
        crc = static_cast<std::uint16_t>(crc << 8 ^ Table[(crc >> 8 ^ static_cast<std::uint8_t>(c)) & 0xFF]);
    return crc;
}

}  // namespace ZplCore
