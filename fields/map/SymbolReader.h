#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "Scripting/InkGauge.h"

namespace ZplCore {

/// Reads symbols as a scanner does. Several threads may ask it at once.
class SymbolReader {
public:
    virtual ~SymbolReader() = default;

    /// What the one symbol of a kind says that stands in a picture, in bytes with FNC1 as 0x1D; nothing if none can be
    /// read. `format` is the reader's name of the kind, and `module` the pixels of a module, 0 if that is not known.
    virtual std::optional<std::string> Read(Scripting::PixelRows const& picture, std::string_view format,
                                            double module) const = 0;
};

}  // namespace ZplCore
