#pragma once

#include <cmath>
#include <string>

#include "library/DeskSettings.h"

/// The label in a printer, in dots of streams. Who prints a format that does not say its size says it in front of it,
/// as else it would get that of whatever has printed before. A side of 0 is not known.
struct LabelDots {
    unsigned width = 0;
    unsigned length = 0;

    static LabelDots Of(DeskSettings const& desk) {
        auto const dots = [&](double inches) { return static_cast<unsigned>(std::lround(inches * desk.designDpi)); };
        return {dots(desk.widthInches), dots(desk.heightInches)};
    }

    /// What says so in a format.
    std::string Commands() const {
        return (width == 0 ? "" : "^PW" + std::to_string(width)) + (length == 0 ? "" : "^LL" + std::to_string(length));
    }
};
