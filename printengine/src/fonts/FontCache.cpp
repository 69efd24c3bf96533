#include "printengine/src/fonts/FontCache.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdio>
#include <span>

#include "printengine/src/fonts/CellTypeface.h"
#include "printengine/src/fonts/EmSize.h"
#include "printengine/src/fonts/OutlineTypeface.h"

namespace PrintEngine::Printing {

namespace {

// A label uses a handful of sizes. A stream that asks for more than this gets the oldest ones made again.
constexpr std::size_t MaxPrepared = 512;
constexpr std::size_t MaxTrueType = 256;

/// What draws Chinese, Japanese and Korean: the large fonts where they are installed, else a small one.
constexpr char const* Ideographs[] = {"?NotoSansCJK-Regular.ttc", "wqy-microhei.ttc"};
constexpr char const* BoldIdeographs[] = {"?NotoSansCJK-Bold.ttc", "?NotoSansCJK-Regular.ttc", "wqy-microhei.ttc"};

/// No em is larger than this, in dots: far more than a page, and small enough to be counted with.
constexpr double MaxEm = 1e6;

double Bounded(double em) { return em > 0 ? std::min(em, MaxEm) : 0; }

template <typename... Values>
std::string Format(char const* format, Values... values) {
    char text[160];
    std::snprintf(text, sizeof text, format, values...);
    return text;
}

}  // namespace

TrueTypeCacheCreator::TrueTypeCacheCreator() : cache_(std::make_unique<Cache>()) {}

TrueTypeCacheCreator::~TrueTypeCacheCreator() = default;

void TrueTypeCacheCreator::SetFontFile(std::string font, std::filesystem::path file) {
    cache_->Files().SetFile(std::move(font), std::move(file));
}

void TrueTypeCacheCreator::SetWarningReceiver(WarningReceiver receiver) {
    cache_->SetWarningReceiver(std::move(receiver));
}

void TrueTypeCacheCreator::Cache::DropIfFontFilesChanged() {
    unsigned const version = Files().Version();
    if (version == fontFilesVersion_) return;
    fontFilesVersion_ = version;
    cells_.clear();
    preparedNames_.clear();
    prepared_.clear();
    lastPrepared_ = prepared_.end();
    preparedOrder_.clear();
    trueType_.clear();
    glyphs_.Clear();
    chains_.clear();
}

Fonts::FaceChain& TrueTypeCacheCreator::Cache::Chain(std::string_view font, std::vector<std::string> fileNames,
                                                     bool isBold) {
    auto const known = chains_.find(font);
    if (known != chains_.end()) return *known->second;
    auto const ideographs = isBold ? std::span<char const* const>(BoldIdeographs) : Ideographs;
    fileNames.insert(fileNames.end(), ideographs.begin(), ideographs.end());
    auto chain = std::make_unique<Fonts::FaceChain>(faces_, std::string(font), Files().FileSetFor(font),
                                                    std::move(fileNames), isBold);
    return *chains_.emplace(font, std::move(chain)).first->second;
}

Fonts::FaceChain& TrueTypeCacheCreator::Cache::ScalableChain(std::string_view font) {
    // All scalable letters are drawn by the font of letter 0, unless their own name has a file.
    std::string_view const name = Files().FileSetFor(font).empty() ? "0" : font;
    return Chain(name, {Fonts::Font0File, Fonts::Font0Supplement, "DejaVuSans-Bold.ttf", "DejaVuSans.ttf"}, true);
}

Fonts::FaceChain& TrueTypeCacheCreator::Cache::TrueTypeChain(std::string_view font) {
    // Names of built-in fonts have one character, so they and file names never meet in the map of chains.
    return Chain(font, {std::string(font), "Roboto-Regular.ttf", "DejaVuSans.ttf"}, false);
}

Fonts::Typeface& TrueTypeCacheCreator::Cache::Find(std::string_view font) {
    DropIfFontFilesChanged();
    // One text asks for its font many times.
    if (IsLastPrepared(font)) return *lastPrepared_->second;
    if (auto const prepared = prepared_.find(font); prepared != prepared_.end()) {
        lastPrepared_ = prepared;
        return *prepared->second;
    }
    Fonts::CellFont const* cell = Fonts::FindCellFont(font);
    if (!cell) cell = Fonts::FindCellFont("A");
    std::unique_ptr<Fonts::Typeface>& typeface = cells_[cell->letter];
    if (!typeface) {
        Fonts::FaceChain& faces =
            Chain({&cell->letter, 1}, {cell->file, "DejaVuSansMono.ttf", "DejaVuSans.ttf"}, false);
        // A file that somebody has set for the letter draws all of it.
        bool const isSet = !Files().FileSetFor({&cell->letter, 1}).empty();
        Fonts::Strike* const strike = cell->strike && !isSet ? faces_.OpenStrike(Files().Find(cell->strike)) : nullptr;
        typeface = std::make_unique<Fonts::CellTypeface>(*cell, faces, strike);
    }
    return *typeface;
}

bool TrueTypeCacheCreator::Cache::IsBitmapOrPrepared(std::string_view font) const {
    return IsLastPrepared(font) || Fonts::FindCellFont(font) || prepared_.contains(font);
}

std::string TrueTypeCacheCreator::Cache::Prepare(std::string_view name, Scripting::ScaledFontMetrics const& metrics,
                                                 unsigned designDpi) {
    DropIfFontFilesChanged();
    // Functions cannot be compared: the same sizes stand for the same advances.
    auto const bits = [](double number) { return std::bit_cast<std::uint64_t>(number); };
    Preparation preparation{
        std::string(name),
        {bits(metrics.pointSize), bits(metrics.widthPercent), bits(metrics.cellHeight), bits(metrics.descent),
         bits(metrics.cellWidth), designDpi, metrics.expectedWidth != nullptr}};
    if (auto const known = preparedNames_.find(preparation); known != preparedNames_.end()) return known->second;

    if (preparedOrder_.size() >= MaxPrepared) {
        auto const oldest = preparedNames_.find(preparedOrder_.front());
        lastPrepared_ = prepared_.end();
        prepared_.erase(oldest->second);
        preparedNames_.erase(oldest);
        preparedOrder_.pop_front();
    }
    Fonts::FaceChain& chain = ScalableChain(name);
    // The measured widths are those of one file; any other has its own.
    auto const expectedWidth =
        chain.IsDrawnBy(Fonts::Font0File) ? metrics.expectedWidth : std::function<unsigned(char32_t)>();
    int const descent = std::min(metrics.descent, metrics.cellHeight);
    Fonts::OutlineSize const size{Bounded(Fonts::PreparedEm(metrics.pointSize, designDpi) * metrics.widthPercent / 100),
                                  0, metrics.cellHeight - descent, descent};
    std::string prepared = std::string(name) + Format("#%u", ++serial_);
    prepared_[prepared] = std::make_unique<Fonts::OutlineTypeface>(chain, size, expectedWidth);
    preparedOrder_.push_back(preparation);
    preparedNames_[std::move(preparation)] = prepared;
    return prepared;
}

Fonts::Typeface& TrueTypeCacheCreator::Cache::TrueType(std::string_view font, double emWidth, double emHeight) {
    DropIfFontFilesChanged();
    emWidth = Bounded(emWidth);
    emHeight = Bounded(emHeight);
    std::string const key = std::string(font) + Format("|%.6g|%.6g", emWidth, emHeight);
    if (auto const known = trueType_.find(key); known != trueType_.end()) return *known->second;
    if (trueType_.size() >= MaxTrueType) trueType_.clear();
    Fonts::OutlineSize const size{emWidth, emHeight, static_cast<int>(std::lround(emHeight * 0.7)), 0};
    return *(trueType_[key] = std::make_unique<Fonts::OutlineTypeface>(TrueTypeChain(font), size));
}

double TrueTypeCacheCreator::Cache::TrueTypeLineHeight(std::string_view font) {
    DropIfFontFilesChanged();
    Fonts::Face const* const face = TrueTypeChain(font).Primary();
    return face ? face->LineHeight() : 1.2;
}

}  // namespace PrintEngine::Printing
