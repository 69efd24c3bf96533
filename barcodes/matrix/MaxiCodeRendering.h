#pragma once

#include "frontend/context/ContextProcessor.h"

namespace ZplCore {

struct MaxiCodeOptions {
    unsigned mode = 2;
    unsigned index = 1;  ///< in a structured append of `count` symbols
    unsigned count = 1;
};

void RenderMaxiCode(ContextProcessor& processor, MaxiCodeOptions const& options);

}  // namespace ZplCore
