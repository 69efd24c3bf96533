#include "fields/ink/MissingInk.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "foundation/Log.h"

namespace ZplCore {

namespace {

using Scripting::PixelBox;

/// What a field loses at one edge of its page.
struct Loss {
    int missing;  ///< dots; not above 0 where nothing is lost
    int length;   ///< dots of the field across that edge
    std::string_view edge;
};

/// What stays of a box on its page. Lengths are told in dots of the stream.
class Edges {
public:
    explicit Edges(Scripting::InkGauge const& gauge) : area_(gauge.PrintArea()), pixelsPerDot_(gauge.PixelsPerDot()) {}

    bool IsOff(PixelBox const& box) const { return box.Within(area_).IsEmpty(); }

    std::array<Loss, 4> LossesOf(PixelBox const& box) const {
        int const width = Dots(box.Width());
        int const height = Dots(box.Height());
        return {{{Dots(area_.left - box.left), width, "left"},
                 {Dots(box.right - area_.right), width, "right"},
                 {Dots(area_.top - box.top), height, "top"},
                 {Dots(box.bottom - area_.bottom), height, "bottom"}}};
    }

    /// How many pixels off the page a box stands that lies off it, and beyond which edge.
    std::pair<int, std::string_view> DistanceOf(PixelBox const& box) const {
        return std::max({std::pair<int, std::string_view>(area_.left - box.right, "left"),
                         {box.left - area_.right, "right"},
                         {area_.top - box.bottom, "top"},
                         {box.top - area_.bottom, "bottom"}});
    }

    int Dots(int pixels) const { return static_cast<int>(std::ceil(pixels / pixelsPerDot_)); }
    std::string PageSize() const { return SizeOf(area_); }
    std::string SizeOf(PixelBox const& box) const {
        return std::to_string(Dots(box.right)) + " x " + std::to_string(Dots(box.bottom)) + " dots";
    }

private:
    PixelBox area_;
    double pixelsPerDot_;
};

/// "25 dots beyond the right edge".
std::string Beyond(Edges const& edges, std::pair<int, std::string_view> const& distance) {
    std::string const edge = "beyond the " + std::string(distance.second) + " edge";
    int const dots = edges.Dots(distance.first);
    return dots <= 0 ? "just " + edge : std::to_string(dots) + (dots == 1 ? " dot " : " dots ") + edge;
}

/// "45 of its 300 dots are missing at the right edge of the page", for all edges that cut.
std::string Cuts(std::array<Loss, 4> const& losses) {
    std::string text;
    for (auto const& [missing, length, edge] : losses) {
        if (missing <= 0) continue;
        bool const isFirst = text.empty();
        text += (isFirst ? "" : ", and ") + std::to_string(missing) + " of its " + std::to_string(length) +
                (isFirst ? " dots are missing at the " : " at the ") + std::string(edge) + " edge" +
                (isFirst ? " of the page" : "");
    }
    return text;
}

enum class InkKind { Text, Barcode, Picture, Shape };

InkKind KindOf(MappedField const& field) {
    if (!field.ink.image.IsEmpty()) return field.isBarcode ? InkKind::Barcode : InkKind::Picture;
    return field.ink.shape.IsEmpty() ? InkKind::Text : InkKind::Shape;
}

/// Whether so much is lost that it is worth a word. A bar may be the one too many; letters stay legible without their
/// outermost dots, pictures are often as wide as a page and mostly rule and margin there, and a box that runs past the
/// page is meant to.
bool IsWorthAWord(InkKind kind, Loss const& loss) {
    switch (kind) {
        case InkKind::Barcode: return loss.missing > 0;
        case InkKind::Text: return loss.missing > 2 || loss.missing * 8 > loss.length;
        case InkKind::Picture: return loss.missing > 8 && loss.missing * 50 > loss.length;
        case InkKind::Shape: break;
    }
    return false;
}

std::string NameOf(MappedField const& field) {
    switch (KindOf(field)) {
        case InkKind::Text: return "the text \"" + field.data + "\"";
        case InkKind::Barcode: return "the barcode \"" + field.data + "\"";
        case InkKind::Picture: return "the picture";
        case InkKind::Shape: break;
    }
    return "the box or line";
}

/// A part of a field, and how it is called in front of the field's own name.
struct Part {
    LogTopic topic;
    InkKind kind;
    PixelBox box;
    std::string_view name = {};
};

/// What is missing of a part, as it goes behind its name; empty if nothing is.
std::string LossOf(Part const& part, Edges const& edges) {
    if (edges.IsOff(part.box)) return "is not on the page: it stands " + Beyond(edges, edges.DistanceOf(part.box));
    auto const losses = edges.LossesOf(part.box);
    auto const isWorthAWord = [&part](Loss const& loss) { return IsWorthAWord(part.kind, loss); };
    return std::any_of(losses.begin(), losses.end(), isWorthAWord) ? "is cut: " + Cuts(losses) : std::string();
}

/// Reports what is missing of a part; false if nothing is.
bool ReportPart(MappedField const& field, Part const& part, Edges const& edges) {
    std::string const loss = LossOf(part, edges);
    if (loss.empty()) return false;
    Log::Report(part.topic, std::string(part.name) + NameOf(field) + ' ' + loss);
    return true;
}

Part SymbolOf(MappedField const& field, Scripting::InkGauge const& gauge) {
    return {LogTopic::BarcodeCut, InkKind::Barcode, gauge.OnPage(field.ink.image)};
}

bool ReportField(MappedField const& field, Scripting::InkGauge const& gauge, Edges const& edges) {
    InkKind const kind = KindOf(field);
    // A reversed box that meets nothing is the rest of a larger one, and shows nothing itself.
    if (kind == InkKind::Shape && field.isReversed) return false;
    if (kind != InkKind::Barcode)
        return ReportPart(field, {LogTopic::OffPage, kind, gauge.OnPage(field.ink.All())}, edges);
    Part const symbol = SymbolOf(field, gauge);
    if (field.symbol ? !LossOf(symbol, edges).empty() : ReportPart(field, symbol, edges)) return true;
    Part const line{LogTopic::OffPage, InkKind::Text, gauge.OnPage(field.ink.text), "the text line of "};
    return !field.ink.text.IsEmpty() && ReportPart(field, line, edges);
}

/// Whether the whole label lies off its page, which is told in one sentence.
bool ReportBlankPage(FieldMap const& map, Edges const& edges) {
    bool holdsBarcode = false;
    std::size_t count = 0;
    std::optional<std::pair<int, std::string_view>> nearest;
    for (auto const& field : map.Fields()) {
        if (field.IsEmpty()) continue;
        ++count;
        PixelBox const box = map.Gauge().OnPage(field.ink.All());
        if (!edges.IsOff(box)) return false;
        auto const distance = edges.DistanceOf(box);
        if (!nearest || distance.first < nearest->first) nearest = distance;
        holdsBarcode = holdsBarcode || KindOf(field) == InkKind::Barcode;
    }
    // A picture kept from the label before may fill the page.
    if (!nearest || !map.Gauge().IsPageBlank()) return false;
    std::string const all = count == 1 ? "its only field lies off it, "
                                       : "all its " + std::to_string(count) + " fields lie off it, the nearest ";
    Log::Report(holdsBarcode ? LogTopic::BarcodeCut : LogTopic::OffPage,
                "the page of " + edges.PageSize() + " is blank: " + all + Beyond(edges, *nearest));
    return true;
}

/// Where several fields run past the page, the page is mostly not the one that the sender thinks of.
void ReportSize(FieldMap const& map, Edges const& edges) {
    PixelBox drawn;
    for (auto const& field : map.Fields()) {
        if (KindOf(field) != InkKind::Shape) drawn.Add(field.ink.All());
    }
    if (drawn.left < 0 || drawn.top < 0) return;
    PixelBox const needed = map.Gauge().OnPage({0, 0, drawn.right, drawn.bottom});
    PixelBox const page = map.Gauge().PrintArea();
    // A page that is moved loses at one end what a longer one would not hold either.
    if (page.top != 0 || map.Gauge().OnPage({}).top < 0) return;
    PixelBox const enough{0, 0, std::max(needed.Width(), page.right), std::max(needed.Height(), page.bottom)};
    constexpr int LongestSide = 32000;  // dots
    if (edges.Dots(enough.right) > LongestSide || edges.Dots(enough.bottom) > LongestSide) return;
    Log::Report(LogTopic::OffPage,
                "the page is " + edges.PageSize() + "; one of " + edges.SizeOf(enough) + " would hold all fields");
}

}  // namespace

bool ReportMissingInk(FieldMap const& map) {
    Edges const edges(map.Gauge());
    if (ReportBlankPage(map, edges)) return true;
    auto const before = Log::Place();
    unsigned told = 0;
    for (auto const& field : map.Fields()) {
        if (field.IsEmpty()) continue;
        Log::SetPlace(field.place);
        if (ReportField(field, map.Gauge(), edges)) ++told;
    }
    Log::SetPlace(before);
    if (told > 1) ReportSize(map, edges);
    return false;
}

std::string LossOfSymbol(MappedField const& field, Scripting::InkGauge const& gauge) {
    return LossOf(SymbolOf(field, gauge), Edges(gauge));
}

}  // namespace ZplCore
