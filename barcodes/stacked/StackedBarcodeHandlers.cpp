#include "barcodes/stacked/StackedBarcodeHandlers.h"

#include <algorithm>

#include "Barcode/Encoder/MicroPDF417Encoder.h"
#include "Barcode/Encoder/PDF417Encoder.h"
#include "barcodes/frame/BarcodeError.h"
#include "barcodes/frame/BarcodeParameters.h"
#include "barcodes/frame/LinearFrame.h"
#include "barcodes/frame/Memoizer.h"
#include "barcodes/frame/SymbolFrame.h"
#include "barcodes/stacked/Code49Encoder.h"
#include "barcodes/stacked/StackedSketch.h"
#include "fields/placement/UnitConversion.h"
#include "frontend/context/ZplContextKeys.h"
#include "frontend/handlers/CommandHandlerPool.h"
#include "frontend/stream/ZplParse.h"

namespace {

using namespace Barcode::Encoder;
using namespace ZplCore;
using Barcode::Model::StackedBarcodeModel;

/// A row height in dots, 0 if there is none.
unsigned RowHeight(ZplCommand const& command, ContextProcessor const& processor) {
    return ZplParse<int>(command, 1)
        .Map([](int height) { return static_cast<unsigned>(height); })
        .Map(ToDotsScaleOnly(processor))
        .ValueOr(0);
}

/// The least heights of rows in modules, by ISO/IEC 15438 and ISO/IEC 24728.
constexpr unsigned Pdf417LeastRow = 3;
constexpr unsigned MicroPdfLeastRow = 2;

/// Draws a symbol, or the error if it has no rows, which says that the data do not fit. Without a row height the
/// symbol is as tall as the barcodes of its label, in rows of at least `leastModules`, which readers can tell apart.
void DrawStacked(ContextProcessor& processor, StackedBarcodeModel const& model, unsigned rowHeight,
                 unsigned leastModules) {
    if (model.GetRows() == 0) {
        HandleBarcodeError(processor, *GetBarcodeErrorMessage(ValidationStatus::TooLong), false);
        return;
    }
    unsigned const module = processor.at(ZplContextKeys::BarcodeModuleWidth);
    unsigned const shared = processor.at(ZplContextKeys::BarcodeHeight) / model.GetRows();
    auto const resolution = SketchResolution::Of(processor);
    auto const symbol = Scripting::GraphicHelper::SketchStackedBarcode(
        model, module, rowHeight != 0 ? rowHeight : std::max(shared, leastModules * module), resolution.printer,
        resolution.design);
    RenderSimpleBarcode(processor, *symbol.rows, symbol.logicalWidth, symbol.logicalHeight, symbol.bitmapWidth);
}

struct Pdf417Options {
    unsigned rowHeight;  ///< dots
    unsigned security;
    unsigned columns;
    unsigned rows;
    bool truncated;
};

void RenderPdf417(ContextProcessor& processor, Pdf417Options const& options) {
    thread_local Memoizer<10, decltype(&PDF417Encoder::Encode), std::string, unsigned, unsigned, unsigned, bool> encode(
        &PDF417Encoder::Encode);
    if (!processor.GetGraphicContext()) return;
    std::string const& data = processor.at(ZplContextKeys::FieldData);
    NoteEncoded(processor, data);
    auto const status = PDF417Encoder::Validate(data, options.security, options.columns, options.rows);
    if (auto const message = GetBarcodeErrorMessage(status)) return HandleBarcodeError(processor, *message, false);
    DrawStacked(processor, encode(data, options.security, options.columns, options.rows, options.truncated),
                options.rowHeight, Pdf417LeastRow);
}

StackedBarcodeModel MicroPdfEncodeWithoutLinkageParam(std::string const& data, MicroPDF417Shape const& shape) {
    return MicroPDF417Encoder::Encode(data, shape, MicroPDF417Linkage::None);
}

void RenderMicroPdf(ContextProcessor& processor, unsigned rowHeight, unsigned mode) {
    thread_local Memoizer<10, decltype(&MicroPdfEncodeWithoutLinkageParam), std::string, MicroPDF417Shape> encode(
        &MicroPdfEncodeWithoutLinkageParam);
    if (!processor.GetGraphicContext()) return;
    std::string const& data = processor.at(ZplContextKeys::FieldData);
    bool const isMode = mode < MicroPDF417Encoder::ModeCount;
    auto const shape = isMode ? MicroPDF417Encoder::ShapeOf(mode) : MicroPDF417Shape();
    auto const status = isMode ? MicroPDF417Encoder::Validate(data, shape) : ValidationStatus::InvalidParameter;
    if (auto const message = GetBarcodeErrorMessage(status)) return HandleBarcodeError(processor, *message, false);
    DrawStacked(processor, encode(data, shape), rowHeight, MicroPdfLeastRow);
}

void RenderCode49(ContextProcessor& processor, std::optional<unsigned> multiplier, char line) {
    if (!processor.GetGraphicContext()) return;
    processor.GetGraphicContext()->SetFieldVariable(processor.at(ZplContextKeys::FieldVariable));
    std::string const data = processor.at(ZplContextKeys::FieldData);
    auto status = Code49Encoder::Validate(data);
    auto const model = Code49Encoder::Encode(data);
    if (status == ValidationStatus::Valid && model.GetRows() == 0) status = ValidationStatus::TooLong;
    if (auto const message = GetBarcodeErrorMessage(status)) return HandleBarcodeError(processor, *message, false);
    auto const style = LinearBarcodeStyle::Fixed(processor, line != 'N', line == 'A');
    auto const resolution = SketchResolution::Of(processor);
    DrawSketchWithLine(
        processor,
        Scripting::GraphicHelper::SketchCode49Barcode(model, multiplier.value_or(style.height) * style.narrow,
                                                      style.narrow, resolution.printer, resolution.design),
        style, data);
}

std::optional<unsigned> Optional(ZplParseResult<unsigned> const& parsed) {
    return parsed ? std::optional(*parsed) : std::nullopt;
}

/// A row height of 0 follows from the height of barcodes.
void DescribeRows(ContextProcessor const& at, FieldNotes& notes, unsigned rowHeight) {
    notes.Add("module", at.at(ZplContextKeys::BarcodeModuleWidth), "dots");
    if (rowHeight != 0) {
        notes.Add("row height", rowHeight, "dots");
    } else {
        notes.Add("height", at.at(ZplContextKeys::BarcodeHeight), "dots");
    }
}

/// `^B4`: Code 49. Multiplier of the row height; line N, A above or B below; starting mode, which follows from the
/// data.
class Code49BarcodeHandler : public HandlerFor<CommandId("B4")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        StoreBarcodeOrientation(current, command, processor);
        auto const multiplier = Optional(ZplParse<unsigned>(command, 1));
        char const line = ParseLetter(command, 2, 'N');
        char const drawn = line == 'A' || line == 'B' ? line : 'N';
        return StoreBarcodeRender(
            current, processor, [=](ContextProcessor& at) { RenderCode49(at, multiplier, drawn); }, "Code 49",
            [=](ContextProcessor const& at, FieldNotes& notes) {
                auto const height = multiplier.value_or(at.at(ZplContextKeys::BarcodeHeight));
                notes.Add("module", at.at(ZplContextKeys::BarcodeModuleWidth), "dots")
                    .Add("row height", height, "modules")
                    .Add("text line", NameOfLine(drawn != 'N', drawn == 'A'));
            });
    }
};

/// `^B7`: PDF417. Row height in dots, security level, columns, rows, truncation.
class Pdf417BarcodeHandler : public HandlerFor<CommandId("B7")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        StoreBarcodeOrientation(current, command, processor);
        Pdf417Options const options{RowHeight(command, processor), ZplParse<unsigned char>(command, 2).ValueOr(0),
                                    ZplParse<unsigned char>(command, 3).ValueOr(0),
                                    ZplParse<unsigned char>(command, 4).ValueOr(0), ParseFlag(command, 5, false)};
        return StoreBarcodeRender(
            current, processor, [=](ContextProcessor& at) { RenderPdf417(at, options); }, "PDF417",
            [=](ContextProcessor const& at, FieldNotes& notes) {
                DescribeRows(at, notes, options.rowHeight);
                notes.Add("security", options.security);
                if (options.columns != 0) notes.Add("columns", options.columns);
                if (options.rows != 0) notes.Add("rows", options.rows);
                notes.Add("truncated", options.truncated);
            });
    }
};

/// `^BF`: MicroPDF417. Row height in dots, mode.
class MicroPdfBarcodeHandler : public HandlerFor<CommandId("BF")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        StoreBarcodeOrientation(current, command, processor);
        unsigned const rowHeight = RowHeight(command, processor);
        auto const mode = static_cast<unsigned>(ZplParse<int>(command, 2).ValueOr(0));
        return StoreBarcodeRender(
            current, processor, [=](ContextProcessor& at) { RenderMicroPdf(at, rowHeight, mode); }, "MicroPDF417",
            [=](ContextProcessor const& at, FieldNotes& notes) {
                DescribeRows(at, notes, rowHeight);
                notes.Add("mode", mode);
            });
    }
};

}  // namespace

void AddStackedBarcodeHandlers(CommandHandlerPool& pool) {
    pool.AddToCache<Code49BarcodeHandler>();
    pool.AddToCache<Pdf417BarcodeHandler>();
    pool.AddToCache<MicroPdfBarcodeHandler>();
}
