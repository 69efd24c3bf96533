#pragma once

#include <array>
#include <cstddef>
#include <iterator>
#include <memory>
#include <string_view>

#include "Scripting/FinishedPage.h"

/// A page in the form that its format asks for.
struct PageForm {
    Scripting::Extent size;    ///< pixels
    unsigned dpi;              ///< pixels per inch; 0 if that is not known
    std::string_view content;  ///< borrowed
};

/// Makes the bytes of one file of pages, piece by piece; each is valid until the next is asked for.
class PageWriter {
public:
    virtual ~PageWriter() = default;
    /// The bytes of a further page, which `page` may be a part of. Throws OutputError if the file cannot hold it.
    virtual std::string_view Add(PageForm const& page) = 0;
    /// What stands behind the last page.
    virtual std::string_view End() { return {}; }
};

/// A format that pages are written in. All that is known of it follows from its row.
struct PageFormat {
    std::string_view name;       ///< as it is asked for
    std::string_view extension;  ///< of its files, without a dot
    bool isDocument;             ///< a file holds any number of pages
    std::string_view (Scripting::FinishedPage::*content)();
    std::unique_ptr<PageWriter> (*makeWriter)();
    bool joins = false;  ///< files one behind the other are a file of all their pages
    /// Hands the content out piece by piece; null where that spares nothing.
    void (Scripting::FinishedPage::*pieces)(Scripting::TakePiece const&) = nullptr;

    /// Valid until the page is asked for another form.
    PageForm FormOf(Scripting::FinishedPage& page) const {
        return {page.PageSize(), page.PageDpi(), (page.*content)()};
    }
};

std::unique_ptr<PageWriter> MakeFileWriter();  ///< for pages that are files as they are
std::unique_ptr<PageWriter> MakePdfWriter();   ///< ISO 32000-1, version 1.4

/// The first one is taken where none is asked for.
inline constexpr PageFormat PageFormats[] = {
    {"png", "png", false, &Scripting::FinishedPage::PngFile, MakeFileWriter},
    {"pbm", "pbm", false, &Scripting::FinishedPage::PbmFile, MakeFileWriter, true, &Scripting::FinishedPage::PbmPieces},
    {"pdf", "pdf", true, &Scripting::FinishedPage::DeflatedRows, MakePdfWriter},
};

/// A text about the formats, made from their rows.
class FormatText {
public:
    // NOLINTNEXTLINE(google-explicit-constructor): it stands where a text is wanted
    constexpr operator std::string_view() const { return {text_.data(), size_}; }
    constexpr FormatText& Add(std::string_view part) {
        for (char const c : part) text_[size_++] = c;
        return *this;
    }

private:
    std::array<char, 200> text_{};
    std::size_t size_ = 0;
};

/// All names with blanks in between.
inline constexpr FormatText FormatNames = [] {
    FormatText text;
    for (auto const& format : PageFormats) text.Add(&format == PageFormats ? "" : " ").Add(format.name);
    return text;
}();

/// What there is to choose from, as help tells it.
inline constexpr FormatText FormatHelp = [] {
    FormatText text;
    for (auto const& format : PageFormats) {
        bool const isLast = &format + 1 == std::end(PageFormats);
        text.Add(&format == PageFormats ? "" : isLast ? " or " : ", ").Add(format.name);
        if (&format == PageFormats) text.Add(" (default)");
    }
    for (auto const& format : PageFormats) {
        if (format.isDocument)
            text.Add("; ")
                .Add(format.name)
                .Add(" makes one file of all pages of a stream, NAME.")
                .Add(format.extension);
    }
    return text;
}();
