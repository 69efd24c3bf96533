#include "barcodes/linear/Code39Text.h"

#include "barcodes/frame/BarcodeArithmetic.h"

namespace ZplCore {

std::string Code39::TransformInvalidInput(std::string const& text) {
    return KeepCharacters("0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ-. $/+%")(ConvertToUpper(text));
}

}  // namespace ZplCore
