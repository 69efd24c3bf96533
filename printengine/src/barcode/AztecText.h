#pragma once

#include <string>
#include <vector>

namespace Barcode::Encoder {

/// A text in an extended channel; 0 is the usual one.
struct AztecSegment {
    std::string text;
    unsigned channel = 0;  ///< up to 999999
};

struct AztecBits {
    std::vector<bool> bits;
    /// In the mode at the end ten ones announce bytes. Readers skip what then lacks behind a text, but not all do.
    bool onesShiftToBytes = false;
};

/// The fewest bits that the modes of ISO/IEC 24778 make of texts. With `isAppended` the first begins with the header of
/// a structured append, which is marked as such.
AztecBits EncodeAztecText(std::vector<AztecSegment> const& segments, bool isAppended);

}  // namespace Barcode::Encoder
