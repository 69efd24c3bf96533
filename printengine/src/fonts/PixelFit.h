#pragma once

struct FT_Outline_;

namespace PrintEngine::Fonts {

/// Sets an outline (1/64 pixel, the pen at 0) on whole pixels sideways: the ink starts and ends at a pixel's edge, so
/// that the upright strokes of a font are equally wide, and the last pixel of the advance stays clear, so that no
/// character touches the next one. `advance` is the whole pixels that the pen moves by, `ownAdvance` what the font file
/// says. Ink that is meant to reach its neighbour is left as it is.
void FitToPixels(FT_Outline_& outline, char32_t character, int advance, double ownAdvance);

}  // namespace PrintEngine::Fonts
