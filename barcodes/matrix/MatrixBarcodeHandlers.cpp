#include "barcodes/matrix/MatrixBarcodeHandlers.h"

#include "Barcode/Encoder/AztecEncoder.h"
#include "barcodes/frame/BarcodeArithmetic.h"
#include "barcodes/frame/BarcodeParameters.h"
#include "barcodes/frame/Memoizer.h"
#include "barcodes/matrix/DataMatrixRendering.h"
#include "barcodes/matrix/MatrixRendering.h"
#include "barcodes/matrix/MaxiCodeRendering.h"
#include "barcodes/matrix/QrText.h"
#include "fields/placement/UnitConversion.h"
#include "foundation/Log.h"
#include "frontend/context/ZplContextKeys.h"
#include "frontend/handlers/CommandHandlerPool.h"
#include "frontend/stream/ZplParse.h"

namespace {

using namespace Barcode::Encoder;
using namespace ZplCore;
using Barcode::Model::MatrixBarcodeModel;

constexpr unsigned MagnificationLimit = 10;
/// Where the resolution has no default of its own; a symbol of no size is of no use.
constexpr unsigned LeastDefaultMagnification = 2;

unsigned Magnification(ZplCommand const& command, std::size_t index, ContextProcessor const& processor) {
    unsigned const sent = ZplParse<double>(command, index).Map(ToDotsScaled(processor)).ValueOr(0);
    unsigned const clamped = ClampMagnificationFactor(Scripting::Dpi(DesignDpi(processor)), sent, MagnificationLimit);
    return clamped == 0 ? LeastDefaultMagnification : clamped;
}

void RenderQr(ContextProcessor& processor, unsigned magnification, char level, unsigned mask) {
    thread_local Memoizer<10, decltype(&QREncoder::Encode), std::string, QROptions> encode(&QREncoder::Encode);
    auto const field = ReadQrFieldData(processor.at(ZplContextKeys::FieldData), level, mask);
    if (!field.dropped.empty())
        Log::Report(LogTopic::Data,
                    "the data of a QR Code begin with error level, input mode and a comma, as \"QA,\"; \"" +
                        field.dropped + "\" stands there, and is left out");
    NoteEncoded(processor, field.text);
    auto const status = QREncoder::Validate(field.text, field.options);
    RenderMatrix(
        processor, status, [&]() -> MatrixBarcodeModel const& { return encode(field.text, field.options); },
        magnification);
}

void RenderAztec(ContextProcessor& processor, unsigned magnification, AztecOptions const& options) {
    thread_local Memoizer<10, decltype(&AztecEncoder::Encode), std::string, AztecOptions> encode(&AztecEncoder::Encode);
    std::string const& data = processor.at(ZplContextKeys::FieldData);
    if (!options.hasChannels && options.symbols <= 1) NoteEncoded(processor, data);
    RenderMatrix(
        processor, AztecEncoder::Validate(data, options),
        [&]() -> MatrixBarcodeModel const& { return encode(data, options); }, magnification, false,
        "an Aztec rune is a number from 0 to 255");
}

/// `^BD`: MaxiCode. Mode 2 to 6, number of the symbol, number of all symbols. It has one size and stands upright.
class MaxicodeBarcodeHandler : public HandlerFor<CommandId("BD")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        MaxiCodeOptions options;
        // The command has no orientation, and the symbol is not turned.
        processor.set(current, ZplContextKeys::FieldOrientation, ZplOrientation::Normal);
        options.mode = ZplParse<unsigned>(command, 0).Where([](unsigned m) { return m >= 2 && m <= 6; }).ValueOr(2);
        auto const count = ZplParse<unsigned>(command, 2).Where([](unsigned n) { return n >= 1 && n <= 8; }).ValueOr(1);
        auto const index = ZplParse<unsigned>(command, 1).Where([](unsigned n) { return n >= 1 && n <= 8; }).ValueOr(1);
        if (index <= count) {
            options.index = index;
            options.count = count;
        }
        return StoreBarcodeRender(
            current, processor, [=](ContextProcessor& at) { RenderMaxiCode(at, options); }, "MaxiCode",
            [=](ContextProcessor const&, FieldNotes& notes) {
                notes.Add("mode", options.mode);
                if (options.count > 1) notes.Add("symbol", options.index).Add("of symbols", options.count);
            });
    }
};

/// `^BO`: Aztec. Magnification, extended channels, size or error correction, reader set-up, number of symbols, their
/// name.
class AztecBarcodeHandler : public HandlerFor<CommandId("BO")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        StoreBarcodeOrientation(current, command, processor);
        unsigned const magnification = Magnification(command, 1, processor);
        AztecOptions const options{ZplParse<unsigned>(command, 3).ValueOr(0), ParseFlag(command, 2, false),
                                   ParseFlag(command, 4, false), ZplParse<unsigned>(command, 5).ValueOr(1),
                                   command.Parameter(6)};
        return StoreBarcodeRender(
            current, processor, [=](ContextProcessor& at) { RenderAztec(at, magnification, options); }, "Aztec Code",
            [=](ContextProcessor const&, FieldNotes& notes) {
                notes.Add("magnification", magnification).Add("size", options.size);
                notes.Add("extended channels", options.hasChannels);
                if (options.symbols > 1) notes.Add("symbols", options.symbols);
            });
    }
};

/// `^BQ`: QR Code. Model, magnification, error correction, mask. It always stands upright.
class QrCodeBarcodeHandler : public HandlerFor<CommandId("BQ")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        // Whatever is sent, these symbols are not turned.
        processor.set(current, ZplContextKeys::FieldOrientation, ZplOrientation::Normal);
        unsigned const magnification = Magnification(command, 2, processor);
        char level = ParseLetter(command, 3, 'Q');
        if (std::string_view("HQML").find(level) == std::string_view::npos) level = 'M';
        unsigned const mask = ZplParse<unsigned>(command, 4).Where([](unsigned m) { return m <= 7; }).ValueOr(7);
        return StoreBarcodeRender(
            current, processor, [=](ContextProcessor& at) { RenderQr(at, magnification, level, mask); }, "QR Code",
            [=](ContextProcessor const& at, FieldNotes& notes) {
                // The data may ask for another level.
                auto const& data = at.at(ZplContextKeys::FieldData);
                auto const field = ReadQrFieldData(data, level, mask);
                notes.Add("model", 2).Add("magnification", magnification);
                notes.Add("error correction", data.empty() ? level : field.options.level);
                notes.Add("mask", mask);
            });
    }
};

/// `^BX`: Data Matrix. Module size, quality, columns, rows, format, escape character, aspect.
class DataMatrixBarcodeHandler : public HandlerFor<CommandId("BX")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        StoreBarcodeOrientation(current, command, processor);
        auto const side = [&](std::size_t index) {
            return ZplParse<unsigned>(command, index).Where([](unsigned n) { return n <= 144; }).ValueOr(0);
        };
        DataMatrixOptions options;
        options.moduleSize = static_cast<unsigned>(ZplParse<int>(command, 1)
                                                       .Map([](int size) { return static_cast<unsigned>(size); })
                                                       .Map(ToDotsScaleOnly(processor))
                                                       .ValueOr(0));
        options.quality = ZplParse<unsigned>(command, 2).Map(ZplDataMatrixQualityParser).ValueOr(0).value_or(0);
        options.columns = side(3);
        options.rows = side(4);
        options.format = ZplParse<unsigned>(command, 5).ValueOr(6);
        options.escape = ZplParse<char>(command, 6).ValueOr('~');
        options.aspect = ZplParse<unsigned>(command, 7).Where([](unsigned n) { return n < 6; }).ValueOr(1);
        return StoreBarcodeRender(
            current, processor, [=](ContextProcessor& at) { RenderDataMatrix(at, options); }, "Data Matrix",
            [=](ContextProcessor const&, FieldNotes& notes) {
                if (options.moduleSize != 0) notes.Add("module", options.moduleSize, "dots");
                notes.Add("quality", options.quality);
                if (options.columns != 0) notes.Add("columns", options.columns);
                if (options.rows != 0) notes.Add("rows", options.rows);
            });
    }
};

}  // namespace

void AddMatrixBarcodeHandlers(CommandHandlerPool& pool) {
    pool.AddToCache<MaxicodeBarcodeHandler>();
    // The two spellings of the command are one.
    pool.AddProxyToCache<AztecBarcodeHandler, CommandId("B0")>();
    pool.AddToCache<QrCodeBarcodeHandler>();
    pool.AddToCache<DataMatrixBarcodeHandler>();
}
