#pragma once

#include <utility>

#include "fields/map/FieldMap.h"
#include "frontend/context/ContextProcessor.h"
#include "frontend/context/ZplContextKeys.h"

namespace ZplCore {

/// Stores what draws the field under way, and `describe(processor, notes)`, which tells what that is; the latter costs
/// nothing where nobody asks.
template <typename Describe>
void StoreFieldFunction(Context& current, ContextProcessor& processor, ZplContextKeys::RenderFunction render,
                        Describe&& describe) {
    processor.set(current, ZplContextKeys::FieldRenderFunction, std::move(render));
    if (auto const& map = processor.GetFieldMap(); map && map->WantsDetails())
        processor.set(current, ZplContextKeys::FieldDescription,
                      ZplContextKeys::DescribeFunction(std::forward<Describe>(describe)));
}

}  // namespace ZplCore
