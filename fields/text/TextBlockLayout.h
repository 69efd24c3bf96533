#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// Breaking of a block's text into lines. Pure: knows characters and their widths, and no drawing target.
namespace ZplCore::Sketching {

/// Where a word may be broken; drawn as a hyphen at the end of a line and not at all elsewhere.
inline constexpr char32_t SoftHyphen = 0xAD;

struct BlockLine {
    std::size_t paragraph = 0;  ///< where its paragraph begins in the text
    std::u32string text;        ///< without the blanks around it and without soft hyphens
    bool beginsParagraph = true;
    bool endsParagraph = false;  ///< ended by a line feed or by the end of the text
};

struct BlockShape {
    std::int64_t width = 0;    ///< dots
    std::int64_t indent = 0;   ///< dots by which all lines of a paragraph but the first are shorter
    std::int64_t spacing = 0;  ///< dots between characters
    /// Advance of a character in dots.
    std::function<std::int64_t(char32_t)> advance;
    /// Advances of the text's characters in dots where neighbours change them; empty where `advance` counts.
    std::vector<std::int64_t> advances = {};
    /// Whether a line may end before a character, also where no blank stands; empty where it may not.
    std::vector<bool> breaks = {};
};

/// Hands over line after line from the top; stops early when `emit` gives false. A line grows by words and ends at a
/// line feed, a blank, a soft hyphen or a place of `breaks`; a word wider than the block is broken where it leaves the
/// block, with at least one character on each line. Blanks at the start of a line are skipped. Takes time in proportion
/// to the text.
void BreakIntoLines(std::u32string_view text, BlockShape const& shape,
                    std::function<bool(BlockLine const&)> const& emit);

}  // namespace ZplCore::Sketching
