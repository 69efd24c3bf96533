#pragma once

#include <memory>
#include <optional>

#include "fields/map/FieldMap.h"
#include "frontend/context/ContextProcessor.h"

namespace ZplCore {

/// Where the field in force asks to stand; nothing if it does not.
std::optional<FieldOrigin> OriginOf(ContextProcessor const& processor);
/// What there is to tell of the field in force, whether it has been drawn or not.
std::unique_ptr<FieldDetails> DescribeField(FieldMap const& map, ContextProcessor const& processor);

}  // namespace ZplCore
