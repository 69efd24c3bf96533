#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "desktop/CommandLine.h"

/// A page as the print engine writes it: a PNG (ISO/IEC 15948) of 1-bit greyscale, not interlaced.
struct PageFile {
    unsigned width = 0;   ///< pixels
    unsigned height = 0;  ///< pixels
    unsigned dpi = 0;     ///< pixels per inch
    std::string data;     ///< the zlib stream of the filtered rows

    /// Nothing if `bytes` is no such file.
    static std::optional<PageFile> Parse(std::string_view bytes);

    /// The same page as a portable bitmap (raw PBM).
    std::string ToPbm() const;
    /// The same page as a PDF document of one page (ISO 32000-1), which keeps the compressed rows as they are.
    std::string ToPdf() const;
};

/// The ending of a file in `format`, without a dot.
std::string_view Extension(PageFormat format);
