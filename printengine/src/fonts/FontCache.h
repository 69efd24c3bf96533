#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "PrintEngine/Printing/TrueTypeCacheCreator.h"
#include "Scripting/GraphicContext.h"
#include "printengine/src/fonts/FaceChain.h"
#include "printengine/src/fonts/GlyphCache.h"
#include "printengine/src/fonts/Typeface.h"

namespace PrintEngine::Printing {

/// All fonts in use: opened files, fonts at their sizes, glyphs.
struct TrueTypeCacheCreator::Cache {
public:
    /// A bitmap font letter, or a font that Prepare named. Any other name is taken as bitmap font A.
    Fonts::Typeface& Find(std::string_view font);
    bool IsBitmapOrPrepared(std::string_view font) const;

    /// A scalable font at a size; asked for the same again it answers the same name. `designDpi` tells the size of an
    /// em.
    std::string Prepare(std::string_view name, Scripting::ScaledFontMetrics const& metrics, unsigned designDpi);
    /// A TrueType font at an em of these many dots. Valid until the next call.
    Fonts::Typeface& TrueType(std::string_view font, double emWidth, double emHeight);
    /// Height of a line of a TrueType font, in parts of an em.
    double TrueTypeLineHeight(std::string_view font);

    Fonts::GlyphCache& Glyphs() { return glyphs_; }
    Fonts::FontFiles& Files() { return faces_.Files(); }
    /// See TrueTypeCacheCreator.
    void SetWarningReceiver(WarningReceiver receiver) { faces_.SetWarningReceiver(std::move(receiver)); }
    void Warn(std::string const& line) const { faces_.Warn(line); }

private:
    bool IsLastPrepared(std::string_view font) const {
        return lastPrepared_ != prepared_.end() && lastPrepared_->first == font;
    }
    void DropIfFontFilesChanged();
    Fonts::FaceChain& Chain(std::string_view font, std::vector<std::string> fileNames, bool isBold);
    Fonts::FaceChain& ScalableChain(std::string_view font);
    Fonts::FaceChain& TrueTypeChain(std::string_view font);

    Fonts::FaceStore faces_;
    std::map<std::string, std::unique_ptr<Fonts::FaceChain>, std::less<>> chains_;
    std::map<char, std::unique_ptr<Fonts::Typeface>> cells_;
    /// What a scalable font was prepared by.
    struct Preparation {
        std::string font;
        std::array<std::uint64_t, 7> parameters;  ///< the bits of numbers, so that each has its place
        friend auto operator<=>(Preparation const&, Preparation const&) = default;
    };
    std::map<Preparation, std::string> preparedNames_;
    std::map<std::string, std::unique_ptr<Fonts::Typeface>, std::less<>> prepared_;
    decltype(prepared_)::const_iterator lastPrepared_ = prepared_.end();
    std::deque<Preparation> preparedOrder_;  ///< oldest first
    std::map<std::string, std::unique_ptr<Fonts::Typeface>, std::less<>> trueType_;
    Fonts::GlyphCache glyphs_;
    unsigned serial_ = 0;
    unsigned fontFilesVersion_ = 0;
};

}  // namespace PrintEngine::Printing
