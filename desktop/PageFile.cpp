#include "desktop/PageFile.h"

#include <zlib.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <vector>

namespace {

constexpr std::string_view Signature = "\x89PNG\r\n\x1a\n";
constexpr double InchesPerMeter = 1 / 0.0254;
constexpr double PointsPerInch = 72;

std::uint32_t BigEndian32(std::string_view bytes, std::size_t at) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i) value = (value << 8) | static_cast<std::uint8_t>(bytes[at + i]);
    return value;
}

std::string Number(double value) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.6g", value);
    return text.data();
}

}  // namespace

std::optional<PageFile> PageFile::Parse(std::string_view bytes) {
    constexpr std::size_t ChunkFrame = 12;  // length, type and checksum
    if (!bytes.starts_with(Signature)) return std::nullopt;
    PageFile page;
    for (std::size_t at = Signature.size(); at + ChunkFrame <= bytes.size();) {
        std::size_t const length = BigEndian32(bytes, at);
        if (length > bytes.size() - at - ChunkFrame) return std::nullopt;
        auto const type = bytes.substr(at + 4, 4);
        auto const content = bytes.substr(at + 8, length);
        if (type == "IHDR" && length >= 13) {
            page.width = BigEndian32(content, 0);
            page.height = BigEndian32(content, 4);
            // One bit a sample, greyscale, deflate, adaptive filters, no interlace.
            if (content.substr(8, 5) != std::string_view("\1\0\0\0\0", 5)) return std::nullopt;
        } else if (type == "pHYs" && length >= 9) {
            page.dpi = static_cast<unsigned>(std::lround(BigEndian32(content, 0) / InchesPerMeter));
        } else if (type == "IDAT") {
            page.data += content;
        }
        at += ChunkFrame + length;
    }
    if (page.width == 0 || page.height == 0 || page.data.empty()) return std::nullopt;
    return page;
}

std::string PageFile::ToPbm() const {
    std::size_t const stride = (width + 7) / 8;
    std::string rows((stride + 1) * height, '\0');
    uLongf size = rows.size();
    uncompress(reinterpret_cast<Bytef*>(rows.data()), &size, reinterpret_cast<Bytef const*>(data.data()), data.size());

    std::string pbm = "P4\n" + std::to_string(width) + " " + std::to_string(height) + "\n";
    pbm.reserve(pbm.size() + stride * height);
    for (std::size_t y = 0; y < height; ++y) {
        // The engine writes unfiltered rows. A dark dot is 0 there and 1 here.
        auto const row = std::string_view(rows).substr(y * (stride + 1) + 1, stride);
        for (char const byte : row) pbm += static_cast<char>(~byte);
        if (unsigned const used = width % 8; used != 0)
            pbm.back() = static_cast<char>(pbm.back() & (0xFF << (8 - used)));
    }
    return pbm;
}

std::string PageFile::ToPdf() const {
    double const resolution = dpi != 0 ? dpi : PointsPerInch;
    std::string const w = Number(width * PointsPerInch / resolution);
    std::string const h = Number(height * PointsPerInch / resolution);
    std::string const drawing = "q " + w + " 0 0 " + h + " 0 0 cm /Page Do Q";
    std::string const columns = std::to_string(width);
    std::array<std::string, 5> const objects = {
        "<</Type/Catalog/Pages 2 0 R>>",
        "<</Type/Pages/Kids[3 0 R]/Count 1>>",
        "<</Type/Page/Parent 2 0 R/MediaBox[0 0 " + w + " " + h +
            "]/Resources<</XObject<</Page 5 0 R>>>>/Contents 4 0 R>>",
        "<</Length " + std::to_string(drawing.size()) + ">>stream\n" + drawing + "\nendstream",
        "<</Type/XObject/Subtype/Image/Width " + columns + "/Height " + std::to_string(height) +
            "/ColorSpace/DeviceGray/BitsPerComponent 1/Filter/FlateDecode/DecodeParms<</Predictor 15/Colors 1"
            "/BitsPerComponent 1/Columns " +
            columns + ">>/Length " + std::to_string(data.size()) + ">>stream\n" + data + "\nendstream",
    };

    std::string pdf = "%PDF-1.4\n";
    std::vector<std::size_t> offsets;
    for (auto const& object : objects) {
        offsets.push_back(pdf.size());
        pdf += std::to_string(offsets.size()) + " 0 obj" + object + "\nendobj\n";
    }
    std::size_t const table = pdf.size();
    pdf += "xref\n0 " + std::to_string(objects.size() + 1) + "\n0000000000 65535 f \n";
    for (std::size_t const offset : offsets) {
        std::array<char, 32> entry{};
        std::snprintf(entry.data(), entry.size(), "%010zu 00000 n \n", offset);
        pdf += entry.data();
    }
    pdf += "trailer<</Size " + std::to_string(objects.size() + 1) + "/Root 1 0 R>>\nstartxref\n" +
           std::to_string(table) + "\n%%EOF\n";
    return pdf;
}

std::string_view Extension(PageFormat format) {
    switch (format) {
        case PageFormat::Pbm: return "pbm";
        case PageFormat::Pdf: return "pdf";
        case PageFormat::Png: break;
    }
    return "png";
}
