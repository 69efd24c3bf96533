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

ValidationStatus PublishedSymbol::Encode(std::vector<Segment> const& segments) {
    if (segments.size() == 1 && segments[0].channel == 0) return Encode(segments[0].text);
    std::vector<std::string> texts;
    std::vector<zint_seg> parts;
    for (auto const& [text, channel] : segments) {
        if (text.size() > ZINT_MAX_DATA_LEN) return ValidationStatus::TooLong;
        texts.push_back(text);
        parts.push_back({nullptr, static_cast<int>(text.size()), static_cast<int>(channel)});
    }
    for (std::size_t i = 0; i < parts.size(); ++i) parts[i].source = reinterpret_cast<unsigned char*>(texts[i].data());
    if (symbol_->rows != 0) ZBarcode_Clear(symbol_.get());
    return Finish(ZBarcode_Encode_Segs(symbol_.get(), parts.data(), static_cast<int>(parts.size())));
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

Model::StackedBarcodeModel PublishedSymbol::ToStacked() const {
    Model::StackedBarcodeModel model(static_cast<unsigned>(Rows()), static_cast<unsigned>(Columns()));
    for (std::size_t r = 0; r < Rows(); ++r) {
        for (std::size_t c = 0; c < Columns(); ++c) model.GetBlocks()[r].emplace_back(false, IsDark(r, c));
    }
    return model;
}

}  // namespace Barcode::Encoder
