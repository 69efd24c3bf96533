#pragma once

#include <string>

#include "Scripting/FinishedPage.h"
#include "printengine/src/page/PageLayout.h"

namespace PrintEngine::Pages {

/// What stands before the packed rows of a page in a raw portable bitmap.
std::string PbmHeader(PageLayout const& layout);
/// Makes `file` the raw portable bitmap ("P4") of a page.
void EncodePbm(Drawing::Raster const& raster, PageLayout const& layout, std::string& file);
/// Hands out the same in pieces of 64 KiB, which are made in `room` one after the other.
void EncodePbm(Drawing::Raster const& raster, PageLayout const& layout, std::string& room,
               Scripting::TakePiece const& take);

}  // namespace PrintEngine::Pages
