#include <cstdint>
#include <cstdlib>
#include <string>

#include "Barcode/Encoder/AztecEncoder.h"
#include "Barcode/Encoder/DataMatrix200Encoder.h"
#include "Barcode/Encoder/MicroPDF417Encoder.h"
#include "Barcode/Encoder/PDF417Encoder.h"
#include "barcodes/composite/Gs1DatabarEncoder.h"
#include "barcodes/composite/Tlc39Encoder.h"
#include "barcodes/frame/GraphicHelper.h"
#include "barcodes/matrix/DataMatrix0to140Encoder.h"
#include "barcodes/matrix/MaxiCodeEncoder.h"
#include "barcodes/matrix/QrText.h"
#include "barcodes/stacked/CodaBlockEncoders.h"
#include "barcodes/stacked/Code49Encoder.h"

using namespace Barcode::Encoder;
using namespace ZplCore;

namespace {

constexpr auto Valid = ValidationStatus::Valid;

/// All rows of a symbol are equally wide.
void Check(Barcode::Model::MatrixBarcodeModel const& model) {
    for (auto const& row : model.GetCells()) {
        if (row.size() != model.GetCells()[0].size()) std::abort();
    }
}

void Check(Barcode::Model::StackedBarcodeModel const& model) {
    for (auto const& row : model.GetBlocks()) {
        if (Scripting::GraphicHelper::GetLinearRowWidth(row, 1, 2) !=
            Scripting::GraphicHelper::GetLinearRowWidth(model.GetBlocks()[0], 1, 2))
            std::abort();
    }
}

void EncodeMatrix(unsigned kind, unsigned a, unsigned b, std::string const& text) {
    switch (kind) {
        case 0: {
            AztecOptions const options{a * 2, (b & 1) != 0, (b & 2) != 0, b >> 2 & 31, "NAME"};
            if (AztecEncoder::Validate(text, options) == Valid) Check(AztecEncoder::Encode(text, options));
            break;
        }
        case 1: {
            DMSize const size{a & 0x80 ? a : 0, a & 0x80 ? b : 0};
            if (DataMatrix200Encoder::Validate(text, size, '~', b % 6) == Valid)
                Check(DataMatrix200Encoder::Encode(text, size, '~', b % 6));
            break;
        }
        case 2: {
            constexpr unsigned Levels[] = {0, 50, 80, 100, 140};
            unsigned const level = Levels[a % 5], format = b % 7;
            if (DataMatrix0to140Encoder::Validate(text, level, b / 7, format) == Valid)
                Check(DataMatrix0to140Encoder::Encode(text, static_cast<int>(level), static_cast<int>(b / 7),
                                                      static_cast<int>(format)));
            break;
        }
        default: {
            auto const field = ZplCore::ReadQrFieldData(text, "LMQH"[a % 4], b % 8);
            if (QREncoder::Validate(field.text, field.options) == Valid)
                Check(QREncoder::Encode(field.text, field.options));
        }
    }
}

void EncodeRows(unsigned kind, unsigned a, unsigned b, std::string const& text) {
    CodaBlockLayout const layout{a % 64, b % 46};
    switch (kind) {
        case 0:
            if (PDF417Encoder::Validate(text, a % 9, b % 31, a / 9) == Valid)
                Check(PDF417Encoder::Encode(text, a % 9, b % 31, a / 9, b >= 128));
            break;
        case 1:
            if (a % 34 < MicroPDF417Encoder::ModeCount && !text.empty())
                Check(MicroPDF417Encoder::Encode(text, MicroPDF417Encoder::ShapeOf(a % 34), MicroPDF417Linkage::None));
            break;
        case 2:
            if (CodaBlockFEncoder::Validate(text, layout) == Valid)
                Check(CodaBlockFEncoder::Encode(text, layout, b >= 128));
            break;
        case 3:
            if (CodaBlockAEncoder::Validate(text, layout) == Valid)
                Check(CodaBlockAEncoder::Encode(text, layout, b >= 128));
            break;
        case 4:
            if (Code49Encoder::Validate(text) == Valid) Check(Code49Encoder::Encode(text));
            break;
        case 5:
            if (Tlc39Encoder::Validate(text) == Valid) Check(Tlc39Encoder::Encode(text).GetMicroPDF417());
            break;
        case 6: EncodeGs1(text, static_cast<Gs1Type>(a % 14), b % 24); break;
        default:
            if (MaxiCodeEncoder::Validate(text, a % 8) == Valid)
                MaxiCodeEncoder::Encode(text, a % 8, b & 7, b >> 4 & 7);
    }
}

}  // namespace

/// The symbols of cells and of rows: which, two bytes of options, and any text.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    constexpr unsigned MatrixKinds = 4, RowKinds = 8;
    if (size < 3) return 0;
    std::string const text(reinterpret_cast<char const*>(data) + 3, size - 3);
    unsigned const kind = data[0] % (MatrixKinds + RowKinds);
    if (kind < MatrixKinds) {
        EncodeMatrix(kind, data[1], data[2], text);
    } else {
        EncodeRows(kind - MatrixKinds, data[1], data[2], text);
    }
    return 0;
}
