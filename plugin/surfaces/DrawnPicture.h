#pragma once

#include <QtGui/QImage>

#include "library/forms/DrawnFormat.h"

/// The dots of a label, and at most so many pixels high if that is not 0.
QImage PictureOf(DrawnFormat const& drawn, int height = 0);
