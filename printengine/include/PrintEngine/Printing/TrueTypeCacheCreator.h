#pragma once

#include <memory>

#include "Scripting/Api.h"

namespace PrintEngine::Printing {

/// Opened font files and rasterised glyphs, shared by all drawing targets that are made with it. One thread at a time.
class PRINTENGINE_API TrueTypeCacheCreator {
public:
    TrueTypeCacheCreator();
    ~TrueTypeCacheCreator();
    TrueTypeCacheCreator(TrueTypeCacheCreator const&) = delete;
    TrueTypeCacheCreator& operator=(TrueTypeCacheCreator const&) = delete;

    struct Cache;
    /// For the print engine itself.
    Cache& GetCache() { return *cache_; }

private:
    std::unique_ptr<Cache> cache_;
};

}  // namespace PrintEngine::Printing
