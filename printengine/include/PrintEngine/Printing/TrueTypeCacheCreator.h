#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "Scripting/Api.h"

namespace PrintEngine::Printing {

/// What all drawing targets that are made with it share: opened font files and rasterised glyphs, which file draws
/// which font, and who is told of what cannot be drawn. One thread at a time.
class PRINTENGINE_API TrueTypeCacheCreator {
public:
    TrueTypeCacheCreator();
    ~TrueTypeCacheCreator();
    TrueTypeCacheCreator(TrueTypeCacheCreator const&) = delete;
    TrueTypeCacheCreator& operator=(TrueTypeCacheCreator const&) = delete;

    /// The font file that draws a font letter, or an object name without its device, in place of the installed one; an
    /// empty path gives the font back to that one.
    void SetFontFile(std::string font, std::filesystem::path file);

    /// Receives one line for each thing that a target had to leave out or replace (a font that is not there, a page
    /// that cannot be written). `subject` is what is told of only once, and empty for what is told each time: who draws
    /// with several of these tells one of several lines of a subject. Without a receiver the lines are dropped.
    using WarningReceiver = std::function<void(std::string_view line, std::string_view subject)>;
    void SetWarningReceiver(WarningReceiver receiver);

    struct Cache;
    /// For the print engine itself.
    Cache& GetCache() { return *cache_; }

private:
    std::unique_ptr<Cache> cache_;
};

}  // namespace PrintEngine::Printing
