#include <iterator>

#include "barcodes/BarcodeFrame.h"
#include "fields/TextDrawing.h"
#include "foundation/Log.h"
#include "frontend/context/ZplContextKeys.h"

namespace ZplCore {

namespace {

constexpr std::string_view BannerFont = "D";
constexpr int BannerMargin = 8;  // dots above and below the text

constexpr std::string_view Messages[] = {
    {},  // valid
    " INVALID - C ",
    " INVALID - E ",
    " INVALID - L ",
    " INVALID - S ",
    " INVALID - P ",
};
static_assert(Messages[1].size() == 13 && Messages[2].size() == 13 && Messages[3].size() == 13 &&
              Messages[4].size() == 13 && Messages[5].size() == 13);

}  // namespace

std::optional<std::string> GetBarcodeErrorMessage(BarcodeStatus status) {
    auto const index = static_cast<std::size_t>(status);
    if (index == 0 || index >= std::size(Messages)) return std::nullopt;
    return std::string(Messages[index]);
}

void HandleBarcodeError(ContextProcessor& processor, std::string const& message, bool force) {
    auto const& data = processor.at(ZplContextKeys::FieldData);
    Log::Report(LogTopic::BarcodeRefused, message + "for \"" + data.substr(0, 60) + "\"");
    auto const& target = processor.GetGraphicContext();
    if (!target) return;
    if (!force && !processor.at(ZplContextKeys::EnableBarcodeValidation)) return;
    auto const field = FieldPlacement::From(processor);
    DrawBarcodeError(*target, field.origin, field.orientation, field.justification, message);
    StoreNextFieldOrigin(processor, field.origin);
}

void DrawBarcodeError(Scripting::GraphicContext& target, ZplPoint origin, ZplOrientation orientation,
                      Justification justification, std::string const& message) {
    int const width = target.MeasureText(BannerFont, message, 1, 0, true);
    int const height = target.GetFontHeight(BannerFont) + 2 * BannerMargin;
    auto const transform =
        GetFieldLocalToGlobalTransform(origin, {width, height}, orientation, Baseline::Top, justification, {});
    // The lines of the outline are centred on its corners: with half the height they fill the box behind the text.
    int const thickness = height / 2;
    int const inset = height / 4;
    target.SetColor(0);
    DrawRect(target, transform * ZplPoint(inset, inset),
             transform * ZplPoint(width - thickness + inset, inset + thickness), static_cast<unsigned>(thickness));
    target.SetColor(1);
    DrawText(target, message, transform * ZplPoint(0, BannerMargin),
             {.font = FontName(BannerFont), .orientation = orientation});
    target.SetColor(0);
}

}  // namespace ZplCore
