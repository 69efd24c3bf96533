#pragma once

#include <cstddef>
#include <vector>

#include "library/forms/DrawnFormat.h"

/// How far a field shall move, in dots of the stream.
struct FieldShift {
    std::size_t field = 0;
    int right = 0;
    int down = 0;
};

enum class Alignment { Left, Right, Top, Bottom, CenterAcross, CenterDown };

/// Dots of the stream for a way on the page, in pixels.
FieldShift ShiftOf(DrawnFormat const& drawn, std::size_t field, double right, double down);
/// Brings the ink of fields to one line: that of the box around all of them. Fields without ink stay.
std::vector<FieldShift> Align(DrawnFormat const& drawn, std::vector<std::size_t> const& fields, Alignment alignment);
/// Makes the gaps between the ink of fields equal; the outer ones stay.
std::vector<FieldShift> Distribute(DrawnFormat const& drawn, std::vector<std::size_t> fields, bool across);
