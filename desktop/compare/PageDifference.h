#pragma once

#include <cstdint>

#include "desktop/compare/PackedPage.h"

/// How an actual page differs from the expected one, in pixels. Pages of different sizes are compared as if both lay on
/// white paper, from the top left corner.
struct PageDifference {
    std::uint64_t missing = 0;  ///< black in the expected page alone
    std::uint64_t extra = 0;    ///< black in the actual page alone
    /// The least box that holds them all.
    unsigned left = 0;
    unsigned top = 0;
    unsigned right = 0;   ///< behind the last column
    unsigned bottom = 0;  ///< behind the last row
    bool hasSameSize = true;

    std::uint64_t Count() const { return missing + extra; }
};

PageDifference Compare(PackedPage const& expected, PackedPage const& actual);
