#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace PrintEngine::Drawing {

/// Brings dots of the design resolution to pixels of the printer. Dot d covers the pixels from Edge(d) up to, but not
/// including, Edge(d + 1); so what touches in dots touches in pixels.
class PixelScale {
public:
    PixelScale(unsigned printerDpi, unsigned designDpi)
        : factor_(printerDpi && designDpi ? static_cast<double>(printerDpi) / designDpi : 1) {}

    static constexpr int Farthest = 1 << 28;  ///< pixels; far outside every page

    double Factor() const { return factor_; }
    /// The edge between two dots, in pixels, kept within Farthest.
    int Edge(std::int64_t dots) const {
        constexpr double Limit = Farthest;
        if (factor_ == 1) return static_cast<int>(std::clamp(dots, -std::int64_t{Farthest}, std::int64_t{Farthest}));
        return static_cast<int>(std::lround(std::clamp(static_cast<double>(dots) * factor_, -Limit, Limit)));
    }
    /// A thickness: at least a pixel, if it is at least a dot.
    int Length(std::int64_t dots) const { return dots > 0 ? std::max(1, Edge(dots)) : 0; }

private:
    double factor_;
};

}  // namespace PrintEngine::Drawing
