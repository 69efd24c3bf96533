#include "scanner/ScanModule.h"

#define ZX_USE_UTF8 1
#include <ZXing/BarcodeFormat.h>
#include <ZXing/DecodeHints.h>
#include <ZXing/ReadBarcode.h>

#include <cstring>

namespace {

int Read(ZXing::ImageView const& picture, ZXing::DecodeHints const& hints, uint8_t* text, int capacity) {
    auto const result = ZXing::ReadBarcode(picture, hints);
    if (!result.isValid()) return -1;
    auto const& bytes = result.bytes();
    if (bytes.size() > static_cast<std::size_t>(capacity)) return -1;
    std::memcpy(text, bytes.data(), bytes.size());
    return static_cast<int>(bytes.size());
}

}  // namespace

extern "C" __attribute__((visibility("default"))) int zpl_scan_read_1(uint8_t const* pixels, int width, int height,
                                                                      char const* format, uint8_t* text, int capacity) {
    try {
        ZXing::ImageView const picture(pixels, width, height, ZXing::ImageFormat::Lum);
        ZXing::DecodeHints hints;
        hints.setFormats(ZXing::BarcodeFormatFromString(format));
        hints.setBinarizer(ZXing::Binarizer::FixedThreshold);
        hints.setReturnCodabarStartEnd(true);
        // Some symbols are found only where nothing else can be in the picture.
        for (bool const isPure : {false, true}) {
            hints.setIsPure(isPure);
            int const length = Read(picture, hints, text, capacity);
            if (length >= 0) return length;
        }
    } catch (...) {
        // What cannot be read for any reason is not read.
    }
    return -1;
}
