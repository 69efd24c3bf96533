#pragma once

#include "fields/text/TextFont.h"

namespace ZplCore::Sketching {

/// The justification factor of a text and its extra shift, in dots.
struct CorrectedTextPlacement {
    ZplPoint justification;
    int extra = 0;
};

/// Corrects the justification factor of a turned text for fonts whose glyphs do not fill their cells, and finds the
/// extra shift of vertical and reverse text.
CorrectedTextPlacement CorrectTextPlacement(FieldPlacement const& placement, TextRun const& run,
                                            TextMeasures const& measures, unsigned magnificationX,
                                            bool needsGlyphAdjustment, ZplPoint justification);

}  // namespace ZplCore::Sketching
