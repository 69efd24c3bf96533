#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "Scripting/FinishedPage.h"

/// A page of rows that are there: of a picture that no label has drawn, or of a finished page that is turned.
class RowsPage final : public Scripting::FinishedPage {
public:
    /// `rows` as of PackedRows.
    RowsPage(Scripting::Extent size, unsigned dpi, std::string rows) : size_(size), dpi_(dpi), rows_(std::move(rows)) {}
    /// `degrees` clockwise: 90, 180 or 270.
    static RowsPage Turned(Scripting::FinishedPage& page, unsigned degrees);

    Scripting::Extent PageSize() const override { return size_; }
    unsigned PageDpi() const override { return dpi_; }
    std::string_view PngFile() override;
    std::string_view DeflatedRows() override;
    std::string_view PackedRows() override { return rows_; }
    std::string_view PbmFile() override;

private:
    std::size_t BytesPerRow() const { return (static_cast<std::size_t>(size_.width) + 7) / 8; }
    void Blacken(int x, int y);

    Scripting::Extent size_;
    unsigned dpi_;
    std::string rows_;
    std::string deflated_;
    std::string file_;
};
