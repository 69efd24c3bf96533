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

    double Factor() const { return factor_; }
    /// The edge between two dots, in pixels. Kept within 2^28, far outside every page.
    int Edge(std::int64_t dots) const {
        constexpr double Limit = 1 << 28;
        if (factor_ == 1)
            return static_cast<int>(
                std::clamp(dots, -static_cast<std::int64_t>(Limit), static_cast<std::int64_t>(Limit)));
        return static_cast<int>(std::lround(std::clamp(static_cast<double>(dots) * factor_, -Limit, Limit)));
    }
    /// A thickness: at least a pixel, if it is at least a dot.
    int Length(std::int64_t dots) const { return dots > 0 ? std::max(1, Edge(dots)) : 0; }

private:
    double factor_;
};

}  // namespace PrintEngine::Drawing
