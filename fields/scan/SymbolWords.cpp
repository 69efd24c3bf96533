#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include "fields/scan/SymbolCheck.h"
#include "foundation/Quoted.h"

namespace ZplCore {

using Scripting::PixelBox;

namespace {

std::int64_t AreaOf(PixelBox const& box) { return std::int64_t{box.Width()} * box.Height(); }

std::string NameOf(MappedField const& field) {
    if (field.isBarcode) return "the barcode " + Quoted(field.data);
    if (!field.ink.text.IsEmpty()) return "the text " + Quoted(field.data);
    std::string const what = !field.ink.image.IsEmpty() ? "the picture"
                             : field.IsEmpty()          ? "the white box or line"
                                                        : "the box or line";
    if (!field.origin) return what;
    return what + " at x = " + std::to_string(field.origin->x) + ", y = " + std::to_string(field.origin->y);
}

/// What a box of ink lies in.
constexpr std::array Inks = {&Scripting::FieldInk::text, &Scripting::FieldInk::image, &Scripting::FieldInk::shape,
                             &Scripting::FieldInk::white};

}  // namespace

std::string Figure(double value, int decimals) {
    std::array<char, 32> digits{};
    auto const end =
        std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed, decimals);
    std::string text(digits.data(), end.ptr);
    if (text.find('.') == text.npos) return text;
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.pop_back();
    return text;
}

std::string SymbolCheck::Intruder(PixelBox const& where) const {
    MappedField const* nearest = nullptr;
    auto least = std::numeric_limits<std::int64_t>::max();
    for (auto const& field : map_.Fields()) {
        if (&field == &field_) continue;
        for (auto const ink : Inks) {
            PixelBox const& box = field.ink.*ink;
            // A frame around it all is not what stands in the way if something smaller is.
            if (box.Within(where).IsEmpty() || AreaOf(box) >= least) continue;
            least = AreaOf(box);
            nearest = &field;
        }
    }
    return nearest ? NameOf(*nearest) : std::string();
}

std::string_view SymbolCheck::NameOnPage(Side drawn) const {
    bool const isTurned = !map_.Page().upright;
    bool const isFlipped = IsLevel(drawn) ? map_.Page().mirror != isTurned : isTurned;
    switch (isFlipped ? Opposite(drawn) : drawn) {
        case Side::Left: return "on the left";
        case Side::Right: return "on the right";
        case Side::Top: return "above";
        case Side::Bottom: break;
    }
    return "below";
}

std::string SymbolCheck::SaysMargin(Side side, Margin const& margin, std::string const& intruder) const {
    bool const inModules = rule_.moduleBy != SymbologyRule::ModuleBy::Symbology;
    double const unit = inModules ? module_ : 1 / millimetres_;
    // A white that is too small is never told as large enough.
    double const has = std::floor(margin.clear / unit * 10) / 10;
    std::string const needed = Figure(margin.needed / unit, 1);
    std::string text = needed +
                       (!inModules      ? " mm"
                        : needed == "1" ? " module"
                                        : " modules") +
                       " of " + (isInverted_ ? "black " : "white ") + std::string(NameOnPage(side)) + " and has " +
                       Figure(has, 1);
    if (margin.endsPage) return text + " to the edge of the page";
    return intruder.empty() ? text : text + " to " + intruder;
}

std::string SymbolCheck::Move(Side towards, int dots) const {
    bool const isLevel = IsLevel(towards);
    bool const isFurther = towards == Side::Right || towards == Side::Bottom;
    if (!field_.origin) {
        constexpr std::string_view Ways[] = {"to the left", "to the right", "up", "down"};
        return std::to_string(dots) + " dots " + std::string(Ways[static_cast<std::size_t>(towards)]);
    }
    int const at = (isLevel ? field_.origin->x : field_.origin->y) + (isFurther ? dots : -dots);
    if (at < 0) return {};
    return std::string(isLevel ? "to x = " : "to y = ") + std::to_string(at) + (isFurther ? " or more" : " or less");
}

std::string SymbolCheck::MendOfMargin(Side side, Margin const& margin, Margin const& opposite) const {
    double const lacking = margin.needed - margin.clear;
    if (opposite.clear - lacking >= opposite.needed) {
        std::string const place = Move(Opposite(side), ToDots(lacking));
        if (!place.empty()) return "move the field " + place;
    }
    if (!margin.endsPage) return "give it more room";
    return "make the symbol smaller or the page larger";
}

std::string SymbolCheck::MendOfCut() const {
    auto const& gauge = map_.Gauge();
    PixelBox const page = gauge.PrintArea();
    PixelBox const all = gauge.OnPage(field_.ink.image);
    std::string places;
    // How far beyond each edge of the page, as the page stands.
    int const beyond[] = {page.left - all.left, all.right - page.right, page.top - all.top, all.bottom - page.bottom};
    for (Side const side : Sides) {
        int const pixels = beyond[static_cast<std::size_t>(side)];
        if (pixels <= 0) continue;
        bool const isLevel = IsLevel(side);
        bool const fits = isLevel ? all.Width() <= page.Width() : all.Height() <= page.Height();
        bool const isTurned = !map_.Page().upright;
        bool const isFlipped = isLevel ? map_.Page().mirror != isTurned : isTurned;
        std::string const place =
            fits ? Move(isFlipped ? side : Opposite(side), ToDots(pixels / enlargement_)) : std::string();
        if (place.empty()) return "; make the symbol smaller or the page larger";
        places += (places.empty() ? "" : " and ") + place;
    }
    return "; move the field " + places;
}

std::string SymbolCheck::MendOfModule() const {
    std::string const dots = std::to_string(ToDots(rule_.leastModule / millimetres_));
    switch (rule_.moduleBy) {
        case SymbologyRule::ModuleBy::BarcodeDefaults: return "set them to " + dots + " dots or more with ^BY";
        case SymbologyRule::ModuleBy::Magnification: return "give it a magnification of " + dots + " or more";
        default: return "make them " + dots + " dots wide or more";
    }
}

}  // namespace ZplCore
