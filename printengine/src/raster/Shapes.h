#pragma once

#include "Scripting/InkGauge.h"
#include "printengine/src/raster/Raster.h"

namespace PrintEngine::Drawing {

using Scripting::PixelBox;

// Each shape touches a pixel at most once, so that inverting ink shows the same outline as black ink.

/// The area between two boxes, the inner of which lies in the outer one. An empty inner box leaves none out.
void FillFrame(Raster& raster, PixelBox outer, PixelBox inner, Ink ink);
/// A frame of `thickness` that grows inwards. Its corners are circles of `radius` outside and of radius - thickness
/// inside; a radius above half the shorter side is taken as that.
void FillRoundedFrame(Raster& raster, PixelBox box, int thickness, int radius, Ink ink);
/// An ellipse that fills its box; its border of `thickness` grows inwards.
void FillEllipse(Raster& raster, PixelBox box, int thickness, Ink ink);
/// A line between two corners of its box, `thickness` wide along the horizontal and connected also where it is flat.
void FillDiagonal(Raster& raster, PixelBox box, int thickness, bool leansRight, Ink ink);

}  // namespace PrintEngine::Drawing
