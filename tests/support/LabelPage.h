#pragma once

#define ZX_USE_UTF8 1
#include <ZXing/BarcodeFormat.h>
#include <ZXing/DecodeHints.h>
#include <ZXing/ReadBarcode.h>

#include <string>
#include <string_view>
#include <vector>

#include "PagePictures.h"

/// A page of a whole label, as the print engine draws it, and what an independent decoder reads on it.
class LabelPage {
public:
    /// The first label of `stream`.
    static LabelPage Draw(std::string_view stream, unsigned designDpi = 203, unsigned printerDpi = 0) {
        DeskSettings options;
        options.designDpi = designDpi;
        options.printerDpi = printerDpi ? printerDpi : designDpi;
        options.widthInches = 6;
        Desk desk(options);
        LabelPage page;
        auto const labels = DrawPages(desk, stream);
        if (!labels.empty()) page.page_ = labels[0];
        return page;
    }

    bool IsDark(unsigned x, unsigned y) const { return page_.At(static_cast<int>(x), static_cast<int>(y)); }

    /// The box of all dark pixels, its right and bottom edge outside.
    struct Box {
        unsigned left = 0, top = 0, right = 0, bottom = 0;
    };
    Box Ink() const {
        auto const box = page_.InkBox();
        return {static_cast<unsigned>(box[0]), static_cast<unsigned>(box[1]), static_cast<unsigned>(box[2]),
                static_cast<unsigned>(box[3])};
    }

    /// The boxes of what stands side by side with at least `gap` blank columns between.
    std::vector<Box> BoxesInRow(unsigned gap) const {
        Box const all = Ink();
        std::vector<Box> boxes;
        for (unsigned x = all.left, blank = gap; x < all.right; ++x) {
            bool isDark = false;
            for (unsigned y = all.top; y < all.bottom && !isDark; ++y) isDark = IsDark(x, y);
            if (isDark && blank >= gap) boxes.push_back({x, all.top, x, all.bottom});
            if (isDark) boxes.back().right = x + 1;
            blank = isDark ? 0 : blank + 1;
        }
        return boxes;
    }

    /// The bytes of the one symbol on the page, or "unreadable"; with FNC1 as 0x1D. `dotSize` is that of the camera's
    /// pixels.
    std::string Read(ZXing::BarcodeFormat format, bool pure = false, unsigned dotSize = 1) const {
        auto const result = ReadIn(Ink(), format, pure, dotSize);
        if (!result.isValid() || result.format() != format) return "unreadable";
        auto const& bytes = result.bytes();
        return std::string(bytes.begin(), bytes.end());
    }

    /// A camera looks at a symbol and not at the whole page.
    ZXing::Result ReadIn(Box box, ZXing::BarcodeFormat format, bool pure = false, unsigned dotSize = 1) const {
        constexpr unsigned Quiet = 40;  // pixels
        unsigned const width = (box.right - box.left) * dotSize + 2 * Quiet;
        unsigned const height = (box.bottom - box.top) * dotSize + 2 * Quiet;
        std::vector<std::uint8_t> pixels(std::size_t{width} * height, 255);
        for (unsigned y = 0; y < height - 2 * Quiet; ++y) {
            for (unsigned x = 0; x < width - 2 * Quiet; ++x) {
                if (IsDark(box.left + x / dotSize, box.top + y / dotSize))
                    pixels[std::size_t{y + Quiet} * width + x + Quiet] = 0;
            }
        }
        ZXing::DecodeHints hints;
        hints.setFormats(format);
        hints.setIsPure(pure);
        hints.setBinarizer(ZXing::Binarizer::FixedThreshold);
        hints.setReturnCodabarStartEnd(true);
        return ZXing::ReadBarcode(
            {pixels.data(), static_cast<int>(width), static_cast<int>(height), ZXing::ImageFormat::Lum}, hints);
    }

private:
    Picture page_;
};
