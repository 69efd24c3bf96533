#pragma once

#include <sstream>
#include <string>
#include <vector>

#include "Scripting/GraphicContext.h"

/// A drawing target that writes each drawing call as a line of text, with the state that counts for it. Every font is a
/// cell of 10 x 20 dots with a descent of 5; TrueType characters are 10 wide and 20 high.
class RecordingGraphicContext : public Scripting::GraphicContext {
public:
    static constexpr int CellWidth = 10;
    static constexpr int CellHeight = 20;
    static constexpr int Descent = 5;

    std::vector<std::string> calls;
    bool needsGlyphAdjustment = false;
    int leading = 0;
    std::string trueTypeFont;            ///< the one font that is no bitmap typeface
    std::vector<std::string> fontFiles;  ///< what GetFontFileNames gives
    Scripting::ScaledFontMetrics lastScaledFont;

    /// All calls so far, one a line, and forgets them.
    std::string Take() {
        std::string text;
        for (auto const& call : calls) text += call + "\n";
        calls.clear();
        return text;
    }

    std::string StartJob(std::string_view, unsigned, std::vector<unsigned> const&, bool,
                         std::vector<PageRangeRfidOperations> const&, std::optional<int>, bool) override {
        return {};
    }
    void EndJob(std::filesystem::path const&) override {}
    void StartLabel() override {}
    void SetLabelOriginX(unsigned x) override { originX_ = static_cast<int>(x); }
    void SetLabelOriginY(unsigned y) override { originY_ = static_cast<int>(y); }
    void SetLabelLength(unsigned) override {}
    void RequestCut(unsigned) override {}
    void SetSuppressBackfeed(bool) override {}
    void EndLabel(Scripting::LabelSettings const&) override {}
    std::string GetLabelText() const override { return {}; }
    bool HasContent() const override { return !calls.empty(); }
    void RenderPage(std::filesystem::path const&, unsigned, bool) override {}
    std::vector<std::uint8_t> GetPageBitmap(unsigned& width, unsigned& height) const override {
        width = height = 0;
        return {};
    }

    std::vector<std::string> GetFontFileNames() const override { return fontFiles; }
    std::string PrepareScaledFont(std::string_view, Scripting::ScaledFontMetrics const& metrics,
                                  std::function<bool(char32_t)> const&,
                                  std::function<unsigned short(std::string_view, unsigned short)> const&) override {
        lastScaledFont = metrics;
        return "cell" + std::to_string(metrics.cellHeight) + "x" + std::to_string(metrics.cellWidth);
    }
    bool IsBitmapTypeface(std::string_view font) const override { return font != trueTypeFont; }
    int GetFontHeight(std::string_view) const override { return CellHeight; }
    int GetFontAscent(std::string_view) const override { return CellHeight - Descent; }
    int GetFontDescent(std::string_view) const override { return Descent; }
    int GetFontLeading(std::string_view) const override { return leading; }
    int GetCharacterWidth(std::string_view, char32_t) const override { return CellWidth; }
    Scripting::SpaceMetrics GetSpaceMetrics(std::string_view) const override { return {CellHeight / 2, CellHeight}; }
    bool NeedsGlyphAdjustment(std::string_view) const override { return needsGlyphAdjustment; }
    void PrepareText(std::string_view, std::string&) override {}
    int MeasureText(std::string_view, std::string_view text, unsigned magnificationX, int spacing,
                    bool) const override {
        int const count = Count(text);
        return count == 0 ? 0 : count * CellWidth * static_cast<int>(magnificationX) + (count - 1) * spacing;
    }
    Scripting::Extent MeasureTrueTypeText(std::string_view, std::string_view text, int, double, double) const override {
        int widest = 0;
        int lines = 0;
        while (!text.empty()) {
            auto const line = text.substr(0, text.find('\n'));
            widest = std::max(widest, Count(line) * CellWidth);
            ++lines;
            text.remove_prefix(std::min(line.size() + 1, text.size()));
        }
        return {widest, lines * CellHeight};
    }

    void SetFieldVariable(bool variable) override { variable_ = variable; }
    void SetReverse(bool reverse) override { reverse_ = reverse; }
    void SetColor(unsigned color) override { color_ = color; }
    void SetRotation(int degrees) override { rotation_ = degrees; }
    void SetTextFlow(Scripting::ScriptTextFlow flow) override { flow_ = flow; }
    void SelectFont(std::string_view font, unsigned magnificationX, unsigned magnificationY) override {
        font_ = std::string(font) + " " + std::to_string(magnificationX) + "x" + std::to_string(magnificationY);
    }

    void DrawText(int x, int y, std::string_view text, Scripting::ScriptTextJustification, int spacing, bool,
                  bool) override {
        std::string more = " " + font_;
        if (spacing != 0) more += " spacing " + std::to_string(spacing);
        if (flow_ != Scripting::ScriptTextFlow::Horizontal) more += " flow " + std::to_string(static_cast<int>(flow_));
        Record("text", x, y, "'" + std::string(text) + "'" + more);
    }
    void DrawTrueTypeText(std::string_view font, int x, int y, int width, int height, std::string_view text,
                          bool vertical, double, double, int, Scripting::ScriptTextJustification,
                          int spacing) override {
        Record("truetype", x, y,
               Box(width, height) + " '" + std::string(text) + "' " + std::string(font) +
                   (vertical ? " vertical" : "") + (spacing != 0 ? " spacing " + std::to_string(spacing) : ""));
    }
    void DrawRect(int x1, int y1, int x2, int y2, unsigned thickness) override {
        Record("rect", x1, y1, "to " + Point(x2, y2) + " thickness " + std::to_string(thickness));
    }
    void DrawBox(int x, int y, unsigned width, unsigned height, unsigned thickness, unsigned radius) override {
        Record("box", x, y,
               Box(width, height) + " border " + std::to_string(thickness) +
                   (radius ? " radius " + std::to_string(radius) : ""));
    }
    void DrawEllipse(int x, int y, unsigned width, unsigned height, unsigned thickness) override {
        Record("ellipse", x, y, Box(width, height) + " border " + std::to_string(thickness));
    }
    void DrawDiagonal(int x, int y, unsigned width, unsigned height, unsigned thickness, bool leansRight) override {
        Record("diagonal", x, y, Box(width, height) + " " + std::to_string(thickness) + (leansRight ? " /" : " \\"));
    }
    void DrawImage(Scripting::Bitmap const& bitmap, int x, int y, unsigned width, unsigned height,
                   bool scaled) override {
        Record("image", x, y,
               Box(width, height) + " from " + Box(bitmap.width, bitmap.height) + (scaled ? " scaled" : " pixels"));
        lastImage.assign(bitmap.rows.begin(), bitmap.rows.end());
    }

    std::vector<std::uint8_t> lastImage;  ///< rows of the image drawn last

private:
    static int Count(std::string_view text) {
        return static_cast<int>(std::count_if(text.begin(), text.end(),
                                              [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
    }
    static std::string Point(int x, int y) { return std::to_string(x) + "," + std::to_string(y); }
    template <typename T>
    static std::string Box(T width, T height) {
        return std::to_string(width) + "x" + std::to_string(height);
    }
    void Record(std::string const& what, int x, int y, std::string const& rest) {
        std::string line = what + " " + Point(x, y) + " " + rest;
        if (originX_ != 0 || originY_ != 0) line += " home " + Point(originX_, originY_);
        if (rotation_ != 0) line += " turned " + std::to_string(rotation_);
        if (reverse_) line += " reverse";
        if (color_ != 0) line += " white";
        if (variable_) line += " variable";
        calls.push_back(line);
    }

    int originX_ = 0;
    int originY_ = 0;
    int rotation_ = 0;
    bool reverse_ = false;
    bool variable_ = false;
    unsigned color_ = 0;
    Scripting::ScriptTextFlow flow_ = Scripting::ScriptTextFlow::Horizontal;
    std::string font_;
};
