#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "Scripting/FinishedPage.h"

/// A page read back from its file: a PNG (ISO/IEC 15948) of 1-bit greyscale, not interlaced.
class PageFile final : public Scripting::FinishedPage {
public:
    /// Nothing if `bytes` is no such file.
    static std::optional<PageFile> Parse(std::string bytes);

    Scripting::Extent PageSize() const override { return {static_cast<int>(width_), static_cast<int>(height_)}; }
    unsigned PageDpi() const override { return dpi_; }
    std::string_view PngFile() override { return file_; }
    std::string_view DeflatedRows() override { return data_; }
    std::string_view PackedRows() override { return rows_; }
    std::string_view PbmFile() override;

private:
    bool ReadChunks();
    bool UnpackRows();

    std::string file_;
    std::string data_;
    std::string rows_;
    std::string pbm_;      ///< as it was asked for
    unsigned width_ = 0;   ///< pixels
    unsigned height_ = 0;  ///< pixels
    unsigned dpi_ = 0;
};
