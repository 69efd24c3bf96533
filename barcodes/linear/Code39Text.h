#pragma once

#include <string>

namespace ZplCore::Code39 {

/// In upper case, without what the symbology lacks; start and stop characters that a host sent are lacking too.
std::string TransformInvalidInput(std::string const& text);

}  // namespace ZplCore::Code39
