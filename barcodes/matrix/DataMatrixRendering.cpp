#include "barcodes/matrix/DataMatrixRendering.h"

#include <algorithm>

#include "Barcode/Encoder/DataMatrix200Encoder.h"
#include "barcodes/frame/BarcodeParameters.h"
#include "barcodes/frame/Memoizer.h"
#include "barcodes/matrix/DataMatrix0to140Encoder.h"
#include "barcodes/matrix/MatrixRendering.h"
#include "frontend/context/ZplContextKeys.h"

namespace ZplCore {

using namespace Barcode::Encoder;
using Barcode::Model::MatrixBarcodeModel;

namespace {

/// The module size in dots; if none was sent, one that makes the symbol as tall as the barcodes of its label.
unsigned ModuleSize(ContextProcessor const& processor, DataMatrixOptions const& options,
                    MatrixBarcodeModel const& model) {
    if (options.moduleSize != 0 || model.GetCells().empty()) return options.moduleSize;
    return std::max(1U, processor.at(ZplContextKeys::BarcodeHeight) / static_cast<unsigned>(model.GetCells().size()));
}

void CreateDataMatrix200(ContextProcessor& processor, DataMatrixOptions const& options) {
    thread_local Memoizer<10, decltype(&DataMatrix200Encoder::Encode), std::string, DMSize, char, unsigned> encode(
        &DataMatrix200Encoder::Encode);
    // One side alone is that of a square.
    DMSize const size{options.columns ? options.columns : options.rows, options.rows ? options.rows : options.columns};
    std::string const& data = processor.at(ZplContextKeys::FieldData);
    if (data.find(options.escape) == data.npos) NoteEncoded(processor, data);
    auto const status = DataMatrix200Encoder::Validate(data, size, options.escape, options.aspect);
    unsigned module = options.moduleSize;
    auto const model = [&]() -> MatrixBarcodeModel const& {
        auto const& made = encode(data, size, options.escape, options.aspect);
        module = ModuleSize(processor, options, made);
        return made;
    };
    if (status == ValidationStatus::Valid) model();
    RenderMatrix(processor, status, model, module, true);
}

void CreateDataMatrix0to140(ContextProcessor& processor, DataMatrixOptions const& options) {
    thread_local Memoizer<10, decltype(&DataMatrix0to140Encoder::Encode), std::string, int, int, int> encode(
        &DataMatrix0to140Encoder::Encode);
    std::string const& data = processor.at(ZplContextKeys::FieldData);
    bool const isSquare = options.columns == 0 || options.rows == 0 || options.columns == options.rows;
    unsigned const size = std::max(options.columns, options.rows);
    auto const status = isSquare ? DataMatrix0to140Encoder::Validate(data, options.quality, size, options.format)
                                 : ValidationStatus::InvalidParameter;
    unsigned module = options.moduleSize;
    auto const model = [&]() -> MatrixBarcodeModel const& {
        auto const& made =
            encode(data, static_cast<int>(options.quality), static_cast<int>(size), static_cast<int>(options.format));
        module = ModuleSize(processor, options, made);
        return made;
    };
    if (status == ValidationStatus::Valid) model();
    RenderMatrix(processor, status, model, module, true, "the format of the command has not all of their characters");
}

}  // namespace

std::optional<unsigned> ZplDataMatrixQualityParser(unsigned value) {
    constexpr unsigned Levels[] = {0, 50, 80, 100, 140, 200};
    bool const isLevel = std::find(std::begin(Levels), std::end(Levels), value) != std::end(Levels);
    return isLevel ? std::optional(value) : std::nullopt;
}

void RenderDataMatrix(ContextProcessor& processor, DataMatrixOptions const& options) {
    constexpr unsigned Ecc200 = 200;
    if (!processor.GetGraphicContext()) return;
    if (options.quality == Ecc200) {
        CreateDataMatrix200(processor, options);
    } else {
        CreateDataMatrix0to140(processor, options);
    }
}

}  // namespace ZplCore
