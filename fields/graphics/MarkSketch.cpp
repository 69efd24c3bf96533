#include "fields/graphics/MarkSketch.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <span>
#include <string>

#include "fields/graphics/GraphicData.h"
#include "foundation/Log.h"

namespace ZplCore {

namespace {

/// A part of an ellipse in hundredths of the cell, y downwards, from one angle to another in degrees clockwise from the
/// right; or, without radii, the line from (x, y) to (from, to).
struct Stroke {
    double x, y;
    double radiusX, radiusY;
    double from, to;
};

constexpr Stroke Line(double x1, double y1, double x2, double y2) { return {x1, y1, 0, 0, x2, y2}; }

constexpr Stroke Ring{50, 50, 45, 45, 0, 360};

constexpr Stroke Registered[] = {
    Ring,
    Line(37, 28, 37, 73),
    Line(37, 28, 53, 28),
    {53, 39.5, 11.5, 11.5, -90, 90},
    Line(53, 51, 37, 51),
    Line(50, 51, 64, 73),
};
constexpr Stroke Copyright[] = {Ring, {50, 50, 20, 23, 50, 310}};
constexpr Stroke TradeMark[] = {
    Line(5, 14, 41, 14),  Line(23, 14, 23, 54), Line(50, 54, 50, 14),
    Line(50, 14, 72, 44), Line(72, 44, 94, 14), Line(94, 14, 94, 54),
};
constexpr Stroke Listed[] = {
    Ring,
    Line(26, 26, 26, 48),
    {37, 48, 11, 12, 0, 180},
    Line(48, 48, 48, 26),
    Line(57, 38, 57, 74),
    Line(57, 74, 77, 74),
};
constexpr Stroke Certified[] = {
    {50, 50, 45, 45, 38, 322}, {37, 41, 10, 9, 90, 350}, {37, 59, 10, 9, -90, 170},
    Line(54, 68, 66, 32),      Line(66, 32, 78, 68),     Line(58, 57, 74, 57),
};

std::span<Stroke const> StrokesOf(char letter) {
    switch (letter) {
        case 'A': return Registered;
        case 'B': return Copyright;
        case 'C': return TradeMark;
        case 'D': return Listed;
        case 'E': return Certified;
        default: return {};
    }
}

struct Point {
    double x, y;  ///< dots
};

/// Draws with a round pen into one cell of a picture.
class Pen {
public:
    Pen(MarkSketch& sketch, unsigned left, unsigned width, unsigned height)
        : sketch_(sketch), left_(left), width_(width), height_(height), radius_(PenRadius(width, height)) {}

    void Draw(Stroke const& stroke) {
        if (stroke.radiusX == 0) return DrawLine(At(stroke.x, stroke.y), At(stroke.from, stroke.to));
        // Chords a fraction of the pen long: what they leave out is less than a dot in any cell that is printed.
        double const length = (stroke.radiusX * width_ + stroke.radiusY * height_) / 100 * std::numbers::pi;
        int const chords = 16 + static_cast<int>(length / std::max(radius_ / 2, 1.0));
        auto const on = [&](int chord) {
            double const angle = (stroke.from + (stroke.to - stroke.from) * chord / chords) * std::numbers::pi / 180;
            return At(stroke.x + stroke.radiusX * std::cos(angle), stroke.y + stroke.radiusY * std::sin(angle));
        };
        for (int chord = 0; chord < chords; ++chord) DrawLine(on(chord), on(chord + 1));
    }

private:
    static double PenRadius(unsigned width, unsigned height) {
        constexpr double Share = 0.035;  // of the shorter side
        return std::max(0.5, Share * std::min(width, height));
    }

    Point At(double x, double y) const { return {x * width_ / 100, y * height_ / 100}; }

    /// A line with round ends is convex, so each row of it is one run of dots: from the least to the greatest x of its
    /// two discs and the four edges between them.
    void DrawLine(Point a, Point b) {
        double const length = std::hypot(b.x - a.x, b.y - a.y);
        double const nx = length > 0 ? (a.y - b.y) / length * radius_ : 0;
        double const ny = length > 0 ? (b.x - a.x) / length * radius_ : 0;
        Point const corners[] = {
            {a.x + nx, a.y + ny}, {b.x + nx, b.y + ny}, {b.x - nx, b.y - ny}, {a.x - nx, a.y - ny}};
        auto const first = static_cast<long>(std::floor(std::min(a.y, b.y) - radius_));
        auto const last = static_cast<long>(std::ceil(std::max(a.y, b.y) + radius_));
        for (long row = std::max(first, 0L); row <= std::min<long>(last, height_ - 1L); ++row) {
            double const y = static_cast<double>(row) + 0.5;
            double low = width_;
            double high = 0;
            auto const include = [&](double x) { low = std::min(low, x), high = std::max(high, x); };
            for (Point const& end : {a, b}) {
                double const inside = radius_ * radius_ - (y - end.y) * (y - end.y);
                if (inside >= 0) include(end.x - std::sqrt(inside)), include(end.x + std::sqrt(inside));
            }
            for (int i = 0; i < 4; ++i) {
                Point const& from = corners[i];
                Point const& to = corners[(i + 1) % 4];
                if (from.y != to.y && (from.y <= y) != (to.y <= y))
                    include(from.x + (to.x - from.x) * (y - from.y) / (to.y - from.y));
            }
            if (low <= high) Fill(row, low, high);
        }
    }

    /// Blackens the dots whose centres lie between two places, one at least.
    void Fill(long row, double low, double high) {
        auto const clip = [this](double x) { return static_cast<unsigned>(std::clamp(x, 0.0, double(width_))); };
        unsigned const first = std::min(clip(std::ceil(low - 0.5)), width_ - 1);
        unsigned const end = std::max(clip(std::floor(high + 0.5)), first + 1);
        std::uint8_t* const bytes = sketch_.rows.data() + static_cast<std::size_t>(row) * ((sketch_.width + 7) / 8);
        for (unsigned x = left_ + first; x < left_ + end; ++x)
            bytes[x / 8] |= static_cast<std::uint8_t>(0x80U >> x % 8);
    }

    MarkSketch& sketch_;
    unsigned left_;
    unsigned width_;
    unsigned height_;
    double radius_;  ///< dots
};

}  // namespace

std::optional<MarkSketch> SketchMarks(std::string_view letters, unsigned width, unsigned height) {
    std::string marks(letters);
    std::erase_if(marks, [](char letter) { return StrokesOf(letter).empty(); });
    if (marks.empty() || width == 0 || height == 0) return std::nullopt;
    std::size_t const bytesPerRow = (marks.size() * width + 7) / 8;
    if (bytesPerRow > Picture::MaximumBytesPerRow || bytesPerRow * height > Picture::MaximumBytes) {
        Log::Report(LogTopic::Limit,
                    "marks of " + std::to_string(width) + " x " + std::to_string(height) + " dots are too large");
        return std::nullopt;
    }
    MarkSketch sketch{static_cast<unsigned>(marks.size()) * width, height,
                      std::vector<std::uint8_t>(bytesPerRow * height)};
    for (std::size_t i = 0; i < marks.size(); ++i) {
        Pen pen(sketch, static_cast<unsigned>(i) * width, width, height);
        for (auto const& stroke : StrokesOf(marks[i])) pen.Draw(stroke);
    }
    return sketch;
}

}  // namespace ZplCore
