// Measures the outline of font 0 and writes the tables of Font0ScaleInfo as a C++ source.
// usage: MakeFontTables FONTFOLDER OUTPUT.cpp

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "fields/text/Font0Characters.h"
#include "fields/text/Font0ScaleInfo.h"
#include "fields/text/TrueTypeUtils.h"
#include "printengine/src/fonts/EmSize.h"
#include "printengine/src/fonts/FaceChain.h"

namespace {

using namespace PrintEngine::Fonts;

constexpr unsigned SmallestWidth = 10;
constexpr unsigned LargestWidth = 1000;  // dots; the trends are fitted to the widths up to here
constexpr unsigned DesignDpi = 203;
constexpr char32_t FirstListed = 32;
constexpr char32_t LastListed = 126;

std::vector<std::uint16_t> CapturedCharacters() {
    std::vector<std::uint16_t> characters;
    for (std::uint16_t c = FirstListed; c <= LastListed; ++c) characters.push_back(c);
    characters.insert(characters.end(), std::begin(TrueTypeUtils::CapturedAboveAscii),
                      std::end(TrueTypeUtils::CapturedAboveAscii));
    return characters;
}

/// The font, in square cells of a height.
class Measure {
public:
    explicit Measure(FaceChain& faces) : faces_(faces) {}

    int Advance(char32_t character, unsigned cell) const {
        auto const [face, glyph] = Find(character);
        return AdvanceInDots(face->Advance(glyph), Em(cell));
    }

    /// Dots from the last ink to the end of the advance.
    int TrailingSpace(char32_t character, unsigned cell) const {
        auto const [face, glyph] = Find(character);
        GlyphBitmap bitmap;
        face->Render(glyph, Em(cell), cell / face->CapitalHeight(), bitmap);
        return std::max(0, Advance(character, cell) - (bitmap.left + bitmap.width));
    }

private:
    static double Em(unsigned cell) {
        return PreparedEm(TrueTypeUtils::FontPointSize(cell, Scripting::Dpi(DesignDpi)), DesignDpi);
    }

    FaceChain::Found Find(char32_t character) const {
        auto const found = faces_.Find(character);
        if (!found.face) throw std::runtime_error("the fonts lack character " + std::to_string(character));
        return found;
    }

    FaceChain& faces_;
};

struct Trend {
    Font0WidthTrend line{};
    std::vector<std::uint16_t> over;
    std::vector<std::uint16_t> under;

    /// Which widths the line misses, compared with the advances at each width.
    void FindMisses(std::vector<int> const& advances) {
        over.clear();
        under.clear();
        for (unsigned width = SmallestWidth; width <= LargestWidth; ++width) {
            long const dots = std::lround(line.At(width));
            int const measured = advances[width - SmallestWidth];
            if (dots > measured) over.push_back(static_cast<std::uint16_t>(width));
            if (dots < measured) under.push_back(static_cast<std::uint16_t>(width));
        }
    }
};

/// The line that comes nearest to whole-dot advances, by least squares.
Font0WidthTrend FitLine(std::vector<int> const& advances, char32_t character) {
    double const n = static_cast<double>(advances.size());
    double x = 0, y = 0, xx = 0, xy = 0;
    for (std::size_t i = 0; i < advances.size(); ++i) {
        double const width = SmallestWidth + static_cast<double>(i);
        x += width, y += advances[i], xx += width * width, xy += width * advances[i];
    }
    double const slope = (n * xy - x * y) / (n * xx - x * x);
    return {static_cast<float>((y - slope * x) / n), static_cast<float>(slope), character};
}

std::vector<int> Advances(Measure const& measure, char32_t character) {
    std::vector<int> advances;
    for (unsigned width = SmallestWidth; width <= LargestWidth; ++width)
        advances.push_back(measure.Advance(character, width));
    return advances;
}

/// Moves a line up or down until `isReached` holds.
template <typename IsReached>
void MoveUntil(Trend& trend, std::vector<int> const& advances, float step, IsReached isReached) {
    constexpr int MostSteps = 1 << 16;
    trend.FindMisses(advances);
    for (int i = 0; !isReached(trend) && i < MostSteps; ++i) {
        trend.line.intercept += step;
        trend.FindMisses(advances);
    }
    if (!isReached(trend)) throw std::runtime_error("a trend does not fit its list");
}

/// Every width is listed with its neighbour's advance being the right one.
void CheckLists(Trend const& trend, std::vector<int> const& advances) {
    auto const check = [&](std::vector<std::uint16_t> const& list, int toNeighbour) {
        for (unsigned const width : list) {
            auto const neighbour = static_cast<unsigned>(static_cast<int>(width) + toNeighbour);
            if (std::lround(trend.line.At(neighbour)) != advances[width - SmallestWidth])
                throw std::runtime_error("width " + std::to_string(width) + " cannot be corrected");
        }
    };
    check(trend.over, -1);
    check(trend.under, 1);
}

/// A listed character can only be corrected downwards, so its line is raised until it is never too low. The digits have
/// a list of low widths, of a fixed size: their line is lowered until it fills the list. So they err to the narrow side
/// in cells wider than those listed, and columns of figures stay in their boxes.
Trend MakeListedTrend(Measure const& measure, char32_t character) {
    constexpr float Step = 1.0F / 8192;
    std::vector<int> const advances = Advances(measure, character);
    Trend trend{FitLine(advances, character), {}, {}};
    if (character >= '0' && character <= '9') {
        std::size_t const slots = Font0ScaleInfo::DigitUnderWidths.size();
        MoveUntil(trend, advances, -Step, [=](Trend const& t) { return t.under.size() >= slots; });
        // Two widths may have come at once.
        trend.under.resize(slots);
    } else {
        MoveUntil(trend, advances, Step, [](Trend const& t) { return t.under.empty(); });
    }
    CheckLists(trend, advances);
    return trend;
}

class Writer {
public:
    explicit Writer(std::ostream& out) : out_(out) {}

    template <typename Values, typename Print>
    void List(Values const& values, Print print) {
        constexpr std::size_t OnALine = 24;
        out_ << "{{";
        for (std::size_t i = 0; i < std::size(values); ++i) {
            if (i % OnALine == 0 && i != 0) out_ << "\n";
            print(values[i]);
            out_ << ",";
        }
        out_ << "}}";
    }
    template <typename Values>
    void Numbers(Values const& values) {
        List(values, [this](auto value) { out_ << value; });
    }

    /// `measure(character, height)` for the captured characters, a row a height.
    template <typename MeasureCell>
    void CapturedTable(char const* name, unsigned first, unsigned step, unsigned last, MeasureCell measure) {
        auto const characters = CapturedCharacters();
        out_ << "const std::array<Font0ScaleInfo::CapturedRow, " << (last - first) / step + 1
             << "> Font0ScaleInfo::" << name << "{{\n";
        for (unsigned height = first; height <= last; height += step) {
            out_ << "// " << height << " dots\n";
            List(characters, [&](char32_t character) { out_ << measure(character, height); });
            out_ << ",\n";
        }
        out_ << "}};\n";
    }

    void Trends(std::vector<Trend> const& trends) {
        out_ << "const std::array<Font0WidthTrend, " << trends.size() << "> Font0ScaleInfo::Font0WidthTrends{{\n";
        for (Trend const& trend : trends) {
            char row[80];
            std::snprintf(row, sizeof row, "{%aF, %aF, %u},\n", double{trend.line.intercept}, double{trend.line.slope},
                          static_cast<unsigned>(trend.line.codePoint));
            out_ << row;
        }
        out_ << "}};\n";
    }

    void OverWidths(std::vector<Trend> const& trends) {
        std::vector<std::string> names;
        out_ << "namespace {\n";
        for (char32_t c = FirstListed; c <= LastListed; ++c) {
            bool const isDigit = c >= '0' && c <= '9';
            char name[24];
            std::snprintf(name, sizeof name, isDigit ? "DigitOverWidths" : "U%02xOverWidths", static_cast<unsigned>(c));
            names.emplace_back(name);
            if (isDigit && c != '0') continue;
            auto const& over = trends[c - FirstListed].over;
            out_ << "constexpr std::array<std::uint16_t, " << over.size() << "> " << name;
            if (over.empty())
                out_ << "{}";
            else
                Numbers(over);
            out_ << ";\n";
        }
        out_ << "}\nconst std::array<WidthList, " << names.size() << "> Font0ScaleInfo::OverWidthRanges{{\n";
        for (auto const& name : names)
            out_ << "{" << name << ".data(), " << name << ".data() + " << name << ".size()},\n";
        out_ << "}};\n";
    }

private:
    std::ostream& out_;
};

std::vector<Trend> MakeTrends(Measure const& measure) {
    std::vector<Trend> trends;
    for (auto const& range : TrueTypeUtils::Font0CharacterRanges) {
        for (char32_t c = range.first; c <= range.last; ++c)
            trends.push_back(c <= LastListed ? MakeListedTrend(measure, c)
                                             : Trend{FitLine(Advances(measure, c), c), {}, {}});
    }
    return trends;
}

void CheckDigits(std::vector<Trend> const& trends) {
    auto const& zero = trends['0' - FirstListed];
    for (char32_t c = '1'; c <= '9'; ++c) {
        auto const& digit = trends[c - FirstListed];
        if (digit.over != zero.over || digit.under != zero.under)
            throw std::runtime_error("the digits of the font differ in width");
    }
}

std::string MakeTables(FaceChain& faces) {
    Measure const measure(faces);
    std::vector<Trend> const trends = MakeTrends(measure);
    CheckDigits(trends);
    std::ostringstream out;
    Writer writer(out);
    out << "// Made by tools/MakeFontTables.cpp from " << Font0File << "\n#include \"fields/text/Font0ScaleInfo.h\"\n"
        << "Font0ScaleInfo::CapturedRow const Font0ScaleInfo::CapturedZplChars";
    writer.Numbers(CapturedCharacters());
    out << ";\n";
    auto const advance = [&](char32_t c, unsigned height) { return measure.Advance(c, height); };
    auto const trailing = [&](char32_t c, unsigned height) { return measure.TrailingSpace(c, height); };
    writer.CapturedTable("CapturedZPLCharWidths_10_44", 10, 1, 44, advance);
    writer.CapturedTable("CapturedZPLCharWidths_45_300", 45, 5, 300, advance);
    writer.CapturedTable("CapturedZPLCharTrailingSpaces_45_300", 45, 5, 300, trailing);
    writer.Trends(trends);
    writer.OverWidths(trends);
    auto const& under = trends['0' - FirstListed].under;
    out << "const std::array<std::uint16_t, " << under.size() << "> Font0ScaleInfo::DigitUnderWidths";
    writer.Numbers(under);
    out << ";\n";
    return out.str();
}

}  // namespace

int main(int argc, char** argv) try {
    if (argc != 3) throw std::runtime_error("usage: MakeFontTables FONTFOLDER OUTPUT.cpp");
    FaceStore store;
    store.Files().SetFolder(argv[1]);
    for (auto const* name : {Font0File, Font0Supplement}) {
        if (!store.Open(store.Files().Find(name)))
            throw std::runtime_error(std::string(name) + " is not there: install the packages of packages.txt");
    }
    FaceChain faces(store, "0", {}, {Font0File, Font0Supplement});
    std::string const tables = MakeTables(faces);
    std::ofstream out(argv[2]);
    if (!(out << tables).flush()) throw std::runtime_error(std::string(argv[2]) + " cannot be written");
    return 0;
} catch (std::exception const& error) {
    std::cerr << "MakeFontTables: " << error.what() << '\n';
    return 1;
}
