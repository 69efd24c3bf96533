#include <zlib.h>

#include <algorithm>
#include <vector>

#include "fuzz/Fuzz.h"
#include "printengine/src/page/DotRowDeflater.h"

// The deflated rows of pages: two bytes for the length of a row, then steps of a byte that begin with new bytes, go on
// as the row above or as the byte before, or repeat whole rows. Whatever the rows are, zlib finds them again, and no
// stream is much longer than the rows.

using PrintEngine::Pages::DotRowDeflater;

namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes Inflated(std::string const& stream, std::size_t size) {
    Bytes rows(size + 1);
    uLongf inflated = rows.size();
    int const result = uncompress(rows.data(), &inflated, reinterpret_cast<Bytef const*>(stream.data()), stream.size());
    Require(result == Z_OK && inflated == size);
    rows.resize(size);
    return rows;
}

/// Makes a row out of the one before it.
void ChangeRow(FuzzInput& input, Bytes& row) {
    for (std::size_t at = 0; at < row.size();) {
        unsigned const step = input.Byte();
        std::size_t const length = std::min<std::size_t>(row.size() - at, 1 + (step >> 2) * (step & 1 ? 7 : 1));
        bool const isRun = (step & 2) != 0;
        for (std::size_t i = at; i < at + length; ++i) {
            if (isRun) row[i] = i > 0 ? row[i - 1] : 0xFF;
            if (!isRun && (step & 1) == 0) row[i] = static_cast<std::uint8_t>(input.Byte());
        }
        at += length;
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    constexpr std::size_t MostBytes = std::size_t{1} << 18;
    FuzzInput input(data, size);
    std::size_t const rowBytes = 2 + input.Word() % (DotRowDeflater::MostRowBytes - 1);
    Bytes row(rowBytes);
    Bytes all;
    DotRowDeflater deflater;
    deflater.Start(rowBytes);
    do {
        ChangeRow(input, row);
        std::copy(row.begin(), row.end(), deflater.Row());
        deflater.Add();
        std::size_t const repeats =
            std::min<std::size_t>(input.Byte() % 16 * (input.Byte() % 64), MostBytes / rowBytes);
        deflater.Repeat(repeats);
        for (std::size_t i = 0; i <= repeats; ++i) all.insert(all.end(), row.begin(), row.end());
    } while (!input.Rest().empty() && all.size() < MostBytes);

    std::string stream;
    deflater.Finish(stream);
    Require(Inflated(stream, all.size()) == all);
    Require(stream.size() < 200 + all.size() + all.size() / 16);
    return 0;
}
