#include <benchmark/benchmark.h>
#include <zlib.h>

#include <fstream>
#include <iterator>

#include "fields/graphics/GraphicData.h"
#include "foundation/Base64.h"
#include "library/Desk.h"

namespace {

DeskSettings At300Dpi() {
    DeskSettings options;
    options.designDpi = options.printerDpi = 300;
    return options;
}

/// The whole page of the shipping label, drawn for 300 dpi: 1200 x 1800 dots.
ZplCore::Picture WholePage() {
    DeskSettings options = At300Dpi();
    options.designDpi = 203;
    Desk desk(options);
    auto session = desk.MakeSession();
    std::ifstream file("examples/shipping-label.zpl", std::ios::binary);
    std::string const stream{std::istreambuf_iterator<char>(file), {}};
    session->Consume(stream, false, true);
    unsigned width = 0;
    unsigned height = 0;
    ZplCore::Picture picture;
    picture.rows = session->Target().GetPageBitmap(width, height);
    picture.bytesPerRow = (width + 7) / 8;
    picture.rowCount = height;
    return picture;
}

std::string Hexadecimal(ZplCore::Picture const& picture) {
    constexpr char Digits[] = "0123456789ABCDEF";
    std::string text;
    for (auto const byte : picture.rows) {
        text += Digits[byte >> 4];
        text += Digits[byte & 15];
    }
    return text;
}

/// With repeat codes, as label programs write them.
std::string Compressed(ZplCore::Picture const& picture) {
    std::string const all = Hexadecimal(picture);
    std::size_t const rowDigits = std::size_t{picture.bytesPerRow} * 2;
    std::string text;
    std::string_view above;
    for (std::size_t start = 0; start < all.size(); start += rowDigits) {
        std::string_view const row = std::string_view(all).substr(start, rowDigits);
        if (row == above) {
            text += ':';
            continue;
        }
        above = row;
        for (std::size_t i = 0; i < row.size();) {
            std::size_t const end = std::min(row.find_first_not_of(row[i], i), row.size());
            if (end == row.size() && (row[i] == '0' || row[i] == 'F')) {
                text += row[i] == '0' ? ',' : '!';
                break;
            }
            std::size_t count = end - i;
            for (; count >= 400; count -= 400) text += "z";
            if (count >= 20) text += static_cast<char>('f' + count / 20);
            if (count % 20 != 0 && (end - i) > 1) text += static_cast<char>('F' + count % 20);
            text += row[i];
            i = end;
        }
    }
    return text;
}

std::string WithCheckSum(std::string const& lead, std::string const& bytes) {
    std::string const text = Base64::Encode(bytes);
    char crc[8];
    std::snprintf(crc, sizeof crc, ":%04X", ZplCore::Crc16(text));
    return lead + text + crc;
}

std::string Packed(ZplCore::Picture const& picture) {
    uLongf size = compressBound(picture.rows.size());
    std::string packed(size, '\0');
    compress(reinterpret_cast<Bytef*>(packed.data()), &size, picture.rows.data(), picture.rows.size());
    packed.resize(size);
    return WithCheckSum(":Z64:", packed);
}

std::string Plain(ZplCore::Picture const& picture) {
    return WithCheckSum(":B64:", {picture.rows.begin(), picture.rows.end()});
}

/// From the recorded command to the drawn page, without the page file.
void DecodeAndDrawPage(benchmark::State& state, std::string (*write)(ZplCore::Picture const&)) {
    auto const picture = WholePage();
    std::string const total = std::to_string(picture.rows.size());
    std::string const stream = "^XA^FO0,0^GFA," + total + "," + total + "," + std::to_string(picture.bytesPerRow) +
                               "," + write(picture) + "^FS^XZ";
    Desk desk(At300Dpi());
    auto session = desk.MakeSession();
    auto result = session->Consume(stream, false, true);
    auto& label = std::get<1>(*result.label);
    for (auto _ : state) benchmark::DoNotOptimize(label.ProcessLabel(0, false));
    state.counters["textBytes"] = static_cast<double>(stream.size());
}
BENCHMARK_CAPTURE(DecodeAndDrawPage, hexadecimal, Hexadecimal)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(DecodeAndDrawPage, compressed, Compressed)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(DecodeAndDrawPage, base64, Plain)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(DecodeAndDrawPage, zlib, Packed)->Unit(benchmark::kMicrosecond);

}  // namespace
