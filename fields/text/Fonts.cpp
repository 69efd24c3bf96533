#include "fields/text/Fonts.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "Scripting/GraphicContext.h"
#include "Scripting/TextGauge.h"
#include "fields/placement/UnitConversion.h"
#include "fields/text/TrueTypeUtils.h"
#include "foundation/Log.h"
#include "foundation/Quoted.h"
#include "frontend/context/ObjectName.h"
#include "frontend/context/ZplContextKeys.h"
#include "frontend/stream/Ascii.h"

namespace ZplCore {

namespace {

constexpr std::string_view BitmapFonts = "ABDEFGH";
constexpr std::string_view OcrFonts = "EH";
constexpr unsigned SmallestScalableSize = 10;  // dots

struct FontMetrics {
    char letter;
    unsigned width;   // dots at magnification 1
    unsigned height;  // dots at magnification 1
};

constexpr FontMetrics DefaultSystemFontMetrics[] = {
    {'A', 5, 9}, {'B', 7, 11}, {'D', 10, 18}, {'E', 20, 41}, {'F', 13, 26}, {'G', 40, 60}, {'H', 19, 30},
};

/// Fonts that are resident in printers of the field, by the stem of their object name, and our font of that face.
struct ResidentFont {
    std::string_view stem;
    std::string_view font;
};
constexpr ResidentFont ResidentFonts[] = {
    {"TT0003M_", "0"},                  // the scalable font of most printers
    {"0", "0"},                         // the same, as an object
    {"OCRA", "H"},     {"OCR-A", "H"},  // reading fonts
    {"OCRB", "E"},     {"OCR-B", "E"},
};

/// Whether an object name in upper case is that of a file, and not of a resident font.
bool IsFontFile(std::string_view name) {
    constexpr std::string_view Extensions[] = {".TTF", ".OTF", ".TTC", ".OTC", ".TTE"};
    return std::any_of(std::begin(Extensions), std::end(Extensions),
                       [name](std::string_view extension) { return name.ends_with(extension); });
}

bool IsOneOf(FontName const& name, std::string_view letters) {
    return name.size() == 1 && letters.find(name[0]) != std::string_view::npos;
}

FontMetrics const& MetricsOf(FontName const& name) {
    for (auto const& row : DefaultSystemFontMetrics) {
        if (IsOneOf(name, {&row.letter, 1})) return row;
    }
    return DefaultSystemFontMetrics[0];
}

/// The font that an object name stands for. One that is listed in this very spelling keeps it.
FontName FontOf(std::string const& objectName, ContextProcessor const& processor) {
    FontName const name = ToFontName(objectName);
    auto const& fonts = processor.at(ZplContextKeys::TrueTypeFonts);
    auto const isListed = [&fonts](FontName const& font) {
        return std::find(fonts.begin(), fonts.end(), font) != fonts.end();
    };
    bool const isOurs = IsBitmapFont(name) || IsCachedFont(name);
    return !isOurs && !isListed(name) && isListed(objectName) ? objectName : name;
}

/// The name behind a font letter, by its substitute if there is one.
FontName NameOf(char letter, ContextProcessor const& processor) {
    auto const& substitutes = processor.at(ZplContextKeys::FontSubstitute);
    auto const found = substitutes.find(letter);
    return found == substitutes.end() ? FontName(1, letter) : FontOf(found->second, processor);
}

bool IsDrawable(FontName const& name, ContextProcessor const& processor) {
    return IsBitmapFont(name) || IsCachedFont(name) || IsTrueTypeFont(name, processor);
}

struct Size {
    unsigned height;
    unsigned width;
};

/// The cell of a scalable font: at least 10 dots each way, and square if only one side is given.
Size ScalableSize(ContextProcessor const& processor) {
    unsigned const height = processor.at(ZplContextKeys::FontHeight);
    unsigned const width = processor.at(ZplContextKeys::FontWidth);
    return {std::max(height ? height : width, SmallestScalableSize),
            std::max(width ? width : height, SmallestScalableSize)};
}

BitmapFontInfo ScaleCachedFont(FontName const& name, ContextProcessor const& processor) {
    auto [height, width] = ScalableSize(processor);
    if (unsigned const scale = processor.at(ZplContextKeys::DpiScaleFactor)) {
        height *= scale;
        width *= scale;
    }
    char const letter = ToBuiltInFont(name).value_or(BuiltInFont{'0'}).letter;
    auto const info =
        TrueTypeUtils::ScaleZPLFont(letter, std::max(height, 1U), width, Scripting::Dpi(DesignDpi(processor)));
    auto const& target = processor.GetGraphicContext();
    if (!target) return {name, 1, 1};
    // All cached fonts are one outline, but for a letter that a file of its own is set for.
    std::string_view const outline =
        IsTrueTypeFont(name, processor) ? std::string_view(name) : TrueTypeUtils::Font0Name;
    return {target->PrepareScaledFont(outline, info, TrueTypeUtils::IsSupportedFont0Character,
                                      TrueTypeUtils::GetZplStringLength),
            1, 1};
}

/// How often the base cell of `base` dots times `scale` goes into `requested` dots, rounded, 1 to 10, times `scale`.
unsigned Magnification(unsigned requested, unsigned base, unsigned scale) {
    constexpr long Largest = 10;
    long const factor = scale ? std::lround(static_cast<double>(requested) / (static_cast<double>(base) * scale)) : 0;
    return static_cast<unsigned>(std::clamp(factor, 1L, Largest)) * scale;
}

BitmapFontInfo ScaleBitmapFont(FontName const& name, ContextProcessor const& processor) {
    auto const& metrics = MetricsOf(name);
    unsigned scale = DesignDpi(processor) == 600 && IsOCRFont(name) ? 2 : 1;
    if (processor.at(ZplContextKeys::UnitOfMeasure) == ZplUnitOfMeasure::Dots)
        scale *= processor.at(ZplContextKeys::DpiScaleFactor);
    unsigned const width = processor.at(ZplContextKeys::FontWidth);
    unsigned const height = processor.at(ZplContextKeys::FontHeight);
    if (width == 0 && height == 0) return {name, scale, scale};
    unsigned const x = Magnification(width, metrics.width, scale);
    unsigned const y = Magnification(height, metrics.height, scale);
    return {name, width ? x : y, height ? y : x};
}

}  // namespace

std::optional<BuiltInFont> ToBuiltInFont(char letter) {
    bool const valid = (letter >= '0' && letter <= '9') || (letter >= 'A' && letter <= 'Z');
    return valid ? std::optional(BuiltInFont{letter}) : std::nullopt;
}

std::optional<BuiltInFont> ToBuiltInFont(FontName const& name) {
    return name.size() == 1 ? ToBuiltInFont(name[0]) : std::nullopt;
}

bool IsBitmapFont(FontName const& name) { return IsOneOf(name, BitmapFonts); }
bool IsCachedFont(FontName const& name) { return IsOneOf(name, TrueTypeUtils::CachedFonts); }
bool IsOCRFont(FontName const& name) { return IsOneOf(name, OcrFonts); }
bool IsFont0(FontName const& name) { return name == "0"; }

bool IsTrueTypeFont(FontName const& name, ContextProcessor const& processor) {
    auto const& fonts = processor.at(ZplContextKeys::TrueTypeFonts);
    auto const isSameLetter = [](char a, char b) { return ToAsciiUpper(a) == ToAsciiUpper(b); };
    bool const isListed = std::any_of(fonts.begin(), fonts.end(), [&](std::string const& font) {
        return font.size() == name.size() && std::equal(font.begin(), font.end(), name.begin(), isSameLetter);
    });
    if (isListed || !IsFontFile(name)) return isListed;
    auto const* const gauge = Scripting::TextGauge::Of(processor.GetGraphicContext().get());
    return gauge && gauge->HasFontFile(name);
}

FontName ToFontName(std::string_view objectName) {
    if (ObjectName::NamesDevice(objectName)) objectName.remove_prefix(2);
    FontName const name = ToAsciiUpper(objectName);
    std::string const stem = name.substr(0, name.find('.'));
    // A file is a font of its own, however short its name is.
    if (stem.size() == 1 && IsFontFile(name)) return name;
    for (auto const& resident : ResidentFonts) {
        if (stem == resident.stem) return FontName(resident.font);
    }
    // Resident bitmap fonts are objects named by their letter.
    return ToBuiltInFont(stem) ? stem : name;
}

std::pair<unsigned, unsigned> GetFontBoundary(ContextProcessor& processor, ZplParseResult<unsigned> height,
                                              ZplParseResult<unsigned> width) {
    if (height || width) return {height.ValueOr(0), width.ValueOr(0)};
    auto const ofSystem = [&processor](ContextKey<unsigned> const& key) {
        Context const* system = processor.GetContext(ContextProcessor::SystemContext);
        unsigned const* value = system ? system->Find(key) : nullptr;
        return value ? *value : key.defaultValue;
    };
    return {ofSystem(ZplContextKeys::FontHeight), ofSystem(ZplContextKeys::FontWidth)};
}

FontName TransformToZplFont(std::variant<BuiltInFont, UserFont> const& font, ContextProcessor const& processor) {
    auto const* builtIn = std::get_if<BuiltInFont>(&font);
    FontName name = builtIn ? NameOf(builtIn->letter, processor) : FontOf(std::get<UserFont>(font).name, processor);
    if (IsDrawable(name, processor)) return name;
    FontName fallback = NameOf(processor.at(ZplContextKeys::DefaultFont), processor);
    bool const hasDefault = IsDrawable(fallback, processor);
    // A field without a font command names none, but the one that ^CF has chosen.
    bool const isNamed = !builtIn || builtIn->letter != 0;
    if (!isNamed) name = fallback;
    if (!hasDefault) fallback = ZplContextDefaults::FontName;
    if (isNamed || !hasDefault) {
        Log::Report(LogTopic::Font, "font " + Quoted(name) + " is not there; font " + fallback + " stands for it");
    }
    return fallback;
}

FontName GetZplFont(ContextProcessor const& processor) {
    return TransformToZplFont(processor.at(ZplContextKeys::FontIdentifier), processor);
}

std::variant<BitmapFontInfo, TrueTypeFontInfo> GetFontScaleInfo(FontName const& name,
                                                                ContextProcessor const& processor) {
    if (IsCachedFont(name)) return ScaleCachedFont(name, processor);
    if (IsBitmapFont(name)) return ScaleBitmapFont(name, processor);
    auto const [height, width] = ScalableSize(processor);
    auto const scale = TrueTypeUtils::ScaleTrueTypeFont(height, width);
    return TrueTypeFontInfo{name, scale.pointSize, scale.widthPercent};
}

FontCell GetFontCell(FontName const& name, ContextProcessor const& processor) {
    if (IsCachedFont(name) || !IsBitmapFont(name)) {
        auto const [height, width] = ScalableSize(processor);
        unsigned const scale = IsCachedFont(name) ? std::max(processor.at(ZplContextKeys::DpiScaleFactor), 1U) : 1;
        return {height * scale, width * scale};
    }
    auto const& metrics = MetricsOf(name);
    auto const bitmap = ScaleBitmapFont(name, processor);
    return {metrics.height * bitmap.magnificationY, metrics.width * bitmap.magnificationX, bitmap.magnificationX,
            bitmap.magnificationY};
}

int TextProcessing::Get600DpiVerticalOffset(FontName const& name, Scripting::Dpi dpi, ZplOrientation orientation,
                                            unsigned magnificationY) {
    if (dpi != Scripting::Dpi(600) || !IsOCRFont(name)) return 0;
    int const half = static_cast<int>(magnificationY / 2);
    return orientation == ZplOrientation::Normal || orientation == ZplOrientation::BottomUp ? half : -half;
}

void UseFontFiles(std::string_view setting, PrintEngine::Printing::TrueTypeCacheCreator& fonts) {
    for (std::string_view rest = setting; !rest.empty();) {
        std::string_view const entry = rest.substr(0, rest.find(';'));
        rest.remove_prefix(std::min(entry.size() + 1, rest.size()));
        auto const equals = entry.find('=');
        if (equals == 0 || equals == entry.npos) continue;
        fonts.SetFontFile(ToAsciiUpper(entry.substr(0, equals)), entry.substr(equals + 1));
    }
}

}  // namespace ZplCore
