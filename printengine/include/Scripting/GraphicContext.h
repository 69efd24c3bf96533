#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Scripting/RfidOperation.h"
#include "Scripting/ScriptTextJustification.h"

namespace Scripting {

/// A rectangle's extent, in dots.
struct Extent {
    int width = 0;
    int height = 0;
    friend bool operator==(Extent, Extent) = default;
};

/// Line heights for text that runs downwards, in dots at magnification 1.
struct SpaceMetrics {
    int spaceHeight = 0;
    int characterHeight = 0;
    friend bool operator==(SpaceMetrics, SpaceMetrics) = default;
};

/// What a scalable font needs to imitate a requested cell exactly.
struct ScaledFontMetrics {
    /// Typographic size; an em is points / 0.331 dots of the design resolution.
    double pointSize = 0;
    /// Width of the characters relative to their natural width, in per cent.
    double widthPercent = 100;
    /// Advance of a character in dots. Empty: the outline's own advance, scaled by size and width percent.
    std::function<unsigned(char32_t)> expectedWidth;
    std::uint16_t cellHeight = 0;
    std::uint16_t descent = 0;
    std::uint16_t cellWidth = 0;
    std::uint16_t fourthMetric = 0;
};

/// A 1-bit picture: rows packed most significant bit first, (width + 7) / 8 bytes each, a set bit is black.
/// The bytes are borrowed for the time of the call.
struct Bitmap {
    std::span<std::uint8_t const> rows;
    unsigned width = 0;   ///< pixels
    unsigned height = 0;  ///< pixels
};

/// The settings of a label that shape its finished page.
struct LabelSettings {
    unsigned labelLength = 0;     ///< dots; 0 stands for the length of the label part
    unsigned labelWidth = 0;      ///< dots; 0 stands for the width of the label part
    unsigned printMode = 0;       ///< tear-off 0, cutter 1, peel-off 2, applicator 3
    bool upright = true;          ///< false turns the page by 180 degrees
    bool mirror = false;          ///< true mirrors the page left to right
    bool useStoredImage = false;  ///< true starts the labels that follow this page from its picture
    unsigned formatScale = 1;     ///< every drawn dot becomes this many dots in both directions
    int adjustY = 0;              ///< dots by which the finished page moves down; negative moves it up
    friend bool operator==(LabelSettings const&, LabelSettings const&) = default;
};

/// The target that labels are drawn on. Positions and sizes are dots of the design resolution unless said otherwise;
/// x grows to the right and y downwards from the label origin in force. Ink outside the page is clipped.
///
/// A drawing call uses the state set last by SetRotation, SetReverse, SetColor, SetTextFlow and SelectFont. No call
/// throws for what a stream can contain; only memory that cannot be had leaves as std::bad_alloc or std::length_error.
class GraphicContext {
public:
    virtual ~GraphicContext() = default;

    // --- Job ---------------------------------------------------------------------------------------------------

    /// Makes the job folder and gives its path; an empty path if it cannot be made. `pauseIndices` are page counts
    /// after which printing pauses. `density` is the print darkness, if the label sets one.
    virtual std::string StartJob(std::string_view jobName, unsigned totalPages,
                                 std::vector<unsigned> const& pauseIndices, bool hasTagOperations,
                                 std::vector<PageRangeRfidOperations> const& tagOperations, std::optional<int> density,
                                 bool pauseAfterJob) = 0;
    /// Marks the job in `jobPath` as completely transferred.
    virtual void EndJob(std::filesystem::path const& jobPath) = 0;

    // --- Label -------------------------------------------------------------------------------------------------

    /// Starts an empty page (or one that begins with the stored picture), upright and unreversed, at origin (0, 0).
    virtual void StartLabel() = 0;
    /// Pictures that labels keep for those after them count among labels of one generation. Said before StartLabel.
    /// A target that keeps none need not know.
    virtual void SetStoredImageGeneration(unsigned) {}
    /// The label home: added to every position of the drawing calls that follow.
    virtual void SetLabelOriginX(unsigned x) = 0;
    virtual void SetLabelOriginY(unsigned y) = 0;
    /// Length of the page in dots, 0 for that of the label part.
    virtual void SetLabelLength(unsigned length) = 0;
    /// Asks for `count` cuts behind the page under way.
    virtual void RequestCut(unsigned count) = 0;
    /// Whether the page under way is printed without drawing the media back first.
    virtual void SetSuppressBackfeed(bool suppress) = 0;
    /// Ends the drawing of the page and fixes its shape.
    virtual void EndLabel(LabelSettings const& settings) = 0;
    /// What the label says, for naming its job; may be empty.
    virtual std::string GetLabelText() const = 0;
    /// Whether anything was drawn since StartLabel.
    virtual bool HasContent() const = 0;
    /// Writes the page as the file `jobPath`/`pageNumber` (decimal, from 0).
    virtual void RenderPage(std::filesystem::path const& jobPath, unsigned pageNumber, bool isLastPage) = 0;
    /// The page as drawn, in pixels, unturned and unmirrored: what an image save command stores.
    virtual std::vector<std::uint8_t> GetPageBitmap(unsigned& width, unsigned& height) const = 0;

    // --- Fonts -------------------------------------------------------------------------------------------------

    /// File names of the TrueType fonts that a label can name.
    virtual std::vector<std::string> GetFontFileNames() const = 0;
    /// Prepares the scalable font `name` at a size; the result names the prepared font in the calls below. The two
    /// functions tell which characters the measured tables hold, and how wide a string is at a height, in dots.
    virtual std::string PrepareScaledFont(
        std::string_view name, ScaledFontMetrics const& metrics, std::function<bool(char32_t)> const& isSupported,
        std::function<unsigned short(std::string_view, unsigned short)> const& stringLength) = 0;
    /// True when the font draws as a bitmap font (prepared fonts do too), false for TrueType.
    virtual bool IsBitmapTypeface(std::string_view font) const = 0;
    /// Metrics at magnification 1. Height is ascent + descent; the bottom row of a capital is row ascent - 1.
    virtual int GetFontHeight(std::string_view font) const = 0;
    virtual int GetFontAscent(std::string_view font) const = 0;
    virtual int GetFontDescent(std::string_view font) const = 0;
    virtual int GetFontLeading(std::string_view font) const = 0;
    /// The advance of one character at magnification 1.
    virtual int GetCharacterWidth(std::string_view font, char32_t character) const = 0;
    virtual SpaceMetrics GetSpaceMetrics(std::string_view font) const = 0;
    /// True for fonts whose rotated placement needs corrections of its own.
    virtual bool NeedsGlyphAdjustment(std::string_view font) const = 0;
    /// Called once before measuring a text (UTF-8); may change it.
    virtual void PrepareText(std::string_view font, std::string& text) = 0;
    // The printer's own library has two places more than this one needs. They are kept, so that a call means the same
    // to both: `flag` is true and `zero` is 0 in every call, and the desk's engine looks at neither.

    /// Sum of the advances times `magnificationX`, plus `spacing` between characters. Always measured horizontally.
    virtual int MeasureText(std::string_view font, std::string_view text, unsigned magnificationX, int spacing,
                            bool flag) const = 0;
    /// A TrueType text's box, broken at line feeds.
    virtual Extent MeasureTrueTypeText(std::string_view font, std::string_view text, int zero, double pointSize,
                                       double widthPercent) const = 0;

    // --- State -------------------------------------------------------------------------------------------------

    /// Whether the field under way belongs to the variable part of a label, which a stored image does not hold.
    virtual void SetFieldVariable(bool variable) = 0;
    /// True: ink is exclusive-ored with what lies beneath.
    virtual void SetReverse(bool reverse) = 0;
    /// 0 draws black, 1 draws white.
    virtual void SetColor(unsigned color) = 0;
    /// Clockwise turn of what follows: 0, 90, 180 or 270 degrees.
    virtual void SetRotation(int degrees) = 0;
    virtual void SetTextFlow(ScriptTextFlow flow) = 0;
    virtual void SelectFont(std::string_view font, unsigned magnificationX, unsigned magnificationY) = 0;

    // --- Drawing -----------------------------------------------------------------------------------------------

    /// Draws with the selected font; (x, y) is the upper left corner of the turned box of the text.
    virtual void DrawText(int x, int y, std::string_view text, ScriptTextJustification justification, int spacing,
                          bool cachedFont, bool baselineBottom) = 0;
    /// Turns the unrotated width x height box at (x, y) about its centre and draws the text in it.
    virtual void DrawTrueTypeText(std::string_view font, int x, int y, int width, int height, std::string_view text,
                                  bool vertical, double pointSize, double widthPercent, int zero,
                                  ScriptTextJustification blockJustification, int spacing) = 0;
    /// An outline whose lines are centred on the corners' coordinates.
    virtual void DrawRect(int x1, int y1, int x2, int y2, unsigned thickness) = 0;
    /// A box whose border of `thickness` grows inwards, with corners rounded by `radius` outside.
    virtual void DrawBox(int x, int y, unsigned width, unsigned height, unsigned thickness, unsigned radius) = 0;
    /// An ellipse that fills its box, with a border that grows inwards.
    virtual void DrawEllipse(int x, int y, unsigned width, unsigned height, unsigned thickness) = 0;
    /// A line between two corners of its box, `thickness` dots wide measured along the horizontal. Leaning right it
    /// runs from the bottom left to the top right corner.
    virtual void DrawDiagonal(int x, int y, unsigned width, unsigned height, unsigned thickness, bool leansRight) = 0;
    /// Draws the set bits of a picture, turned by the rotation in force; (x, y) is the upper left corner of the turned
    /// picture. `width` and `height` are the unturned logical size in dots. With `scaled` the picture is brought to
    /// that size, whatever its own; without, its pixels are the printer's.
    virtual void DrawImage(Bitmap const& bitmap, int x, int y, unsigned width, unsigned height, bool scaled) = 0;
};

}  // namespace Scripting
