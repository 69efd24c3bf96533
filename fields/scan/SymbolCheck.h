#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "fields/map/FieldMap.h"
#include "fields/scan/SymbolPixels.h"
#include "fields/scan/Symbologies.h"

namespace ZplCore {

/// Looks at one barcode of a finished label.
class SymbolCheck {
public:
    /// A field that has a symbol; `pageDpi` is pixels of the finished page per inch. Without
    /// a reader the symbol is looked at, and not read.
    SymbolCheck(FieldMap const& map, std::size_t index, unsigned pageDpi, SymbolReader const* reader);

    /// Nothing if a scanner has nothing to complain of.
    std::optional<ScanVerdict> Judge();
    /// Whether the page shows less than all of it.
    bool IsCut() const { return isCut_; }
    /// Whether the reader does not know such symbols.
    bool IsUnknownToReader() const { return isUnknownToReader_; }

private:
    /// What goes behind the name of the barcode: what is wrong, and how to mend it.
    struct Problem {
        bool isFault;
        std::string says;
    };
    /// The ground at one side of a symbol.
    struct Margin {
        double needed = 0;      ///< pixels
        int clear = 0;          ///< pixels, looked at as far as is needed or may be spared
        bool endsPage = false;  ///< what follows is the page's edge
    };

    void CheckPage();
    void CheckInk(Scripting::PixelRows const& picture);
    void CheckModule(Scripting::PixelRows const& picture);
    void CheckQuietZone(Scripting::PixelRows const& picture);
    void CheckHeight(Scripting::PixelRows const& picture);
    void CheckReading(Scripting::PixelRows const& picture);

    double NeededAt(Side side) const;
    /// `spare` are pixels beyond those that are needed: as far as the field may have to move to give room at the other
    /// side.
    Margin MarginAt(Scripting::PixelBox const& symbol, Side side, double spare) const;
    bool HasLevelBars() const;
    bool IsBars() const { return rule_.shape == SymbologyRule::Shape::Bars; }
    /// Dots of the stream that take at least so many pixels.
    int ToDots(double pixels) const;

    // Words.
    std::string SaysMargin(Side side, Margin const& margin, std::string const& intruder) const;
    std::string MendOfMargin(Side side, Margin const& margin, Margin const& opposite) const;
    std::string MendOfCut() const;
    std::string MendOfModule() const;
    std::string Move(Side towards, int dots) const;
    std::string_view NameOnPage(Side drawn) const;
    /// The field besides this one that has drawn there; empty if none has.
    std::string Intruder(Scripting::PixelBox const& where) const;

    void Add(bool isFault, std::string says) { problems_.push_back({isFault, std::move(says)}); }

    FieldMap const& map_;
    MappedField const& field_;
    MappedSymbol const& symbol_;
    SymbologyRule const& rule_;
    SymbolReader const* reader_;
    double enlargement_;
    double pixelsPerDot_;  ///< of the label as it is drawn
    double millimetres_;   ///< of such a pixel on the page
    double module_ = 0;    ///< pixels; 0 where it is not known
    bool isCut_ = false;
    bool isUnknownToReader_ = false;
    bool isInverted_ = false;
    std::string overprinter_;        ///< its name; empty if it is not known or there is none
    std::vector<Problem> problems_;  ///< the worst first
};

/// A length for people: "0.125", "5".
std::string Figure(double value, int decimals);

}  // namespace ZplCore
