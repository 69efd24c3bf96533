#pragma once

#include "PrintEngine/PartManagement/LabelPart.h"

/// The media of the desk's printer: the settings "LabelWidth" and "LabelHeight", in inches; 4 x 6 without them.
PrintEngine::PartManagement::LabelPart InstalledPart();
