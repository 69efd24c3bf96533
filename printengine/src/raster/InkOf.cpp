#include "printengine/src/raster/InkOf.h"

#include <algorithm>
#include <bit>

namespace PrintEngine::Drawing {

using Scripting::PixelBox;

PixelBox InkOf(BitRows const& picture) {
    int const words = (picture.width + WordBits - 1) / WordBits;
    PixelBox box{picture.width, picture.height, 0, 0};
    for (int y = 0; y < picture.height; ++y) {
        // Only what would make the box larger is looked at.
        int i = 0;
        while (i < words && picture.Fetch(y, i) == 0) ++i;
        if (i == words) continue;
        box.top = std::min(box.top, y);
        box.bottom = y + 1;
        box.left = std::min(box.left, i * WordBits + std::countl_zero(picture.Fetch(y, i)));
        for (i = words - 1; (i + 1) * WordBits > box.right; --i) {
            Word const word = picture.Fetch(y, i);
            if (word == 0) continue;
            box.right = std::max(box.right, (i + 1) * WordBits - std::countr_zero(word));
            break;
        }
    }
    return box.IsEmpty() ? PixelBox{} : box;
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
