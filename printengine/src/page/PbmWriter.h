#pragma once

#include <string>

#include "printengine/src/page/PageLayout.h"

namespace PrintEngine::Pages {

/// What stands before the packed rows of a page in a raw portable bitmap.
std::string PbmHeader(PageLayout const& layout);
/// Makes `file` the raw portable bitmap ("P4") of a page.
void EncodePbm(Drawing::Raster const& raster, PageLayout const& layout, std::string& file);

}  // namespace PrintEngine::Pages
