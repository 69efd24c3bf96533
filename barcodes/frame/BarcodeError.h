#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "Scripting/GraphicContext.h"
#include "barcodes/frame/BarcodeFunctions.h"
#include "fields/placement/FieldTransform.h"

/// Data that a symbology refuses: what is reported, and what is drawn in place of a symbol.
namespace ZplCore {

/// What is printed in place of a symbol; nothing for valid data.
std::optional<std::string> GetBarcodeErrorMessage(BarcodeStatus status);
/// Reports that the field's data were refused, with `reason`, or what `message` means if that is empty.
void ReportRefusedBarcode(ContextProcessor const& processor, std::string_view message, std::string_view reason = {});
/// Reports that a barcode is made of `repaired` in place of the field's data, as that status says.
void ReportRepairedBarcode(ContextProcessor const& processor, std::string const& repaired, BarcodeStatus status);
/// What `repair` makes of refused text, which is reported; empty text is no symbol, and reported as refused.
std::string RepairBarcodeData(ContextProcessor const& processor, std::string const& text, std::string_view message,
                              BarcodeTransform const& repair);
/// Reports refused data, and draws the message at the field origin if validation is on or `force` is set. The next
/// field then starts where this one should have stood.
void HandleBarcodeError(ContextProcessor& processor, std::string const& message, bool force,
                        std::string_view reason = {});
/// White text on a black bar.
void DrawBarcodeError(Scripting::GraphicContext& target, ZplPoint origin, ZplOrientation orientation,
                      Justification justification, std::string const& message);

}  // namespace ZplCore
