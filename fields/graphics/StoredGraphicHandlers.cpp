#include "fields/graphics/StoredGraphicHandlers.h"

#include <algorithm>

#include "fields/data/HostQuestions.h"
#include "fields/graphics/GraphicPlacement.h"
#include "fields/graphics/RecalledGraphics.h"
#include "fields/graphics/StoredGraphics.h"
#include "foundation/Log.h"
#include "foundation/Quoted.h"
#include "frontend/context/Setting.h"
#include "frontend/context/ZplContextKeys.h"
#include "frontend/handlers/CommandHandlerPool.h"
#include "frontend/stream/ParameterRange.h"
#include "frontend/stream/ZplParse.h"

namespace {

constexpr char DefaultDevice = 'R';
constexpr std::string_view DefaultName = "UNKNOWN";
constexpr std::string_view DefaultExtension = "GRF";

std::optional<ObjectName> ParseName(ZplCommand const& command) {
    auto const name = ObjectName::Parse(command.Parameter(0), DefaultDevice, DefaultName, DefaultExtension);
    if (!name) Log::Report(LogTopic::Data, "no picture can have the name " + Quoted(command.Parameter(0)));
    return name;
}

void ReportUnsent(ObjectName const& name) {
    Log::Report(LogTopic::Limit, "picture " + name.Text() + " is not sent back: the answers of a format are at most " +
                                     std::to_string(ZplCore::MostAnswerBytes) + " bytes");
}

}  // namespace

bool DownloadGraphicsHandler::HandleCommand(Context&, ZplCommand const& command, ContextProcessor& processor) {
    constexpr std::size_t FirstData = 3;
    constexpr char RowFill = ',';
    auto const total = ZplParse<unsigned>(command, 1);
    auto const bytesPerRow = ZplParse<unsigned>(command, 2);
    auto const name = ParseName(command);
    if (!name || !total || !bytesPerRow) return true;
    if (auto picture = ZplCore::MakePicture(*total, *bytesPerRow)) {
        ZplCore::DecodeTextData(command.Joined(FirstData, RowFill), *picture);
        ZplCore::StoreGraphic(processor.FormatsFolder(), *name, *picture);
    }
    return true;
}

bool UploadGraphicsHandler::HandleCommand(Context&, ZplCommand const& command, ContextProcessor& processor) {
    auto const name = ParseName(command);
    auto const picture = name ? ZplCore::RecallGraphic(processor, command.Parameter(0)) : nullptr;
    if (!picture) return true;
    if (ZplCore::DownloadSize(*picture) > ZplCore::MostAnswerBytes) {
        ReportUnsent(*name);
        return true;
    }
    ZplCore::AddHostQuestion(processor, ZplContextKeys::HostVerificationFormatCallbacks,
                             [name = *name, picture](ContextProcessor const& label) -> std::optional<std::string> {
                                 // The end of a format may be told more than once, when its last page is printed again
                                 // behind a pause.
                                 auto const& memory = label.at(ZplContextKeys::FormatMemory);
                                 if (memory && !memory->answered.insert(name.Text()).second) return std::nullopt;
                                 std::size_t const size = ZplCore::DownloadSize(*picture);
                                 if (memory && memory->answerBytes + size > ZplCore::MostAnswerBytes) {
                                     ReportUnsent(name);
                                     return std::nullopt;
                                 }
                                 if (memory) memory->answerBytes += size;
                                 return ZplCore::DownloadCommand(name, *picture);
                             });
    return true;
}

bool ImageSaveHandler::HandleCommand(Context&, ZplCommand const& command, ContextProcessor& processor) {
    if (auto const name = ParseName(command)) {
        ZplContextKeys::ISMetaData const save{name->Text(), ZplParse<bool>(command, 1).ValueOr(true)};
        processor.set(ContextProcessor::FormatContext, ZplContextKeys::ImageSave, save);
    }
    return true;
}

bool RecallGraphicHandler::HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) {
    constexpr unsigned Largest = 10;
    auto const parse = [&](std::size_t index) {
        unsigned const factor = mode_ == Mode::Enlarged ? ZplParse<unsigned>(command, index).ValueOr(1) : 1;
        return Bounded(command, index, std::max(factor, 1U), {1, Largest});
    };
    ZplContextKeys::RenderFunction const draw = [text = command.Parameter(0), x = parse(1),
                                                 y = parse(2)](ContextProcessor& atRender) {
        if (auto const picture = ZplCore::RecallGraphic(atRender, text)) ZplCore::DrawPicture(atRender, *picture, x, y);
    };
    StoreSetting(current, processor, ZplContextKeys::FieldRenderFunction, draw);
    return true;
}

void AddStoredGraphicHandlers(CommandHandlerPool& pool) {
    pool.AddToCache<DownloadGraphicsHandler>();
    pool.AddToCache<UploadGraphicsHandler>();
    pool.AddToCache<ImageSaveHandler>();
    pool.AddToCache<RecallGraphicHandler>(CommandId("XG"), RecallGraphicHandler::Mode::Enlarged);
    pool.AddToCache<RecallGraphicHandler>(CommandId("IM"), RecallGraphicHandler::Mode::Plain);
}
