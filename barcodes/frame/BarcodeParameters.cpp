#include "barcodes/frame/BarcodeParameters.h"

#include <cmath>
#include <stdexcept>

#include "barcodes/frame/BarcodeArithmetic.h"
#include "barcodes/frame/BarcodeError.h"
#include "fields/placement/UnitConversion.h"
#include "frontend/stream/Ascii.h"
#include "frontend/stream/ZplParse.h"

namespace ZplCore {

void StoreBarcodeOrientation(Context& current, ZplCommand const& command, ContextProcessor& processor) {
    if (auto const orientation = ZplParse<ZplOrientation>(command, 0))
        processor.set(current, ZplContextKeys::FieldOrientation, *orientation);
}

void StoreBarcodeHeight(Context& current, ZplCommand const& command, std::size_t index, ContextProcessor& processor) {
    if (auto const height = ZplParse<double>(command, index).Map(ToDotsScaled(processor)).Map(ClampBarcodeHeight))
        processor.set(current, ZplContextKeys::BarcodeHeight, *height);
}

bool ParseFlag(ZplCommand const& command, std::size_t index, bool fallback) {
    return ZplParse<bool>(command, index).ValueOr(fallback);
}

char ParseLetter(ZplCommand const& command, std::size_t index, char fallback) {
    return ToAsciiUpper(ZplParse<char>(command, index).ValueOr(fallback));
}

ZplContextKeys::RenderFunction BarcodeRender(ZplContextKeys::RenderFunction render, std::string_view symbology) {
    return [render = std::move(render), symbology](ContextProcessor& atRender) {
        if (auto const& map = atRender.GetFieldMap()) map->NoteBarcode(symbology);
        try {
            render(atRender);
        } catch (std::length_error const&) {
            HandleBarcodeError(atRender, *GetBarcodeErrorMessage(BarcodeStatus::InvalidParameter), false,
                               "the symbol would be too large; its modules or its height must be smaller");
        }
    };
}

void NoteEncoded(ContextProcessor const& atRender, std::string_view bytes) {
    if (auto const& map = atRender.GetFieldMap()) map->NoteEncoded(bytes);
}

std::string_view NameOfLine(bool printLine, bool lineAbove) {
    if (!printLine) return "none";
    return lineAbove ? "above" : "below";
}

void DescribeBars(ContextProcessor const& at, FieldNotes& notes, bool printLine, bool lineAbove, bool usesRatio) {
    notes.Add("module", at.at(ZplContextKeys::BarcodeModuleWidth), "dots");
    // To one decimal, as it is sent.
    if (usesRatio) notes.Add("ratio", std::round(double{at.at(ZplContextKeys::BarcodeRatio)} * 10) / 10);
    notes.Add("height", at.at(ZplContextKeys::BarcodeHeight), "dots")
        .Add("text line", NameOfLine(printLine, lineAbove));
}

}  // namespace ZplCore
