#pragma once

#include <array>
#include <cstddef>

#include "Scripting/InkGauge.h"

/// What a scanner sees of a symbol, in pixels of the label as it is drawn.
namespace ZplCore {

/// Sides of a box.
enum class Side { Left, Right, Top, Bottom };
inline constexpr std::array Sides{Side::Left, Side::Right, Side::Top, Side::Bottom};

constexpr bool IsLevel(Side side) { return side == Side::Left || side == Side::Right; }
constexpr Side Opposite(Side side) {
    switch (side) {
        case Side::Left: return Side::Right;
        case Side::Right: return Side::Left;
        case Side::Top: return Side::Bottom;
        case Side::Bottom: break;
    }
    return Side::Top;
}

/// The part of a box of `depth` pixels along its outside.
Scripting::PixelBox Strip(Scripting::PixelBox const& box, Side side, int depth);

/// Mirrors a picture left to right.
void Mirror(Scripting::PixelRows& picture);

/// The narrowest run of black or white pixels of a picture from left to right, or from top to bottom: a module of most
/// symbols, each of which shows one on nearly each line. Looked at are so many of its lines. 0 if there is none.
int LeastRun(Scripting::PixelRows const& picture, bool isLevel, int lines);

/// How a label shows a symbol.
struct Likeness {
    std::size_t pixels = 0;        ///< of the symbol's box that count
    std::size_t wrong = 0;         ///< of them
    int lines = 0;                 ///< across the bars: rows, or columns of a symbol that is turned
    int wrongLines = 0;            ///< of them, those with a wrong pixel
    Scripting::PixelBox wrongBox;  ///< of all wrong pixels
    bool isInverted = false;       ///< it is white on black; counted is what differs from that
};

/// Compares what the label shows with the picture of a symbol; `isLevel` says that a line across its bars is a row.
/// What lies in `besides`, the symbol's own text, counts nowhere.
Likeness Compare(Scripting::InkGauge const& gauge, Scripting::PixelRows const& picture, bool isLevel,
                 Scripting::PixelBox const& besides);

/// Where to look for what stands at the side of a symbol.
struct Look {
    Scripting::PixelBox from;  ///< the box whose side it is
    Side side;
    int depth;                    ///< pixels
    bool isInverted;              ///< the ground is black
    Scripting::PixelBox besides;  ///< counts as ground
};

/// How many pixels from that side on are ground; `depth` if all are.
int GroundAt(Scripting::InkGauge const& gauge, Look const& look);

}  // namespace ZplCore
