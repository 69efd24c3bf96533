#include "printengine/src/text/TextLayout.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <span>

#include "printengine/src/fonts/FaceChain.h"
#include "printengine/src/scripts/Modules.h"
#include "printengine/src/text/TextRuns.h"
#include "printengine/src/text/Utf8.h"

namespace PrintEngine::Text {

namespace {

using Scripts::CharacterKind;
using Scripts::Script;

constexpr double UnitsInEm = 1 << 16;

/// Sets one text.
class LineSetter {
public:
    LineSetter(Fonts::Typeface& typeface, std::u32string text)
        : typeface_(typeface), module_(Scripts::ScriptsModule()), text_(std::move(text)), mirrored_(text_) {
        if (!module_)
            typeface_.Faces().Warn("text is neither shaped nor ordered: " + Scripts::WhyNoScripts(),
                                   "module of scripts");
    }

    TextLine Set(TextLayout::Order order) {
        bool const isVisual = order == TextLayout::Order::Visual;
        if (isVisual) levels_ = FindLevels(mirrored_, ParagraphDirection::ByFirstLetter).levels;
        levels_.resize(text_.size());
        if (!isVisual && module_) FindDirections();
        auto runs = FindRuns(text_, levels_);
        if (isVisual) OrderRuns(runs);
        for (TextRun const& run : runs) Add(run);
        TextLine line;
        for (std::size_t i = 0; i < glyphs_.size(); ++i) {
            line.advance += glyphs_[i].advance;
            if (BeginsCluster(glyphs_, i)) ++line.clusters;
        }
        line.glyphs = std::move(glyphs_);
        return line;
    }

private:
    /// Levels by which each script is shaped in its own direction, whatever stands beside it.
    void FindDirections() {
        for (std::size_t i = 0; i < text_.size(); ++i) {
            bool const isShaped = Scripts::TraitsOf(text_[i]).kind == CharacterKind::Shaped;
            levels_[i] = isShaped && module_->runsRightToLeft(text_[i]) ? 1 : 0;
        }
    }

    void Add(TextRun const& run) {
        bool const isSet = run.kind == TextRun::Kind::Word     ? AddWord(run)
                           : run.kind == TextRun::Kind::Shaped ? AddComposed(run) || AddShaped(run)
                                                               : false;
        if (!isSet) AddPlain(run);
    }

    void AddCharacter(char32_t character, std::uint32_t at) {
        if (Fonts::IsControl(character)) return;
        glyphs_.push_back({character, typeface_.Advance(character), 0, 0, at});
    }

    void AddPlain(TextRun const& run) {
        for (std::uint32_t i = run.begin; i < run.end; ++i) {
            std::uint32_t const at = run.level % 2 == 0 ? i : run.end - 1 - (i - run.begin);
            AddCharacter(mirrored_[at], at);
        }
    }

    std::u32string Of(TextRun const& run) const { return text_.substr(run.begin, run.end - run.begin); }

    bool AddWord(TextRun const& run) {
        // In cells each character stands for itself.
        if (typeface_.StandsOnDots()) return false;
        Fonts::FaceChain& faces = typeface_.Faces();
        Fonts::Face* const face = faces.FindFor(Of(run), run.script);
        if (!face || face == faces.Primary()) return false;
        Fonts::EmDots const em = typeface_.EmOf(*face);
        for (std::uint32_t i = run.begin; i < run.end; ++i) {
            std::uint32_t const at = run.level % 2 == 0 ? i : run.end - 1 - (i - run.begin);
            unsigned const glyph = face->GlyphIndex(text_[at]);
            glyphs_.push_back({Fonts::Picture::OfGlyph(face->Number(), glyph, true),
                               Fonts::GlyphAdvance(face->Advance(glyph), em), 0, 0, at});
        }
        return true;
    }

    /// A letter with its marks as the one character that the font has for them.
    bool AddComposed(TextRun const& run) {
        if (run.script != Script::None || !module_) return false;
        std::u32string marked = Of(run);
        std::erase_if(marked, Scripts::IsInvisible);
        char32_t const letter = module_->compose(marked.data(), static_cast<std::uint32_t>(marked.size()));
        if (letter == 0) return false;
        // A cell holds one picture, whatever face it comes from.
        bool const isInCell = typeface_.StandsOnDots() && typeface_.Faces().FindFor({letter}, Script::None);
        if (!isInCell && !typeface_.HasItself(letter)) return false;
        AddCharacter(letter, run.begin);
        return true;
    }

    bool AddShaped(TextRun const& run) {
        Fonts::Face* const face = module_ ? typeface_.Faces().FindFor(Of(run), run.script) : nullptr;
        void* const shaping = face ? face->ForShaping() : nullptr;
        if (!shaping) return false;
        std::vector<ZplShapedGlyph> shaped(16 + std::size_t{4} * (run.end - run.begin));
        for (;;) {
            std::size_t const made = module_->shape(shaping, text_.data(), static_cast<std::uint32_t>(text_.size()),
                                                    run.begin, run.end - run.begin, run.level % 2, shaped.data(),
                                                    static_cast<std::uint32_t>(shaped.size()));
            bool const isWhole = made <= shaped.size();
            shaped.resize(made);
            if (isWhole) break;
        }
        AddGlyphs(shaped, *face, run.level % 2 != 0);
        return true;
    }

    void AddGlyphs(std::span<ZplShapedGlyph const> shaped, Fonts::Face& face, bool isRightToLeft) {
        Fonts::EmDots const em = typeface_.EmOf(face);
        double const perUnit = em.width / UnitsInEm;
        std::size_t const first = glyphs_.size();
        std::vector<double> stretches;  // of the glyphs that move the pen; 0 for marks
        for (ZplShapedGlyph const& glyph : shaped) {
            double const own = face.Advance(glyph.glyph);
            int const advance = Fonts::GlyphAdvance(own, em);
            // Some glyphs move the pen by more or less than the file says.
            auto const more = static_cast<int>(std::lround(glyph.advance * perUnit - own * em.width));
            stretches.push_back(glyph.advance == 0 ? 0 : Fonts::StretchOf(own, em));
            glyphs_.push_back({Fonts::Picture::OfGlyph(face.Number(), glyph.glyph, false),
                               glyph.advance == 0 ? 0 : std::max(0, advance + more),
                               static_cast<float>(glyph.x * perUnit),
                               static_cast<float>(glyph.y * em.height / UnitsInEm), glyph.character});
            if (glyph.glyph == 0) {
                glyphs_.back().picture = text_[std::min<std::size_t>(glyph.character, text_.size() - 1)];
                glyphs_.back().advance = typeface_.Advance(glyphs_.back().picture);
            }
        }
        MoveMarks(stretches, first, isRightToLeft);
    }

    /// Marks follow the stretch of their letter, which stands before them, or behind them from right to left.
    void MoveMarks(std::vector<double> const& stretches, std::size_t first, bool isRightToLeft) {
        double letter = 1;
        for (std::size_t n = 0; n < stretches.size(); ++n) {
            std::size_t const i = isRightToLeft ? stretches.size() - 1 - n : n;
            if (stretches[i] != 0) letter = stretches[i];
            LineGlyph& glyph = glyphs_[first + i];
            glyph.x *= static_cast<float>(letter);
            if (!typeface_.StandsOnDots()) continue;
            glyph.x = std::round(glyph.x);
            glyph.y = std::round(glyph.y);
        }
    }

    Fonts::Typeface& typeface_;
    ZplScriptsModule const* module_;
    std::u32string text_;
    std::u32string mirrored_;  ///< the text with the brackets of what runs to the left
    std::vector<std::uint8_t> levels_;
    std::vector<LineGlyph> glyphs_;
};

}  // namespace

TextLine TextLayout::Set(Fonts::Typeface& typeface, std::u32string text, Order order) {
    return LineSetter(typeface, std::move(text)).Set(order);
}

TextLine const& TextLayout::Of(Fonts::Typeface& typeface, std::string_view text, Order order) {
    std::uint64_t const id = typeface.Id();
    std::string key(text);
    key.append(reinterpret_cast<char const*>(&id), sizeof id).push_back(static_cast<char>(order));
    if (auto const known = lines_.find(key); known != lines_.end()) return known->second;
    std::u32string characters;
    while (!text.empty()) characters += TakeCharacter(text);
    TextLine line = Set(typeface, std::move(characters), order);
    std::size_t const bytes = key.size() + line.glyphs.size() * sizeof(LineGlyph) + sizeof(TextLine) + 64;
    if (bytes_ + bytes > MostBytes) {
        lines_.clear();
        bytes_ = 0;
    }
    bytes_ += bytes;
    return lines_[std::move(key)] = std::move(line);
}

}  // namespace PrintEngine::Text
