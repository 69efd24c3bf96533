#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "printengine/src/fonts/Typeface.h"

namespace PrintEngine::Text {

/// A picture at its place in a line. Dots at magnification 1.
struct LineGlyph {
    char32_t picture = 0;
    int advance = 0;
    float x = 0;                  ///< moves the picture to the right of the pen
    float y = 0;                  ///< moves it up
    std::uint32_t character = 0;  ///< place of the first character of its cluster in the text
};

/// A text as it is drawn from left to right.
struct TextLine {
    std::vector<LineGlyph> glyphs;
    std::uint32_t clusters = 0;  ///< characters with what sits on them; spacing goes between them
    std::int64_t advance = 0;
};

/// Whether the glyph at `index` is the first of its cluster, in the order of drawing.
inline bool BeginsCluster(std::vector<LineGlyph> const& glyphs, std::size_t index) {
    return index == 0 || glyphs[index].character != glyphs[index - 1].character;
}

/// Sets texts whose characters are not drawn one after another: shaped, in the order of bidirectional text, and each
/// word by one face. Remembers the last ones, since a text is measured before it is drawn.
class TextLayout {
public:
    /// How the clusters of a line follow each other.
    enum class Order : std::uint8_t {
        Visual,   ///< as they are read, turned where a script runs to the left
        Logical,  ///< as they are stored, for text that is set cluster by cluster
    };

    /// `text` is UTF-8. Valid until the next call.
    TextLine const& Of(Fonts::Typeface& typeface, std::string_view text, Order order);

    /// Sets a text of code points, and does not remember it.
    static TextLine Set(Fonts::Typeface& typeface, std::u32string text, Order order);

private:
    static constexpr std::size_t MostBytes = std::size_t{2} << 20;

    std::unordered_map<std::string, TextLine> lines_;
    std::size_t bytes_ = 0;  ///< about what the lines take
};

}  // namespace PrintEngine::Text
