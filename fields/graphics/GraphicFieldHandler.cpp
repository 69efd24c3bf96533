#include "fields/graphics/GraphicHandlers.h"

#include <memory>

#include "fields/graphics/GraphicPlacement.h"
#include "fields/map/FieldFunction.h"
#include "frontend/context/ZplContextKeys.h"
#include "frontend/handlers/CommandHandlerPool.h"
#include "frontend/stream/ZplParse.h"

namespace {

/// `^GF`: a picture in the stream.
class GraphicFieldHandler : public HandlerFor<CommandId("GF")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        constexpr std::size_t FirstData = 4;
        // In text data the comma is an instruction, whatever character parts the parameters of the session.
        constexpr char RowFill = ',';
        auto const form = ZplParse<CompressionType>(command, 0).ValueOr(CompressionType::Ascii);
        auto const sent = ZplParse<unsigned>(command, 1);
        auto const total = ZplParse<unsigned>(command, 2);
        auto const bytesPerRow = ZplParse<unsigned>(command, 3);
        if (!sent || !total || !bytesPerRow) return true;
        auto picture = ZplCore::MakePicture(*total, *bytesPerRow);
        if (!picture) return true;

        std::string joined;
        if (command.parameters.size() > FirstData + 1) joined = command.Joined(FirstData, RowFill);
        bool const isWhole = joined.empty() && command.parameters.size() > FirstData;
        std::string_view const data = isWhole ? command.parameters[FirstData] : std::string_view(joined);
        if (form == CompressionType::Binary) {
            ZplCore::DecodeBinaryData(data, *picture);
        } else {
            ZplCore::DecodeTextData(data, *picture);
        }
        auto const shared = std::make_shared<ZplCore::Picture const>(std::move(*picture));
        ZplCore::StoreFieldFunction(
            current, processor, [shared](ContextProcessor& atRender) { ZplCore::DrawPicture(atRender, *shared); },
            [shared](ContextProcessor const&, ZplCore::FieldNotes& notes) {
                notes.kind = ZplCore::FieldKind::Graphic;
                notes.Add("width", shared->Width(), "dots").Add("height", shared->Height(), "dots");
            });
        // A picture needs no data behind it; it is whole as soon as it has its place.
        processor.set(current, ZplContextKeys::EndsAtNextOrigin, current.HasValue(ZplContextKeys::FieldOriginX));
        return true;
    }
};

}  // namespace

void AddGraphicFieldHandler(CommandHandlerPool& pool) { pool.AddToCache<GraphicFieldHandler>(); }
