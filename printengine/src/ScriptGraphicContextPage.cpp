#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

#include "PrintEngine/Printing/JobFileSystemStrings.h"
#include "PrintEngine/Printing/JobMetaData.h"
#include "PrintEngine/Printing/PrintProcessHandler.h"
#include "foundation/Files.h"
#include "printengine/src/ScriptGraphicContextState.h"
#include "printengine/src/page/JobFolder.h"
#include "printengine/src/page/KeptPage.h"
#include "printengine/src/page/PbmWriter.h"
#include "printengine/src/page/PngWriter.h"

namespace Scripting {

using PrintEngine::Drawing::Ink;
using PrintEngine::Drawing::Raster;
using PrintEngine::Pages::PageLayout;
using PrintEngine::Printing::JobMetaData;
using PrintEngine::Printing::PrintProcessHandler;

namespace {

/// Why a file cannot be written in the folder of a job that could not be made.
std::string NoFolderMessage() { return std::make_error_code(std::errc::no_such_file_or_directory).message(); }

/// The size of a page as far as it can be drawn.
Extent Drawable(Extent page) {
    Extent result;
    result.width = std::min(page.width, Raster::MaxWidth);
    result.height =
        static_cast<int>(std::min<std::int64_t>({page.height, Raster::MaxHeight, Raster::MaxDots / result.width}));
    return result;
}

/// The page of a label with its shape.
struct HandedPage final : HandedLabel {
    std::size_t Bytes() const override { return sizeof *this + raster.Bytes(); }

    Raster raster;
    PageLayout layout;
    Extent drawnSize;
};

std::string Text(Extent page) { return std::to_string(page.width) + " x " + std::to_string(page.height); }

}  // namespace

Extent ScriptGraphicContext::State::PixelsOf(unsigned width, unsigned length) const {
    double const dpi = printerContext->PrinterDpi().Value();
    auto const pixels = [&](unsigned dots, double inches) {
        double const exact = dots ? dots * Scale().Factor() : inches * dpi;
        return static_cast<int>(std::lround(std::clamp(exact, 1.0, double{1 << 28})));
    };
    return {pixels(width, part.GetWidth()), pixels(length, part.GetHeight())};
}

void ScriptGraphicContext::SetupForPrintJob() {
    Extent const page = Drawable(state_->PixelsOf(0, 0));
    state_->layout = {.width = page.width, .height = page.height};
    state_->drawnSize = page;
    StartLabel();
}

std::string ScriptGraphicContext::StartJob(std::string_view jobName, unsigned totalPages,
                                           std::vector<unsigned> const& pauseIndices, bool flag,
                                           std::vector<PageRangeRfidOperations> const& tagOperations,
                                           std::optional<int> density, bool pauseAfterJob) {
    std::error_code error;
    auto path = PrintEngine::Pages::MakeJobFolder(state_->jobsFolder, jobName, error);
    auto const now = std::chrono::system_clock::now().time_since_epoch();
    JobMetaData const metaData{
        .jobName = std::string(jobName),
        .totalPages = totalPages,
        .pauseIndices = pauseIndices,
        .flag = flag,
        .density = density,
        .pauseAfterJob = pauseAfterJob,
        .serial = static_cast<std::uint64_t>(std::chrono::duration_cast<std::chrono::nanoseconds>(now).count()),
        .tagOperations = tagOperations};
    if (!error) error = metaData.Write(path);
    // A folder that nobody can make anything of is worse than none.
    if (error && !path.empty()) {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
        path.clear();
    }
    state_->fileError = error ? error.message() : std::string();
    if (error) {
        state_->fonts.Warn("no folder can be made for job \"" + std::string(jobName) + "\": " + state_->fileError);
    }
    return path.string();
}

void ScriptGraphicContext::EndJob(std::filesystem::path const& jobPath) {
    if (jobPath.empty()) {
        state_->fileError = NoFolderMessage();
        return;
    }
    // The queue ends a job anew with every page that prints near its end.
    auto const error = MakeMark(jobPath / JobFileSystemStrings::TransferDoneFileName,
                                jobPath / JobFileSystemStrings::MetaDataFileName);
    state_->fileError = error ? error.message() : std::string();
}

void ScriptGraphicContext::SetStoredImageGeneration(unsigned generation) {
    if (state_->storedGeneration != generation) state_->storedPicture.reset();
    state_->storedGeneration = generation;
}

void ScriptGraphicContext::StartLabel() {
    State& state = *state_;
    state.raster.Reset(state.layout.width, state.layout.height);
    if (state.storedPicture) state.raster.Draw(*state.storedPicture, Ink::Black);
    state.originX = state.originY = 0;
    state.hasContent = false;
    state.spent = 0;
    state.pictureWords = 0;
    state.labelText.clear();
    state.note.clear();
    state.degrees = 0;
    state.reverse = false;
    state.color = 0;
    state.textStyle = {};
    state.keepsPicture = false;
    state.constantFields.reset();
    state.variable = false;
    ++state.labels;
    state.holdsLabel = false;
}

// The label home is unsigned where it is stored, and negative where a stream asked for that.
void ScriptGraphicContext::SetLabelOriginX(unsigned x) { state_->originX = static_cast<int>(x); }

void ScriptGraphicContext::SetLabelOriginY(unsigned y) { state_->originY = static_cast<int>(y); }

void ScriptGraphicContext::SetLabelLength(unsigned length) {
    state_->layout.height = Drawable(state_->PixelsOf(0, length)).height;
}

void ScriptGraphicContext::RequestCut(unsigned) {
    // The desk has no cutter.
}

void ScriptGraphicContext::SetSuppressBackfeed(bool) {
    // The desk moves no media.
}

void ScriptGraphicContext::EndLabel(LabelSettings const& settings) {
    State& state = *state_;
    state.layout.enlargement = static_cast<int>(std::clamp(settings.formatScale, 1u, 64u));
    // A size told in dots grows with them; the label part is as large as it is.
    auto const enlarged = [&](unsigned dots) { return dots * static_cast<unsigned>(state.layout.enlargement); };
    Extent const wanted = state.PixelsOf(enlarged(settings.labelWidth), enlarged(settings.labelLength));
    Extent const page = Drawable(wanted);
    state.drawnSize = Drawable(state.PixelsOf(settings.labelWidth, settings.labelLength));
    if (page != wanted)
        state.fonts.Warn("a page of " + Text(wanted) + " pixels is too large, only " + Text(page) + " are drawn");
    state.layout.width = page.width;
    state.layout.height = page.height;
    state.layout.turned = !settings.upright;
    state.layout.mirrored = settings.mirror;
    state.layout.shiftDown = state.Scale().Edge(settings.adjustY);
    state.keepsPicture = settings.useStoredImage;
    state.holdsLabel = true;
}

std::string ScriptGraphicContext::GetLabelText() const { return state_->labelText; }

bool ScriptGraphicContext::HasContent() const { return state_->hasContent; }

void ScriptGraphicContext::RenderPage(std::filesystem::path const& jobPath, unsigned pageNumber, bool) {
    State& state = *state_;
    state.holdsLabel = false;
    state.pageSize = {state.layout.width, state.layout.height};
    // A label is also drawn to see what it holds, without becoming a page. Only a page is there to be drawn upon.
    if (state.keepsPicture) {
        auto picture = std::make_unique<Raster>();
        picture->Reset(state.drawnSize.width, state.drawnSize.height);
        picture->Draw(state.constantFields ? *state.constantFields : state.raster, Ink::Black);
        state.storedPicture = std::move(picture);
    } else {
        state.storedPicture.reset();
    }
    if (state.keepsPages) {
        state.fileError.clear();
    } else if (jobPath.empty()) {
        state.fileError = NoFolderMessage();
    } else {
        std::error_code const error = WriteFileAtomically(jobPath / std::to_string(pageNumber), PngFile());
        state.fileError = error ? error.message() : std::string();
    }
    if (!state.fileError.empty()) {
        // A full disk, say, keeps all further pages of a job away, and is told once.
        std::string const reason = " of job " + jobPath.filename().string() + " cannot be written: " + state.fileError;
        if (std::exchange(state.toldReason, reason) != reason)
            state.fonts.Warn("page " + std::to_string(pageNumber + 1) + reason);
        return;
    }
    state.toldReason.clear();
    PrintProcessHandler::GetInstance()->NotePage(pageNumber);
}

std::vector<std::uint8_t> ScriptGraphicContext::GetPageBitmap(unsigned& width, unsigned& height) const {
    PageLayout plain;
    plain.width = state_->drawnSize.width;
    plain.height = state_->drawnSize.height;
    width = static_cast<unsigned>(plain.width);
    height = static_cast<unsigned>(plain.height);
    std::vector<std::uint8_t> rows(PrintEngine::Pages::PackedRowBytes(plain.width) * height);
    PrintEngine::Pages::PackPage(state_->raster, plain, rows.data());
    return rows;
}

void ScriptGraphicContext::KeepNotes() { state_->keepsNotes = true; }

bool ScriptGraphicContext::KeepsNotes() const { return state_->keepsNotes; }

void ScriptGraphicContext::SetPageNote(std::string note) { state_->note = std::move(note); }

void ScriptGraphicContext::KeepPages() { state_->keepsPages = true; }

std::uint64_t ScriptGraphicContext::DrawnLabel() const { return state_->holdsLabel ? state_->labels : 0; }

std::unique_ptr<FinishedPage> ScriptGraphicContext::TakePage() {
    return std::make_unique<PrintEngine::Pages::KeptPage>(state_->raster, state_->layout, PageDpi());
}

std::unique_ptr<HandedLabel> ScriptGraphicContext::HandOut(std::unique_ptr<HandedLabel> room) {
    State& state = *state_;
    if (!state.holdsLabel || state.keepsPicture) return nullptr;
    if (!room) room = std::make_unique<HandedPage>();
    auto& page = static_cast<HandedPage&>(*room);
    page.raster.Swap(state.raster);
    page.layout = state.layout;
    page.drawnSize = state.drawnSize;
    state.holdsLabel = false;
    return room;
}

void ScriptGraphicContext::TakeOver(HandedLabel& label) {
    State& state = *state_;
    auto& page = static_cast<HandedPage&>(label);
    state.raster.Swap(page.raster);
    state.layout = page.layout;
    state.drawnSize = page.drawnSize;
    state.keepsPicture = false;
    state.constantFields.reset();
    ++state.labels;
    state.holdsLabel = true;
}

Extent ScriptGraphicContext::PageSize() const { return state_->pageSize; }

unsigned ScriptGraphicContext::PageDpi() const { return state_->printerContext->PrinterDpi().Value(); }

std::string_view ScriptGraphicContext::PngFile() {
    State& state = *state_;
    PrintEngine::Pages::EncodePng(state.raster, state.layout, PageDpi(), state.pageDeflater, state.EmptyPageForm(),
                                  state.note);
    return state.pageForm;
}

std::string_view ScriptGraphicContext::DeflatedRows() {
    State& state = *state_;
    state.pageDeflater.Append(state.raster, state.layout, state.EmptyPageForm());
    return state.pageForm;
}

std::string_view ScriptGraphicContext::PackedRows() {
    auto const file = PbmFile();
    return file.substr(PrintEngine::Pages::PbmHeader(state_->layout).size());
}

std::string_view ScriptGraphicContext::PbmFile() {
    State& state = *state_;
    PrintEngine::Pages::EncodePbm(state.raster, state.layout, state.PageForm());
    return state.pageForm;
}

void ScriptGraphicContext::PbmPieces(TakePiece const& take) {
    PrintEngine::Pages::EncodePbm(state_->raster, state_->layout, state_->PageForm(), take);
}

}  // namespace Scripting
