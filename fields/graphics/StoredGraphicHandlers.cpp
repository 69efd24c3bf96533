#include "fields/graphics/GraphicHandlers.h"

#include <algorithm>

#include "fields/data/HostQuestions.h"
#include "fields/graphics/GraphicPlacement.h"
#include "fields/graphics/RecalledGraphics.h"
#include "fields/graphics/StoredGraphics.h"
#include "fields/map/FieldFunction.h"
#include "foundation/Log.h"
#include "foundation/Quoted.h"
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

/// `~DG`: stores a picture under an object name.
class DownloadGraphicsHandler : public HandlerFor<CommandId("DG"), SyntacticType::Control, ProcessingType::Immediate> {
public:
    bool HandleCommand(Context&, ZplCommand const& command, ContextProcessor& processor) override {
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
};

/// `^HY`: sends a stored picture to the host, once, when the format has been printed.
class UploadGraphicsHandler : public HandlerFor<CommandId("HY")> {
public:
    bool HandleCommand(Context&, ZplCommand const& command, ContextProcessor& processor) override {
        auto const name = ParseName(command);
        auto const picture = name ? ZplCore::RecallGraphic(processor, command.Parameter(0)) : nullptr;
        if (!picture) return true;
        if (ZplCore::DownloadSize(*picture) > ZplCore::MostAnswerBytes) {
            ReportUnsent(*name);
            return true;
        }
        ZplCore::AddHostQuestion(processor, ZplContextKeys::HostVerificationFormatCallbacks,
                                 [name = *name, picture](ContextProcessor const& label) -> std::optional<std::string> {
                                     // The end of a format may be told more than once, when its last page is printed
                                     // again behind a pause.
                                     auto const& memory = label.at(ZplContextKeys::SharedFormatMemory);
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
};

/// `^IS`: saves the label as a picture, and says whether it is printed too.
class ImageSaveHandler : public HandlerFor<CommandId("IS")> {
public:
    bool HandleCommand(Context&, ZplCommand const& command, ContextProcessor& processor) override {
        if (auto const name = ParseName(command)) {
            ZplContextKeys::ISMetaData const save{name->Text(), ZplParse<bool>(command, 1).ValueOr(true)};
            processor.set(ContextProcessor::FormatContext, ZplContextKeys::ImageSave, save);
        }
        return true;
    }
};

/// `^XG`: draws a stored picture, enlarged. `^IM`: draws one as it is.
class RecallGraphicHandler : public CommandHandler {
public:
    enum class Mode { Enlarged = 0, Plain = 1 };

    RecallGraphicHandler(std::uint64_t id, Mode mode) : id_(id), mode_(mode) {}
    std::uint64_t GetCommandId() const override { return id_; }
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        constexpr unsigned Largest = 10;
        auto const parse = [&](std::size_t index) {
            unsigned const factor = mode_ == Mode::Enlarged ? ZplParse<unsigned>(command, index).ValueOr(1) : 1;
            return Bounded(command, index, std::max(factor, 1U), {1, Largest});
        };
        unsigned const x = parse(1);
        unsigned const y = parse(2);
        auto const draw = [text = command.Parameter(0), x, y](ContextProcessor& atRender) {
            if (auto const picture = ZplCore::RecallGraphic(atRender, text))
                ZplCore::DrawPicture(atRender, *picture, x, y);
        };
        ZplCore::StoreFieldFunction(
            current, processor, draw,
            [text = command.Parameter(0), x, y](ContextProcessor const&, ZplCore::FieldNotes& notes) {
                notes.kind = ZplCore::FieldKind::RecalledPicture;
                notes.Add("name", text).Add("enlarged across", x).Add("enlarged down", y);
            });
        return true;
    }

private:
    std::uint64_t id_;
    Mode mode_;
};

}  // namespace

void AddStoredGraphicHandlers(CommandHandlerPool& pool) {
    pool.AddToCache<DownloadGraphicsHandler>();
    pool.AddToCache<UploadGraphicsHandler>();
    pool.AddToCache<ImageSaveHandler>();
    pool.AddToCache<RecallGraphicHandler>(CommandId("XG"), RecallGraphicHandler::Mode::Enlarged);
    pool.AddToCache<RecallGraphicHandler>(CommandId("IM"), RecallGraphicHandler::Mode::Plain);
}
