#include "printengine/src/page/KeptPage.h"

#include "printengine/src/page/PageDeflater.h"
#include "printengine/src/page/PbmWriter.h"
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

std::string_view KeptPage::PackedRows() { return PbmFile().substr(PbmHeader(layout_).size()); }

std::string_view KeptPage::PbmFile() {
    EncodePbm(raster_, layout_, form_);
    return form_;
}

}  // namespace PrintEngine::Pages
