#pragma once

#define ZX_USE_UTF8 1
#include <ZXing/BarcodeFormat.h>
#include <ZXing/DecodeHints.h>
#include <ZXing/ReadBarcode.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "StreamRun.h"

/// A page of a whole label, as the print engine draws it, and what an independent decoder reads on it.
class LabelPage {
public:
    /// The first label of `stream`.
    static LabelPage Draw(std::string_view stream, unsigned designDpi = 203, unsigned printerDpi = 0) {
        RenderOptions options;
        options.designDpi = designDpi;
        options.printerDpi = printerDpi ? printerDpi : designDpi;
        options.widthInches = 6;
        Desk desk(options);
        auto const run = RunStream(desk, stream);
        return run.labels.empty() ? LabelPage() : LabelPage(run.labels[0]);
    }

    bool IsDark(unsigned x, unsigned y) const {
        return x < page_.width && y < page_.height &&
               (page_.rows[y * ((page_.width + 7) / 8) + x / 8] & 0x80U >> x % 8);
    }

    /// The box of all dark pixels, its right and bottom edge outside.
    struct Box {
        unsigned left = 0, top = 0, right = 0, bottom = 0;
    };
    Box Ink() const {
        Box box{page_.width, page_.height, 0, 0};
        for (unsigned y = 0; y < page_.height; ++y) {
            for (unsigned x = 0; x < page_.width; ++x) {
                if (IsDark(x, y)) {
                    box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x + 1),
                           std::max(box.bottom, y + 1)};
                }
            }
        }
        return box.right == 0 ? Box{} : box;
    }

    /// The bytes of the one symbol on the page, or "unreadable"; with FNC1 as 0x1D.
    std::string Read(ZXing::BarcodeFormat format, bool pure = false) const {
        // A camera looks at the symbol and not at the empty page.
        constexpr unsigned Quiet = 40;
        auto const [left, top, right, bottom] = Ink();
        unsigned const width = right - left + 2 * Quiet;
        unsigned const height = bottom - top + 2 * Quiet;
        std::vector<std::uint8_t> pixels(std::size_t{width} * height, 255);
        for (unsigned y = top; y < bottom; ++y) {
            for (unsigned x = left; x < right; ++x) {
                if (IsDark(x, y)) pixels[std::size_t{y - top + Quiet} * width + x - left + Quiet] = 0;
            }
        }
        ZXing::DecodeHints hints;
        hints.setFormats(format);
        hints.setIsPure(pure);
        hints.setBinarizer(ZXing::Binarizer::FixedThreshold);
        hints.setReturnCodabarStartEnd(true);
        auto const result = ZXing::ReadBarcode(
            {pixels.data(), static_cast<int>(width), static_cast<int>(height), ZXing::ImageFormat::Lum}, hints);
        if (!result.isValid() || result.format() != format) return "unreadable";
        auto const& bytes = result.bytes();
        return std::string(bytes.begin(), bytes.end());
    }

private:
    LabelPage() = default;
    explicit LabelPage(StreamRun::Page page) : page_(std::move(page)) {}

    StreamRun::Page page_{};
};
