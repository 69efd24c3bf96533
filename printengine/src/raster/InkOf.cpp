#include "printengine/src/raster/InkOf.h"

#include <algorithm>
#include <bit>

namespace PrintEngine::Drawing {

using Scripting::PixelBox;

namespace {

int WordsOf(BitRows const& picture) { return (picture.width + WordBits - 1) / WordBits; }

bool HasInk(BitRows const& picture, int y) {
    for (int i = 0; i < WordsOf(picture); ++i) {
        if (picture.Fetch(y, i) != 0) return true;
    }
    return false;
}

}  // namespace

PixelBox InkOf(BitRows const& picture) {
    PixelBox box{picture.width, 0, 0, picture.height};
    while (box.top < box.bottom && !HasInk(picture, box.top)) ++box.top;
    if (box.top == box.bottom) return {};
    while (!HasInk(picture, box.bottom - 1)) --box.bottom;
    // Only what would make the box wider is looked at. A symbol reaches both its sides in one of the first rows.
    for (int y = box.top; y < box.bottom && box.Width() < picture.width; ++y) {
        int i = 0;
        while (i * WordBits < box.left && picture.Fetch(y, i) == 0) ++i;
        if (i * WordBits < box.left)
            box.left = std::min(box.left, i * WordBits + std::countl_zero(picture.Fetch(y, i)));
        for (i = WordsOf(picture) - 1; (i + 1) * WordBits > box.right; --i) {
            Word const word = picture.Fetch(y, i);
            if (word == 0) continue;
            box.right = std::max(box.right, (i + 1) * WordBits - std::countr_zero(word));
            break;
        }
    }
    return box;
}

PixelBox Turned(PixelBox const& box, int width, int height, int degrees) {
    switch (degrees) {
        case 90: return {height - box.bottom, box.left, height - box.top, box.right};
        case 180: return {width - box.right, height - box.bottom, width - box.left, height - box.top};
        case 270: return {box.top, width - box.right, box.bottom, width - box.left};
        default: return box;
    }
}

}  // namespace PrintEngine::Drawing
