#include "printengine/src/barcode/PublishedSymbol.h"

#include <new>

namespace Barcode::Encoder {

namespace {

ValidationStatus StatusOf(int result) {
    if (result < ZINT_ERROR) return ValidationStatus::Valid;
    switch (result) {
        case ZINT_ERROR_TOO_LONG: return ValidationStatus::TooLong;
        case ZINT_ERROR_INVALID_DATA: return ValidationStatus::InvalidCharacter;
        case ZINT_ERROR_INVALID_CHECK: return ValidationStatus::InvalidCheckDigit;
        default: return ValidationStatus::InvalidParameter;
    }
}

}  // namespace

PublishedSymbol::PublishedSymbol(int symbology) : symbol_(ZBarcode_Create()) {
    if (!symbol_) throw std::bad_alloc();
    symbol_->symbology = symbology;
    symbol_->input_mode = DATA_MODE;
}

ValidationStatus PublishedSymbol::Encode(std::string_view text) {
    if (text.empty()) return ValidationStatus::TooShort;
    if (text.size() > ZINT_MAX_DATA_LEN) return ValidationStatus::TooLong;
    // The library paints over what an earlier attempt left.
    if (symbol_->rows != 0) ZBarcode_Clear(symbol_.get());
    return Finish(ZBarcode_Encode(symbol_.get(), reinterpret_cast<unsigned char const*>(text.data()),
                                  static_cast<int>(text.size())));
}

ValidationStatus PublishedSymbol::Finish(int result) {
    auto const status = StatusOf(result);
    if (status != ValidationStatus::Valid) symbol_->rows = symbol_->width = 0;
    return status;
}

Model::MatrixBarcodeModel PublishedSymbol::ToMatrix() const {
    Model::MatrixBarcodeModel model(Rows(), Columns());
    for (std::size_t r = 0; r < Rows(); ++r) {
        for (std::size_t c = 0; c < Columns(); ++c) model.GetCells()[r][c] = IsDark(r, c);
    }
    return model;
}

}  // namespace Barcode::Encoder
