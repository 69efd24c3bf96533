#include <algorithm>
#include <string>

#include "fields/graphics/StoredGraphics.h"
#include "fuzz/Fuzz.h"

// The data of pictures in streams: a byte for the form, the two counts of the command, and the data. Rows never go
// beyond the picture; and what a host asks back for and sends again is the same picture.

using namespace ZplCore;

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    constexpr unsigned MostSendBack = 4096;
    FuzzInput input(data, size);
    unsigned const form = input.Byte();
    unsigned const total = form & 2 ? input.Word() << 12 : input.Word();
    unsigned const bytesPerRow = input.Word();
    auto picture = MakePicture(total, bytesPerRow);
    if (!picture) return 0;
    if (form & 1) {
        DecodeBinaryData(input.Rest(), *picture);
    } else {
        DecodeTextData(input.Rest(), *picture);
    }
    std::size_t const whole = std::size_t{picture->bytesPerRow} * picture->rowCount;
    Require(picture->rows.size() <= whole && picture->StoredRows() <= picture->rowCount);
    if (whole > MostSendBack) return 0;

    std::string const command = DownloadCommand({'R', "A", "GRF"}, *picture);
    Require(command.size() <= DownloadSize(*picture));
    auto again = MakePicture(static_cast<unsigned>(whole), bytesPerRow);
    Require(again.has_value());
    std::string_view const text(command);
    DecodeTextData(text.substr(text.find(":B64:")), *again);
    picture->rows.resize(whole);
    again->rows.resize(whole);
    Require(*again == *picture);
    return 0;
}
