// zplhost.hpp: zplhost.h for C++20, with owners in place of handles and exceptions in place of codes. Header only.
//
//     zpl::Desk desk({.dpi = 300});
//     desk.Feed(stream);
//     desk.Finish();
//     while (auto label = desk.NextLabel()) {
//         zpl::Page page = label->Draw(0);
//         ... page.Rows(), page.Png() ...
//     }
//
// What zplhost.h says of units, threads and lifetimes holds here too. Objects are moved, not copied; of one that was
// moved from only the end may come.
#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "zplhost.h"

namespace zpl {

/// What went wrong; what() says it in one line.
class Error : public std::runtime_error {
public:
    explicit Error(zpl_status status) : std::runtime_error(zpl_error()), status_(status) {}
    zpl_status Status() const { return status_; }

private:
    zpl_status status_;
};

inline void Check(zpl_status status) {
    if (status != ZPL_OK) throw Error(status);
}

/// As zpl_settings; what is empty takes the default.
struct Settings {
    unsigned dpi = 203;
    unsigned printerDpi = 0;
    double widthInches = 4;
    double heightInches = 6;
    std::string storageFolder = {};
    std::string fontsFolder = {};
    std::vector<std::string> fonts = {};
    std::string time = {};
    std::string tag = {};
    bool mapsFields = false;
};

/// A drawn page.
class Page {
public:
    explicit Page(zpl_page* page) : page_(page) {}

    unsigned Width() const { return zpl_page_width(Handle()); }
    unsigned Height() const { return zpl_page_height(Handle()); }
    unsigned Dpi() const { return zpl_page_dpi(Handle()); }
    std::size_t BytesPerRow() const { return zpl_page_bytes_per_row(Handle()); }
    /// Rows of BytesPerRow bytes, for as long as the page lives.
    std::span<std::uint8_t const> Rows() const {
        auto const* const rows = zpl_page_rows(Handle());
        if (!rows) throw Error(ZPL_FAILED);
        return {rows, BytesPerRow() * Height()};
    }
    std::string Png() const { return Write("png"); }
    std::string Pdf() const { return Write("pdf"); }
    /// As the file of a format: "png", "pbm" or "pdf".
    std::string Write(char const* format) const {
        return Whole([&](void* memory, std::size_t* size) { return zpl_page_write(Handle(), format, memory, size); });
    }
    /// One PDF of several pages.
    static std::string Pdf(std::span<Page const> pages) {
        std::vector<zpl_page const*> list;
        for (auto const& page : pages) list.push_back(page.Handle());
        return Whole([&](void* memory, std::size_t* size) {
            return zpl_pages_write_pdf(list.data(), list.size(), memory, size);
        });
    }
    std::string_view Fields() const { return zpl_page_fields(Handle()); }
    std::string_view Report() const { return zpl_page_report(Handle()); }
    zpl_page const* Handle() const { return page_.get(); }

private:
    struct Free {
        void operator()(zpl_page* page) const { zpl_page_free(page); }
    };

    template <typename Give>
    static std::string Whole(Give give) {
        std::size_t size = 0;
        Check(give(nullptr, &size));
        std::string file(size, '\0');
        Check(give(file.data(), &size));
        return file;
    }

    std::unique_ptr<zpl_page, Free> page_;
};

/// A receiver of answers, which lets no exception out: the first one waits to be thrown behind the call.
struct AnswerReceiver {
    std::function<void(std::string_view)> take;
    std::exception_ptr failure = {};

    static void Take(void* self, char const* bytes, std::size_t size) noexcept {
        auto& receiver = *static_cast<AnswerReceiver*>(self);
        try {
            receiver.take({bytes, size});
        } catch (...) {
            if (!receiver.failure) receiver.failure = std::current_exception();
        }
    }

    void Rethrow() {
        if (auto const thrown = std::exchange(failure, {})) std::rethrow_exception(thrown);
    }
};

/// A finished format, which draws any copy of itself.
class Label {
public:
    Label(zpl_label* label, std::shared_ptr<AnswerReceiver> receiver) : receiver_(std::move(receiver)), label_(label) {}

    unsigned Number() const { return zpl_label_number(label_.get()); }
    unsigned Copies() const { return zpl_label_copies(label_.get()); }
    std::string_view Text() const { return zpl_label_text(label_.get()); }
    std::uint64_t Offset() const { return zpl_label_offset(label_.get()); }
    Page Draw(unsigned copy = 0) {
        zpl_page* page = nullptr;
        Check(zpl_label_draw(label_.get(), copy, &page));
        Page drawn(page);
        receiver_->Rethrow();
        return drawn;
    }

private:
    struct Free {
        void operator()(zpl_label* label) const { zpl_label_free(label); }
    };

    std::shared_ptr<AnswerReceiver> receiver_;
    std::unique_ptr<zpl_label, Free> label_;
};

/// A printer in memory.
class Desk {
public:
    explicit Desk(Settings const& settings = {}) {
        std::vector<char const*> fonts;
        for (auto const& font : settings.fonts) fonts.push_back(font.c_str());
        fonts.push_back(nullptr);
        auto const orNull = [](std::string const& text) { return text.empty() ? nullptr : text.c_str(); };
        zpl_settings plain;
        zpl_settings_init(&plain);
        plain.dpi = settings.dpi;
        plain.printer_dpi = settings.printerDpi;
        plain.width_inches = settings.widthInches;
        plain.height_inches = settings.heightInches;
        plain.storage_folder = orNull(settings.storageFolder);
        plain.fonts_folder = orNull(settings.fontsFolder);
        plain.fonts = fonts.data();
        plain.time = orNull(settings.time);
        plain.tag = orNull(settings.tag);
        plain.maps_fields = settings.mapsFields ? 1 : 0;
        zpl_desk* desk = nullptr;
        Check(zpl_desk_open(&plain, &desk));
        desk_.reset(desk);
    }

    void Feed(std::string_view bytes) { After(zpl_desk_feed(desk_.get(), bytes.data(), bytes.size())); }
    void Feed(std::span<std::byte const> bytes) { After(zpl_desk_feed(desk_.get(), bytes.data(), bytes.size())); }
    void Finish() { After(zpl_desk_finish(desk_.get())); }
    std::optional<Label> NextLabel() {
        zpl_label* next = nullptr;
        auto const status = zpl_desk_next_label(desk_.get(), &next);
        if (status == ZPL_NONE) return receiver_->Rethrow(), std::nullopt;
        Check(status);
        std::optional<Label> label(std::in_place, next, receiver_);
        receiver_->Rethrow();
        return label;
    }
    std::string Findings() const {
        char const* json = nullptr;
        Check(zpl_desk_findings(desk_.get(), &json));
        return json;
    }
    /// Takes what streams send back. What it throws leaves the call in which it threw.
    void OnAnswer(std::function<void(std::string_view)> take) {
        receiver_->take = std::move(take);
        Check(zpl_desk_on_answer(desk_.get(), receiver_->take ? AnswerReceiver::Take : nullptr, receiver_.get()));
    }

private:
    struct Close {
        void operator()(zpl_desk* desk) const { zpl_desk_close(desk); }
    };

    void After(zpl_status status) {
        receiver_->Rethrow();
        Check(status);
    }

    std::shared_ptr<AnswerReceiver> receiver_ = std::make_shared<AnswerReceiver>();
    std::unique_ptr<zpl_desk, Close> desk_;
};

}  // namespace zpl
