#pragma once

namespace PrintEngine::PartManagement {

/// The media that is loaded: the size of one label, in inches, or the width of a roll without labels.
class LabelPart {
public:
    constexpr LabelPart() = default;
    constexpr LabelPart(double width, double height, bool continuous = false)
        : width_(width), height_(height), continuous_(continuous) {}

    constexpr double GetWidth() const { return width_; }
    constexpr double GetHeight() const { return height_; }
    /// True for a roll without gaps or marks, on which the format says how long a label is.
    constexpr bool GetIsContinuous() const { return continuous_; }
    constexpr void SetHeight(double height) { height_ = height; }

private:
    double width_ = 4;
    double height_ = 6;
    bool continuous_ = false;
};

}  // namespace PrintEngine::PartManagement
