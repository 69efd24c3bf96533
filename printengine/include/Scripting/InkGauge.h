#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>
#include <vector>

#include "Scripting/Api.h"
#include "Scripting/GraphicContext.h"

namespace Scripting {

/// A rectangle in pixels, half open.
struct PixelBox {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    int Width() const { return right - left; }
    int Height() const { return bottom - top; }
    bool IsEmpty() const { return left >= right || top >= bottom; }

    /// What lies in both.
    PixelBox Within(PixelBox const& other) const {
        return {std::max(left, other.left), std::max(top, other.top), std::min(right, other.right),
                std::min(bottom, other.bottom)};
    }
    /// Grows until it holds the other one too.
    void Add(PixelBox const& other) {
        if (other.IsEmpty()) return;
        *this = IsEmpty() ? other
                          : PixelBox{std::min(left, other.left), std::min(top, other.top), std::max(right, other.right),
                                     std::max(bottom, other.bottom)};
    }
    friend bool operator==(PixelBox const&, PixelBox const&) = default;
};

/// A line between two corners of pixels, level or upright.
struct PixelLine {
    int x1 = 0;
    int y1 = 0;
    int x2 = 0;
    int y2 = 0;

    friend bool operator==(PixelLine const&, PixelLine const&) = default;
};

/// Where a field has ink, by the calls that drew it; an empty box where none did. White ink is none.
struct FieldInk {
    PixelBox text;
    PixelBox image;  ///< symbols of barcodes, and pictures
    PixelBox shape;  ///< boxes, lines, ellipses
    PixelBox white;  ///< where it is white whatever lies beneath
    /// What its first line of text stands on, from the first character to the end of the last.
    std::optional<PixelLine> baseline;

    PixelBox All() const {
        PixelBox all = text;
        all.Add(image);
        all.Add(shape);
        return all;
    }
};

/// The pixels of a box: rows of whole words from the top, 64 pixels each, the leftmost in the most significant bit. A
/// set bit is black, those right of the box are 0. Rows that are like the one above them may be one with it.
struct PixelRows {
    PixelBox box;
    std::vector<std::uint64_t> words;
    std::vector<std::uint32_t> starts;  ///< where each row begins in them

    std::size_t WordsPerRow() const { return (static_cast<std::size_t>(std::max(box.Width(), 0)) + 63) / 64; }
    std::uint64_t const* Row(int index) const { return words.data() + starts[static_cast<std::size_t>(index)]; }
    bool IsOneWithAbove(int index) const {
        auto const row = static_cast<std::size_t>(index);
        return row > 0 && starts[row] == starts[row - 1];
    }
};

/// What a drawing target can tell of its ink beyond what it is told to draw. Not every target can: it is asked for by
/// Of, and everything prints without it.
class PRINTENGINE_API InkGauge {
public:
    virtual ~InkGauge() = default;

    /// The gauge of a target; null if it has none.
    static InkGauge* Of(GraphicContext* target) { return dynamic_cast<InkGauge*>(target); }

    /// Ink is counted from here on, also where no page shows it. Between fields none is, which costs nothing.
    virtual void StartField() = 0;
    /// The ink since StartField, in pixels from the corner of the label as it is drawn; then counts no more.
    virtual FieldInk EndField() = 0;
    /// From here on the pictures that the field under way draws unscaled are kept, up to a limit of memory for a label.
    virtual void KeepPictures() = 0;
    /// Those of the field that has ended last: each on a white ground, turned as it was drawn, as far as it has ink.
    virtual std::vector<PixelRows> TakePictures() = 0;
    /// What the label shows in a box as it is drawn, before its page is shaped; white where nothing can be drawn. No
    /// two rows are one.
    virtual PixelRows InkIn(PixelBox const& drawn) const = 0;
    /// Whether the label shows nothing else than that in its box: what InkIn would tell, told without a copy.
    virtual bool Shows(PixelRows const& drawn) const = 0;
    /// The same of a box that is white.
    virtual bool IsWhite(PixelBox const& drawn) const = 0;

    // Valid once GraphicContext::EndLabel has fixed the shape of the page.

    /// Where a box of drawn ink stands on the finished page: turned, mirrored, enlarged and moved as the page is.
    virtual PixelBox OnPage(PixelBox const& drawn) const = 0;
    /// The same for a line; it keeps its direction, as seen on the page.
    PixelLine LineOnPage(PixelLine const& drawn) const {
        PixelBox const from = OnPage(PixelBox{drawn.x1, drawn.y1, drawn.x1, drawn.y1});
        PixelBox const to = OnPage(PixelBox{drawn.x2, drawn.y2, drawn.x2, drawn.y2});
        return {from.left, from.top, to.left, to.top};
    }
    /// The part of the finished page that can show ink.
    virtual PixelBox PrintArea() const = 0;
    /// How many pixels of the finished page a dot of the design resolution takes.
    virtual double PixelsPerDot() const = 0;
    /// Whether the finished page shows no ink at all.
    virtual bool IsPageBlank() const = 0;
};

}  // namespace Scripting
