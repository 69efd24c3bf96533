#include "printengine/src/page/KeptPage.h"

#include "printengine/src/page/PageDeflater.h"
#include "printengine/src/page/PngWriter.h"

namespace PrintEngine::Pages {

std::string_view KeptPage::PngFile() {
    PageDeflater deflater;
    form_.clear();
    EncodePng(raster_, layout_, dpi_, deflater, form_);
    return form_;
}

std::string_view KeptPage::DeflatedRows() {
    form_.clear();
    PageDeflater().Append(raster_, layout_, form_);
    return form_;
}

std::string_view KeptPage::PackedRows() {
    form_.resize(PackedRowBytes(layout_.width) * static_cast<std::size_t>(layout_.height));
    PackPage(raster_, layout_, reinterpret_cast<std::uint8_t*>(form_.data()));
    return form_;
}

}  // namespace PrintEngine::Pages
