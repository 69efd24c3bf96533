#include "fields/scan/SymbolCheck.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "fields/ink/MissingInk.h"
#include "fields/scan/SymbolReading.h"
#include "foundation/Quoted.h"

namespace ZplCore {

using Scripting::PixelBox;
using Scripting::PixelRows;

namespace {

/// The side of the page's part of a symbol that stands upright, once the symbol is turned.
Side Turned(Side upright, ZplOrientation orientation) {
    constexpr Side Clockwise[] = {Side::Left, Side::Top, Side::Right, Side::Bottom};
    auto const at = std::find(std::begin(Clockwise), std::end(Clockwise), upright) - std::begin(Clockwise);
    return Clockwise[(static_cast<unsigned>(at) + static_cast<unsigned>(orientation) / 90) % 4];
}

double Of(QuietZone const& zone, Side side) {
    switch (side) {
        case Side::Left: return zone.left;
        case Side::Right: return zone.right;
        case Side::Top: return zone.top;
        case Side::Bottom: break;
    }
    return zone.bottom;
}

std::string Percent(double share) { return std::to_string(std::max(1L, std::lround(share * 100))) + " %"; }

}  // namespace

SymbolCheck::SymbolCheck(FieldMap const& map, std::size_t index, unsigned pageDpi, SymbolReader const* reader)
    : map_(map),
      field_(map.Fields()[index]),
      symbol_(*field_.symbol),
      rule_(RuleOf(symbol_.symbology)),
      reader_(reader),
      enlargement_(std::clamp(map.Page().formatScale, 1U, 64U)),
      pixelsPerDot_(map.Gauge().PixelsPerDot() / enlargement_),
      millimetres_(enlargement_ * 25.4 / std::max(1U, pageDpi)) {}

std::optional<ScanVerdict> SymbolCheck::Judge() {
    CheckPage();
    for (auto const& picture : symbol_.pictures) {
        if (!isCut_) CheckInk(picture);
        CheckModule(picture);
        if (!isCut_) CheckQuietZone(picture);
        CheckHeight(picture);
        if (reader_ && !isCut_) CheckReading(picture);
        // Of several symbols of a field one is told.
        if (!problems_.empty()) break;
    }
    if (problems_.empty()) return std::nullopt;
    std::stable_sort(problems_.begin(), problems_.end(),
                     [](Problem const& a, Problem const& b) { return a.isFault > b.isFault; });
    ScanVerdict verdict{problems_[0].isFault, "the barcode " + Quoted(field_.data) + ' ' + problems_[0].says};
    for (std::size_t i = 1; i < problems_.size(); ++i) verdict.text += "; it also " + problems_[i].says;
    return verdict;
}

void SymbolCheck::CheckPage() {
    std::string const loss = LossOfSymbol(field_, map_.Gauge());
    isCut_ = !loss.empty();
    if (isCut_) Add(true, loss + MendOfCut());
}

void SymbolCheck::CheckInk(PixelRows const& picture) {
    constexpr double Harmless = 0.1;     // of the lines across bars
    constexpr double MostOfLines = 0.9;  // of the same: what is left is no line for a scanner
    constexpr double HarmlessArea = 0.01;
    constexpr double MostOfArea = 0.3;  // what the strongest error correction repairs
    auto const likeness = Compare(map_.Gauge(), picture, HasLevelBars(), field_.ink.text);
    isInverted_ = likeness.isInverted;
    if (isInverted_) {
        std::string const who = rule_.mayBeWhiteOnBlack
                                    ? "which only some scanners read"
                                    : "and scanners read " + std::string(rule_.name) + " black on white";
        Add(!rule_.mayBeWhiteOnBlack, "is white on black, " + who + ": draw it without the black beneath it");
    }
    double const share =
        IsBars() ? static_cast<double>(likeness.wrongLines) / std::max(1, likeness.lines)
                 : static_cast<double>(likeness.wrong) / static_cast<double>(std::max<std::size_t>(1, likeness.pixels));
    if (share < (IsBars() ? Harmless : HarmlessArea)) return;
    bool const isFault = share >= (IsBars() ? MostOfLines : MostOfArea);
    std::string const much = !IsBars() ? "on " + Percent(share) + " of its area"
                             : isFault ? "across its whole height"
                                       : "on " + Percent(share) + " of its height";
    overprinter_ = Intruder(likeness.wrongBox);
    Add(isFault, "is overprinted " + much +
                     (overprinter_.empty() ? " by what stood there before it: draw it on white"
                                           : " by " + overprinter_ + ": move one of them"));
}

void SymbolCheck::CheckModule(PixelRows const& picture) {
    if (rule_.moduleBy == SymbologyRule::ModuleBy::Symbology) return;
    module_ = LeastRun(picture, HasLevelBars(), IsBars() ? 1 : 8);
    double const width = module_ * millimetres_;
    constexpr double Rounding = 0.99;
    if (module_ == 0 || width >= rule_.leastModule * Rounding) return;
    Add(false, "has modules of " + Figure(width, 3) + " mm, and scanners need " + Figure(rule_.leastModule, 3) +
                   " mm: " + MendOfModule());
}

void SymbolCheck::CheckQuietZone(PixelRows const& picture) {
    constexpr double Share = 0.1;  // scanners are not that exact
    std::string says;
    std::string mends;
    for (Side const side : Sides) {
        if (NeededAt(side) == 0) continue;
        Margin const margin = MarginAt(picture.box, side, 0);
        if (margin.clear + std::max(1.0, Share * margin.needed) >= margin.needed) continue;
        auto const next = Strip(Strip(picture.box, side, margin.clear), side, 1);
        std::string const intruder = margin.endsPage ? std::string() : Intruder(next);
        // What stands on the symbol stands beside it too.
        if (!intruder.empty() && intruder == overprinter_) continue;
        std::string const mend = MendOfMargin(side, margin, MarginAt(picture.box, Opposite(side), margin.needed));
        says += (says.empty() ? "needs " : " and ") + SaysMargin(side, margin, intruder);
        if (mends.find(mend) == mends.npos) mends += (mends.empty() ? "" : ", and ") + mend;
    }
    if (!says.empty()) Add(false, says + ": " + mends);
}

void SymbolCheck::CheckHeight(PixelRows const& picture) {
    constexpr double Usual = 0.9;  // of what is usual, a person sees no difference
    double const height = (HasLevelBars() ? picture.box.Height() : picture.box.Width()) * millimetres_;
    if (height >= rule_.leastHeight * Usual) return;
    Add(false, "has bars " + Figure(height, 1) + " mm high, and " + Figure(rule_.leastHeight, 1) +
                   " mm are the usual least: make them " + std::to_string(ToDots(rule_.leastHeight / millimetres_)) +
                   " dots high or more");
}

void SymbolCheck::CheckReading(PixelRows const& picture) {
    PixelBox ground = picture.box;
    for (Side const side : Sides) ground.Add(Strip(picture.box, side, static_cast<int>(NeededAt(side))));
    auto shown = map_.Gauge().InkIn(ground);
    if (map_.Page().mirror) Mirror(shown);
    auto const reading = ReadSymbol({symbol_, rule_, picture, std::move(shown), module_}, *reader_);
    std::string const mend =
        map_.Page().mirror ? "print it without mirroring" : "free it of what stands on it or beside it";
    std::string const reads = "reads as " + Quoted(reading.read) + ", ";
    switch (reading.result) {
        case SymbolReading::Result::Right: break;
        case SymbolReading::Result::Unknown: isUnknownToReader_ = true; break;
        case SymbolReading::Result::Unread:
            Add(true, "is not read on its page, though it is on white paper: " + mend);
            break;
        case SymbolReading::Result::Other:
            Add(true, reads + "and on white paper as " + Quoted(reading.wanted) + ": " + mend);
            break;
        case SymbolReading::Result::NotAsAsked:
            Add(false, reads + "and is made of " + Quoted(reading.wanted) + ": send what the symbol can say");
            break;
    }
}

bool SymbolCheck::HasLevelBars() const {
    return symbol_.orientation == ZplOrientation::Normal || symbol_.orientation == ZplOrientation::Inverted;
}

int SymbolCheck::ToDots(double pixels) const {
    constexpr double Exact = 1e-6;
    return static_cast<int>(std::ceil(pixels / pixelsPerDot_ - Exact));
}

double SymbolCheck::NeededAt(Side side) const {
    for (Side const upright : Sides) {
        if (Turned(upright, symbol_.orientation) != side) continue;
        bool const inModules = rule_.moduleBy != SymbologyRule::ModuleBy::Symbology;
        return Of(rule_.quiet, upright) * (inModules ? module_ : 1 / millimetres_);
    }
    return 0;
}

SymbolCheck::Margin SymbolCheck::MarginAt(PixelBox const& symbol, Side side, double spare) const {
    Margin margin{NeededAt(side), 0, false};
    int const depth = static_cast<int>(std::ceil(margin.needed + spare));
    PixelBox from = symbol;
    if (IsBars()) {
        // A line for the scanner is wanted, not the corners.
        int const edge = (IsLevel(side) ? symbol.Height() : symbol.Width()) / 10;
        (IsLevel(side) ? from.top : from.left) += edge;
        (IsLevel(side) ? from.bottom : from.right) -= edge;
    }
    margin.clear = GroundAt(map_.Gauge(), {from, side, depth, isInverted_, field_.ink.text});
    PixelBox const page = map_.Gauge().PrintArea();
    PixelBox const outer = map_.Gauge().OnPage(Strip(symbol, side, depth));
    int const beyond = std::max(
        {page.left - outer.left, page.top - outer.top, outer.right - page.right, outer.bottom - page.bottom, 0});
    int const onPage = depth - static_cast<int>(std::ceil(beyond / enlargement_));
    margin.endsPage = onPage <= margin.clear && beyond > 0;
    margin.clear = std::min(margin.clear, std::max(0, onPage));
    return margin;
}

}  // namespace ZplCore
