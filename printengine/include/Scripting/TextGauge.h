#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "Scripting/Api.h"
#include "Scripting/GraphicContext.h"

namespace Scripting {

/// A part of a line whose characters run one way.
struct TextPiece {
    std::size_t begin = 0;
    std::size_t end = 0;
    bool isRightToLeft = false;
    friend bool operator==(TextPiece const&, TextPiece const&) = default;
};

/// A font by its name; TrueType if it has a size.
struct SizedFont {
    std::string_view name;
    double pointSize = 0;
    double widthPercent = 100;
};

/// What a drawing target can tell of texts and fonts beyond what GraphicContext asks: of scripts whose characters are
/// not simply set one after another. Not every target can: it is asked for by Of, and everything prints without it.
/// Texts are code points.
class PRINTENGINE_API TextGauge {
public:
    virtual ~TextGauge() = default;

    /// The gauge of a target; null if it has none.
    static TextGauge const* Of(GraphicContext const* target) { return dynamic_cast<TextGauge const*>(target); }

    /// Whether a font file of that name is installed, letter case set aside.
    virtual bool HasFontFile(std::string_view name) const = 0;

    // What is empty stands for what texts are that are read from left to right, letter by letter.

    /// How far each character moves the pen, in dots at magnification 1: that of a cluster its first. Empty if each
    /// has its own advance, whatever stands beside it.
    virtual std::vector<int> FindAdvances(SizedFont const& font, std::u32string_view text) const = 0;
    /// For each character whether a line may end before it though no blank stands there (UAX 14). Empty if lines end at
    /// blanks alone.
    virtual std::vector<bool> FindBreaks(std::u32string_view text) const = 0;
    /// Whether the first letter of a paragraph runs to the left.
    virtual bool RunsRightToLeft(std::u32string_view paragraph) const = 0;
    /// The pieces of a line from left to right (UAX 9), in a paragraph of that direction. Empty if all of it runs to
    /// the right.
    virtual std::vector<TextPiece> FindPieces(std::u32string_view line, bool isRightToLeft) const = 0;
};

}  // namespace Scripting
