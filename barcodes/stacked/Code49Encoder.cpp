#include "barcodes/stacked/Code49Encoder.h"

#include <algorithm>

#include "Barcode/Encoder/ModuleEncoder.h"
#include "frontend/stream/Ascii.h"

namespace ZplCore {

using namespace Barcode::Encoder;

BarcodeStatus Code49Encoder::Validate(std::string const& data) {
    if (data.empty()) return BarcodeStatus::TooShort;
    return std::all_of(data.begin(), data.end(), IsAscii) ? BarcodeStatus::Valid : BarcodeStatus::InvalidCharacter;
}

Barcode::Model::StackedBarcodeModel Code49Encoder::Encode(std::string const& data) {
    ModuleRequest request;
    request.symbology = ModuleSymbology::Code49;
    request.data = data;
    auto const rows = EncodeModules(request).rows;
    Barcode::Model::StackedBarcodeModel model(static_cast<unsigned>(rows.size()),
                                              rows.empty() ? 0 : static_cast<unsigned>(rows[0].size()));
    for (std::size_t r = 0; r < rows.size(); ++r) {
        for (bool const dark : rows[r]) model.GetBlocks()[r].emplace_back(false, dark);
    }
    return model;
}

}  // namespace ZplCore
