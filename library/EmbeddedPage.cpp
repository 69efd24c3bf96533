#include "library/EmbeddedPage.h"

#include <utility>

EmbeddedPage::EmbeddedPage(std::unique_ptr<Scripting::FinishedPage> page, PageReport report)
    : size_(page->PageSize()),
      dpi_(page->PageDpi()),
      fields_(report.fields ? report.fields->list : "[]"),
      page_(std::move(page)) {
    JsonWriter writer;
    writer.StartObject();
    report.WriteMembers(writer);
    report_ = writer.EndObject().Text();
}

std::string_view EmbeddedPage::Rows() const {
    std::lock_guard const lock(mutex_);
    if (rows_.empty()) {
        rows_ = page_->PackedRows();
        format_ = nullptr;
    }
    return rows_;
}

PageForm const& EmbeddedPage::FormOf(PageFormat const& format) const {
    if (format_ != &format) {
        format_ = nullptr;
        form_ = format.FormOf(*page_);
        format_ = &format;
    }
    return form_;
}

std::string EmbeddedPage::FileOf(PageFormat const& format, std::span<EmbeddedPage const* const> pages) {
    std::string file;
    auto const writer = format.makeWriter();
    for (auto const* const page : pages) {
        std::lock_guard const lock(page->mutex_);
        file += writer->Add(page->FormOf(format));
    }
    file += writer->End();
    return file;
}
