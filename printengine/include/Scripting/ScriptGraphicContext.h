#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "PrintEngine/PartManagement/LabelPart.h"
#include "PrintEngine/Printing/TrueTypeCacheCreator.h"
#include "Scripting/Api.h"
#include "Scripting/FinishedPage.h"
#include "Scripting/GraphicContext.h"
#include "Scripting/InkGauge.h"
#include "Scripting/PageNotes.h"
#include "Scripting/PrinterContextInterface.h"
#include "Scripting/TextGauge.h"

namespace Scripting {

/// The drawing target of the desk: draws at once into a 1-bit raster of the printer's resolution and writes each page
/// as a 1-bit greyscale PNG (ISO/IEC 15948) with its resolution in pHYs, dark dots black. A page is written under a
/// temporary name in the job folder and renamed, so that no reader ever sees half of it.
///
/// The raster covers the print width and label length where these are given, else the label part. It is at most 64 Mi
/// dots; a longer page is refused with a warning and drawn as far as that.
class PRINTENGINE_API ScriptGraphicContext : public GraphicContext,
                                             public InkGauge,
                                             public PageKeeper,
                                             public PageNotes,
                                             public TextGauge {
public:
    /// Tells where the targets that are made with `fonts` look for font files. Opens none: a font is opened when it is
    /// first used.
    static void InitializeFontManager(PrintEngine::Printing::TrueTypeCacheCreator& fonts,
                                      std::filesystem::path const& systemFontsFolder);

    ScriptGraphicContext(PrintEngine::Printing::TrueTypeCacheCreator& fonts,
                         std::shared_ptr<PrinterContextInterface> printerContext);
    ~ScriptGraphicContext() override;

    /// The folder below which each job gets its own.
    void SetJobsFolder(std::filesystem::path folder);
    /// Forgets the state of the job before.
    void StartNewJob();
    void LoadPart(PrintEngine::PartManagement::LabelPart const& part);
    /// Sizes the raster for the part.
    void SetupForPrintJob();

    /// Why the last call that writes a file failed; empty when it did not.
    std::string const& FileError() const;

    std::string StartJob(std::string_view jobName, unsigned totalPages, std::vector<unsigned> const& pauseIndices,
                         bool hasTagOperations, std::vector<PageRangeRfidOperations> const& tagOperations,
                         std::optional<int> density, bool pauseAfterJob) override;
    void EndJob(std::filesystem::path const& jobPath) override;
    void StartLabel() override;
    void SetStoredImageGeneration(unsigned generation) override;
    void SetLabelOriginX(unsigned x) override;
    void SetLabelOriginY(unsigned y) override;
    void SetLabelLength(unsigned length) override;
    void RequestCut(unsigned count) override;
    void SetSuppressBackfeed(bool suppress) override;
    void EndLabel(LabelSettings const& settings) override;
    std::string GetLabelText() const override;
    bool HasContent() const override;
    void RenderPage(std::filesystem::path const& jobPath, unsigned pageNumber, bool isLastPage) override;
    std::vector<std::uint8_t> GetPageBitmap(unsigned& width, unsigned& height) const override;
    std::vector<std::string> GetFontFileNames() const override;
    std::string PrepareScaledFont(
        std::string_view name, ScaledFontMetrics const& metrics, std::function<bool(char32_t)> const& isSupported,
        std::function<unsigned short(std::string_view, unsigned short)> const& stringLength) override;
    bool IsBitmapTypeface(std::string_view font) const override;
    int GetFontHeight(std::string_view font) const override;
    int GetFontAscent(std::string_view font) const override;
    int GetFontDescent(std::string_view font) const override;
    int GetFontLeading(std::string_view font) const override;
    int GetCharacterWidth(std::string_view font, char32_t character) const override;
    SpaceMetrics GetSpaceMetrics(std::string_view font) const override;
    bool NeedsGlyphAdjustment(std::string_view font) const override;
    void PrepareText(std::string_view font, std::string& text) override;
    int MeasureText(std::string_view font, std::string_view text, unsigned magnificationX, int spacing,
                    bool flag) const override;
    Extent MeasureTrueTypeText(std::string_view font, std::string_view text, int zero, double pointSize,
                               double widthPercent) const override;
    void SetFieldVariable(bool variable) override;
    void SetReverse(bool reverse) override;
    void SetColor(unsigned color) override;
    void SetRotation(int degrees) override;
    void SetTextFlow(ScriptTextFlow flow) override;
    void SelectFont(std::string_view font, unsigned magnificationX, unsigned magnificationY) override;
    void DrawText(int x, int y, std::string_view text, ScriptTextJustification justification, int spacing,
                  bool cachedFont, bool baselineBottom) override;
    void DrawTrueTypeText(std::string_view font, int x, int y, int width, int height, std::string_view text,
                          bool vertical, double pointSize, double widthPercent, int zero,
                          ScriptTextJustification blockJustification, int spacing) override;
    void DrawRect(int x1, int y1, int x2, int y2, unsigned thickness) override;
    void DrawBox(int x, int y, unsigned width, unsigned height, unsigned thickness, unsigned radius) override;
    void DrawEllipse(int x, int y, unsigned width, unsigned height, unsigned thickness) override;
    void DrawDiagonal(int x, int y, unsigned width, unsigned height, unsigned thickness, bool leansRight) override;
    void DrawImage(Bitmap const& bitmap, int x, int y, unsigned width, unsigned height, bool scaled) override;
    void StartField() override;
    FieldInk EndField() override;
    void KeepPictures() override;
    std::vector<PixelRows> TakePictures() override;
    PixelRows InkIn(PixelBox const& drawn) const override;
    bool Shows(PixelRows const& drawn) const override;
    bool IsWhite(PixelBox const& drawn) const override;
    PixelBox OnPage(PixelBox const& drawn) const override;
    PixelBox PrintArea() const override;
    double PixelsPerDot() const override;
    bool IsPageBlank() const override;
    bool HasFontFile(std::string_view name) const override;
    std::vector<int> FindAdvances(SizedFont const& font, std::u32string_view text) const override;
    std::vector<bool> FindBreaks(std::u32string_view text) const override;
    bool RunsRightToLeft(std::u32string_view paragraph) const override;
    std::vector<TextPiece> FindPieces(std::u32string_view line, bool isRightToLeft) const override;
    void KeepNotes() override;
    bool KeepsNotes() const override;
    void SetPageNote(std::string note) override;
    void KeepPages() override;
    std::uint64_t DrawnLabel() const override;
    std::unique_ptr<FinishedPage> TakePage() override;
    std::unique_ptr<HandedLabel> HandOut(std::unique_ptr<HandedLabel> room) override;
    void TakeOver(HandedLabel& label) override;
    Extent PageSize() const override;
    unsigned PageDpi() const override;
    std::string_view PngFile() override;
    std::string_view DeflatedRows() override;
    std::string_view PackedRows() override;
    std::string_view PbmFile() override;
    void PbmPieces(TakePiece const& take) override;

private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace Scripting
