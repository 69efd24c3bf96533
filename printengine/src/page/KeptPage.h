#pragma once

#include <string>

#include "Scripting/FinishedPage.h"
#include "printengine/src/page/PageLayout.h"
#include "printengine/src/raster/Raster.h"

namespace PrintEngine::Pages {

/// A page that its target has handed out.
class KeptPage final : public Scripting::FinishedPage {
public:
    /// Takes the ink over, and leaves an empty raster.
    KeptPage(Drawing::Raster& raster, PageLayout const& layout, unsigned dpi) : layout_(layout), dpi_(dpi) {
        raster_.Swap(raster);
    }

    Scripting::Extent PageSize() const override { return {layout_.width, layout_.height}; }
    unsigned PageDpi() const override { return dpi_; }
    std::string_view PngFile() override;
    std::string_view DeflatedRows() override;
    std::string_view PackedRows() override;
    std::string_view PbmFile() override;

private:
    Drawing::Raster raster_;
    PageLayout layout_;
    unsigned dpi_;
    std::string form_;  ///< as it was asked for last
};

}  // namespace PrintEngine::Pages
