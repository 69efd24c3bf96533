#pragma once

#include <memory>

#include "fields/map/FieldMap.h"
#include "frontend/context/ContextProcessor.h"

namespace ZplCore {

/// What there is to tell of the field in force, whether it has been drawn or not.
std::unique_ptr<FieldDetails> DescribeField(FieldMap const& map, ContextProcessor const& processor);

}  // namespace ZplCore
