#pragma once

#include <zint.h>

#include <memory>
#include <string_view>

#include "Barcode/Encoder/ValidationStatus.h"
#include "Barcode/Model/BarcodeModels.h"

namespace Barcode::Encoder {

/// A symbol as the barcode library encodes it: rows of modules. Texts are bytes, never converted.
class PublishedSymbol {
public:
    explicit PublishedSymbol(int symbology);

    /// The options that the library documents for the symbology.
    zint_symbol* operator->() { return symbol_.get(); }

    ValidationStatus Encode(std::string_view text);

    std::size_t Rows() const { return static_cast<std::size_t>(symbol_->rows); }
    std::size_t Columns() const { return static_cast<std::size_t>(symbol_->width); }
    bool IsDark(std::size_t row, std::size_t column) const {
        return (symbol_->encoded_data[row][column / 8] >> column % 8 & 1) != 0;
    }

    Model::MatrixBarcodeModel ToMatrix() const;

private:
    ValidationStatus Finish(int result);

    struct Delete {
        void operator()(zint_symbol* symbol) const { ZBarcode_Delete(symbol); }
    };
    std::unique_ptr<zint_symbol, Delete> symbol_;
};

}  // namespace Barcode::Encoder
