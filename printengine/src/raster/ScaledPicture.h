#pragma once

#include <vector>

#include "printengine/src/raster/Raster.h"

namespace PrintEngine::Drawing {

/// A picture brought to another size by taking the nearest pixel.
class ScaledPicture {
public:
    /// `width` and `height` in pixels, at most Raster::MaxDots in all.
    ScaledPicture(BitRows const& source, int width, int height);

    BitRows Rows() const;

private:
    int width_;
    int height_;
    std::vector<Word> words_;
};

}  // namespace PrintEngine::Drawing
