#include "barcodes/frame/BarcodeError.h"

#include <algorithm>
#include <iterator>

#include "fields/text/TextDrawing.h"
#include "foundation/Log.h"
#include "foundation/Quoted.h"
#include "frontend/context/ZplContextKeys.h"

namespace ZplCore {

namespace {

constexpr std::string_view BannerFont = "D";
constexpr int BannerMargin = 8;  // dots above and below the text

/// What is printed, and what it means, by the number of the status.
struct ErrorText {
    std::string_view message;
    std::string_view meaning;
};
constexpr ErrorText Errors[] = {
    {},  // valid
    {" INVALID - C ", "the symbology has not all of their characters"},
    {" INVALID - E ", "their check digit is wrong"},
    {" INVALID - L ", "they are too long"},
    {" INVALID - S ", "they are too short"},
    {" INVALID - P ", "a parameter of the command does not fit them"},
};

/// Why data were refused, by what is printed for it, as it stands behind a report.
std::string Reason(std::string_view message) {
    auto const error = std::find_if(std::begin(Errors), std::end(Errors),
                                    [message](ErrorText const& candidate) { return candidate.message == message; });
    return error == std::end(Errors) || error->meaning.empty() ? "" : ": " + std::string(error->meaning);
}

}  // namespace

std::optional<std::string> GetBarcodeErrorMessage(BarcodeStatus status) {
    auto const index = static_cast<std::size_t>(status);
    if (index == 0 || index >= std::size(Errors)) return std::nullopt;
    return std::string(Errors[index].message);
}

void ReportRefusedBarcode(ContextProcessor const& processor, std::string_view message, std::string_view reason) {
    Log::Report(LogTopic::BarcodeRefused, "no barcode can be made of the data " +
                                              Quoted(processor.at(ZplContextKeys::FieldData)) +
                                              (reason.empty() ? Reason(message) : ": " + std::string(reason)));
}

namespace {

void ReportRepair(ContextProcessor const& processor, std::string const& repaired, std::string_view message) {
    Log::Report(LogTopic::Data, "a barcode is made of " + Quoted(repaired) + " in place of the data " +
                                    Quoted(processor.at(ZplContextKeys::FieldData)) + Reason(message));
}

}  // namespace

void ReportRepairedBarcode(ContextProcessor const& processor, std::string const& repaired, BarcodeStatus status) {
    ReportRepair(processor, repaired, GetBarcodeErrorMessage(status).value_or(""));
}

std::string RepairBarcodeData(ContextProcessor const& processor, std::string const& text, std::string_view message,
                              BarcodeTransform const& repair) {
    std::string repaired = repair(text);
    if (repaired.empty()) {
        ReportRefusedBarcode(processor, message);
    } else {
        ReportRepair(processor, repaired, message);
    }
    return repaired;
}

void HandleBarcodeError(ContextProcessor& processor, std::string const& message, bool force, std::string_view reason) {
    ReportRefusedBarcode(processor, message, reason);
    auto const& target = processor.GetGraphicContext();
    if (!target) return;
    if (!force && !processor.at(ZplContextKeys::EnableBarcodeValidation)) return;
    auto const field = FieldPlacement::From(processor);
    target->SetFieldVariable(processor.at(ZplContextKeys::FieldVariable));
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
