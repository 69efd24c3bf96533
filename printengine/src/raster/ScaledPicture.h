#pragma once

#include <vector>

#include "printengine/src/raster/Raster.h"
#include "printengine/src/raster/Shapes.h"

namespace PrintEngine::Drawing {

/// A part of a picture that is brought to another size by taking the nearest pixel.
class ScaledPicture {
public:
    /// What lies in `part` of the picture at `width` x `height` pixels; the part holds at most Raster::MaxDots.
    ScaledPicture(BitRows const& source, int width, int height, PixelBox const& part);

    BitRows Rows() const;

private:
    int width_;   ///< of the part, pixels
    int height_;  ///< of the part, pixels
    std::vector<Word> words_;
};

}  // namespace PrintEngine::Drawing
