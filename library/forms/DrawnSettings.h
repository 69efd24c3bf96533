#pragma once

#include <optional>
#include <string_view>

#include "library/forms/DrawnFormat.h"
#include "library/forms/FieldTraits.h"

/// The number that a setting of a field has, as it is in force; nothing without one.
std::optional<double> SettingOf(DrawnField const& field, std::string_view name);
std::optional<unsigned> SizeOf(DrawnField const& field, std::string_view name);
/// Where the data of a barcode stand for people to read.
std::optional<FieldTraits::TextLine> TextLineOf(DrawnField const& field);
