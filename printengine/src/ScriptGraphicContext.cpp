#include "Scripting/ScriptGraphicContext.h"

#include <algorithm>

#include "printengine/src/ScriptGraphicContextState.h"

namespace Scripting {

void ScriptGraphicContext::InitializeFontManager(PrintEngine::Printing::TrueTypeCacheCreator& fonts,
                                                 std::filesystem::path const& systemFontsFolder) {
    fonts.GetCache().Files().SetFolder(systemFontsFolder);
}

ScriptGraphicContext::ScriptGraphicContext(PrintEngine::Printing::TrueTypeCacheCreator& fonts,
                                           std::shared_ptr<PrinterContextInterface> printerContext)
    : state_(std::make_unique<State>(fonts.GetCache(), std::move(printerContext))) {
    SetupForPrintJob();
}

ScriptGraphicContext::~ScriptGraphicContext() = default;

void ScriptGraphicContext::SetJobsFolder(std::filesystem::path folder) { state_->jobsFolder = std::move(folder); }

void ScriptGraphicContext::StartNewJob() {
    state_->storedPicture.reset();
    state_->fileError.clear();
    StartLabel();
}

void ScriptGraphicContext::LoadPart(PrintEngine::PartManagement::LabelPart const& part) {
    state_->part = part;
    state_->holdsLabel = false;
}

std::string const& ScriptGraphicContext::FileError() const { return state_->fileError; }

void ScriptGraphicContext::SetFieldVariable(bool variable) {
    State& state = *state_;
    state.variable = variable;
    if (!variable || state.constantFields) return;
    // Only now: most labels have no variable field, and are drawn once.
    state.constantFields = std::make_unique<PrintEngine::Drawing::Raster>();
    state.constantFields->Reset(state.layout.width, state.layout.height);
    state.constantFields->Draw(state.raster, PrintEngine::Drawing::Ink::Black);
}

void ScriptGraphicContext::SetReverse(bool reverse) { state_->reverse = reverse; }

void ScriptGraphicContext::SetColor(unsigned color) { state_->color = color; }

void ScriptGraphicContext::SetRotation(int degrees) {
    state_->degrees = degrees == 90 || degrees == 180 || degrees == 270 ? degrees : 0;
}

void ScriptGraphicContext::SetTextFlow(ScriptTextFlow flow) { state_->textStyle.flow = flow; }

void ScriptGraphicContext::SelectFont(std::string_view font, unsigned magnificationX, unsigned magnificationY) {
    state_->font = font;
    state_->textStyle.magnificationX = std::min(magnificationX, PrintEngine::Text::MaxMagnification);
    state_->textStyle.magnificationY = std::min(magnificationY, PrintEngine::Text::MaxMagnification);
}

}  // namespace Scripting
