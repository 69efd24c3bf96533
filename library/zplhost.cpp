#include "library/zplhost.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <iterator>
#include <new>
#include <system_error>

#include "jobhost/model/PrintStream.h"
#include "library/EmbeddedDesk.h"

struct zpl_desk {
    EmbeddedDesk desk;
    std::string findings;
};

struct zpl_label {
    std::unique_ptr<EmbeddedLabel> label;
};

struct zpl_page {
    std::unique_ptr<EmbeddedPage> page;
};

namespace {

// Kept in place, so that there is a sentence also where there is no memory.
thread_local std::array<char, 1024> lastError{};

zpl_status Fail(zpl_status status, std::string_view sentence) noexcept {
    std::size_t size = std::min(sentence.size(), lastError.size() - 1);
    // Not amid a character.
    while (size < sentence.size() && size > 0 && (static_cast<unsigned char>(sentence[size]) & 0xC0) == 0x80) --size;
    std::memcpy(lastError.data(), sentence.data(), size);
    lastError[size] = '\0';
    return status;
}

/// Runs `work`, which gives a status, and turns what it throws into one.
template <typename Work>
zpl_status Guarded(Work&& work) noexcept {
    try {
        return work();
    } catch (Misuse const& error) {
        return Fail(ZPL_MISUSED, error.what());
    } catch (std::bad_alloc const&) {
        return Fail(ZPL_FAILED, "there is not enough memory");
    } catch (std::exception const& error) {
        try {
            return Fail(ZPL_FAILED, Zpl::Host::Explain(error));
        } catch (...) {
            return Fail(ZPL_FAILED, error.what());
        }
    } catch (...) {
        return Fail(ZPL_FAILED, "something failed that has no name");
    }
}

/// Throws Misuse if there is no such thing.
template <typename T>
T& Given(T* pointer, char const* name) {
    if (pointer) return *pointer;
    throw Misuse(std::string(name) + " is NULL");
}

std::string_view Bytes(void const* bytes, std::size_t size) {
    if (size == 0) return {};
    if (size > PTRDIFF_MAX) throw Misuse("no memory holds " + std::to_string(size) + " bytes");
    return {&Given(static_cast<char const*>(bytes), "bytes"), size};
}

/// The settings that the caller knows, the others by default. An older caller fills fewer.
zpl_settings Completed(zpl_settings const* given) {
    constexpr std::size_t FirstSize = offsetof(zpl_settings, maps_fields) + sizeof(zpl_settings::maps_fields);
    zpl_settings settings;
    zpl_settings_init(&settings);
    if (!given) return settings;
    if (given->size < FirstSize || given->size > 65536)
        throw Misuse("the settings are not set up; zpl_settings_init does that");
    std::memcpy(&settings, given, std::min(given->size, sizeof settings));
    return settings;
}

void TakeResolutions(zpl_settings const& settings, DeskSettings& desk) {
    desk.designDpi = settings.dpi;
    desk.printerDpi = settings.printer_dpi != 0 ? settings.printer_dpi : settings.dpi;
    for (auto const dpi : {desk.designDpi, desk.printerDpi}) {
        if (!IsPrinterDpi(dpi)) throw Misuse("a resolution is 203, 300 or 600 dpi, not " + std::to_string(dpi));
    }
    desk.widthInches = settings.width_inches;
    desk.heightInches = settings.height_inches;
    if (!IsLabelSide(desk.widthInches) || !IsLabelSide(desk.heightInches))
        throw Misuse("a label is from 0.1 to 200 inches on a side");
}

void TakeFonts(char const* const* fonts, DeskSettings& desk) {
    for (; fonts && *fonts; ++fonts) {
        auto font = ReadFont(*fonts);
        if (!font) throw Misuse("a font is LETTER=FILE, not \"" + std::string(*fonts) + "\"");
        if (::access(font->second.c_str(), R_OK) != 0)
            throw Misuse("cannot read the font " + font->second + ": " + std::generic_category().message(errno));
        desk.fonts.push_back(*std::move(font));
    }
}

VirtualTag TagOf(char const* text) {
    try {
        return VirtualTag::Parse(text);
    } catch (std::invalid_argument const& error) {
        throw Misuse(std::string("a tag ") + error.what());
    }
}

DeskSettings DeskSettingsOf(zpl_settings const& settings) {
    DeskSettings desk;
    TakeResolutions(settings, desk);
    TakeFonts(settings.fonts, desk);
    if (settings.storage_folder) desk.machine.formatsFolder = settings.storage_folder;
    if (settings.fonts_folder) desk.machine.fontsFolder = settings.fonts_folder;
    if (settings.time && !(desk.time = ReadTime(settings.time)))
        throw Misuse("a time is YEAR-MONTH-DAYTHOUR:MINUTE:SECOND, as 2026-03-31T14:05:00; not \"" +
                     std::string(settings.time) + "\"");
    if (settings.tag) desk.tag = TagOf(settings.tag);
    return desk;
}

PageFormat const& FormatNamed(char const* name) {
    std::string_view const text = &Given(name, "format");
    auto const format = std::find_if(std::begin(PageFormats), std::end(PageFormats),
                                     [text](PageFormat const& row) { return row.name == text; });
    if (format != std::end(PageFormats)) return *format;
    throw Misuse("there is no format \"" + std::string(text) + "\"; there are " + std::string(FormatNames));
}

zpl_status TooSmall(std::size_t size, std::size_t needed) {
    return Fail(ZPL_TOO_SMALL,
                "the memory of " + std::to_string(size) + " bytes does not hold " + std::to_string(needed) + " bytes");
}

/// Gives `file` in the way of zpl_page_write.
zpl_status Give(std::string_view file, void* memory, std::size_t& size) {
    std::size_t const room = std::exchange(size, file.size());
    if (!memory) return ZPL_OK;
    if (room < file.size()) return TooSmall(room, file.size());
    std::memcpy(memory, file.data(), file.size());
    return ZPL_OK;
}

}  // namespace

char const* zpl_version() { return ZPL_VERSION; }

char const* zpl_error() { return lastError.data(); }

void zpl_settings_init(zpl_settings* settings) {
    if (!settings) return;
    *settings = {};
    settings->size = sizeof *settings;
    settings->dpi = 203;
    settings->width_inches = 4;
    settings->height_inches = 6;
}

zpl_status zpl_desk_open(zpl_settings const* settings, zpl_desk** desk) {
    return Guarded([&] {
        auto& result = Given(desk, "desk");
        auto const completed = Completed(settings);
        auto const detail = completed.maps_fields ? EmbeddedDesk::Detail::Everything : EmbeddedDesk::Detail::Ink;
        result = new zpl_desk{EmbeddedDesk(DeskSettingsOf(completed), detail), {}};
        return ZPL_OK;
    });
}

void zpl_desk_close(zpl_desk* desk) { delete desk; }

zpl_status zpl_desk_feed(zpl_desk* desk, void const* bytes, size_t size) {
    return Guarded([&] {
        Given(desk, "desk").desk.Feed(Bytes(bytes, size));
        return ZPL_OK;
    });
}

zpl_status zpl_desk_finish(zpl_desk* desk) {
    return Guarded([&] {
        Given(desk, "desk").desk.Finish();
        return ZPL_OK;
    });
}

zpl_status zpl_desk_next_label(zpl_desk* desk, zpl_label** label) {
    return Guarded([&] {
        auto& result = Given(label, "label");
        auto next = Given(desk, "desk").desk.NextLabel();
        if (!next) return ZPL_NONE;
        result = new zpl_label{std::move(next)};
        return ZPL_OK;
    });
}

zpl_status zpl_desk_findings(zpl_desk* desk, char const** json) {
    return Guarded([&] {
        auto& result = Given(json, "json");
        auto& findings = Given(desk, "desk").findings;
        findings = desk->desk.Findings();
        result = findings.c_str();
        return ZPL_OK;
    });
}

zpl_status zpl_desk_on_answer(zpl_desk* desk, void (*take)(void* user, char const* bytes, size_t size), void* user) {
    return Guarded([&] {
        EmbeddedDesk::TakeAnswer receiver;
        if (take) receiver = [take, user](std::string_view bytes) { take(user, bytes.data(), bytes.size()); };
        Given(desk, "desk").desk.SetAnswerReceiver(std::move(receiver));
        return ZPL_OK;
    });
}

unsigned zpl_label_number(zpl_label const* label) { return label ? label->label->Number() : 0; }

unsigned zpl_label_copies(zpl_label const* label) { return label ? label->label->Copies() : 0; }

char const* zpl_label_text(zpl_label const* label) { return label ? label->label->Text().c_str() : ""; }

uint64_t zpl_label_offset(zpl_label const* label) { return label ? label->label->Offset() : 0; }

zpl_status zpl_label_draw(zpl_label* label, unsigned copy, zpl_page** page) {
    return Guarded([&] {
        auto& result = Given(page, "page");
        result = new zpl_page{Given(label, "label").label->Draw(copy)};
        return ZPL_OK;
    });
}

void zpl_label_free(zpl_label* label) { delete label; }

unsigned zpl_page_width(zpl_page const* page) { return page ? static_cast<unsigned>(page->page->Size().width) : 0; }

unsigned zpl_page_height(zpl_page const* page) { return page ? static_cast<unsigned>(page->page->Size().height) : 0; }

unsigned zpl_page_dpi(zpl_page const* page) { return page ? page->page->Dpi() : 0; }

size_t zpl_page_bytes_per_row(zpl_page const* page) { return (std::size_t{zpl_page_width(page)} + 7) / 8; }

uint8_t const* zpl_page_rows(zpl_page const* page) {
    uint8_t const* rows = nullptr;
    Guarded([&] {
        rows = reinterpret_cast<uint8_t const*>(Given(page, "page").page->Rows().data());
        return ZPL_OK;
    });
    return rows;
}

zpl_status zpl_page_copy_rows(zpl_page const* page, void* memory, size_t size, size_t stride) {
    return Guarded([&] {
        auto const rows = Given(page, "page").page->Rows();
        auto* const out = &Given(static_cast<char*>(memory), "memory");
        std::size_t const row = zpl_page_bytes_per_row(page);
        std::size_t const height = zpl_page_height(page);
        if (stride < row) throw Misuse("a row takes " + std::to_string(row) + " bytes, and the stride is less");
        if (size < row || (size - row) / stride < height - 1) return TooSmall(size, stride * (height - 1) + row);
        for (std::size_t y = 0; y < height; ++y) std::memcpy(out + y * stride, rows.data() + y * row, row);
        return ZPL_OK;
    });
}

zpl_status zpl_page_write(zpl_page const* page, char const* format, void* memory, size_t* size) {
    return Guarded([&] {
        EmbeddedPage const* const pages[] = {Given(page, "page").page.get()};
        auto& room = Given(size, "size");
        return Give(EmbeddedPage::FileOf(FormatNamed(format), pages), memory, room);
    });
}

zpl_status zpl_pages_write_pdf(zpl_page const* const* pages, size_t count, void* memory, size_t* size) {
    return Guarded([&] {
        auto& room = Given(size, "size");
        if (count == 0) throw Misuse("a document has a page at least");
        std::vector<EmbeddedPage const*> list;
        auto const* const given = &Given(pages, "pages");
        for (std::size_t i = 0; i < count; ++i) list.push_back(Given(given[i], "a page").page.get());
        return Give(EmbeddedPage::FileOf(FormatNamed("pdf"), list), memory, room);
    });
}

char const* zpl_page_fields(zpl_page const* page) { return page ? page->page->Fields().c_str() : "[]"; }

char const* zpl_page_report(zpl_page const* page) { return page ? page->page->Report().c_str() : "{}"; }

void zpl_page_free(zpl_page* page) { delete page; }
