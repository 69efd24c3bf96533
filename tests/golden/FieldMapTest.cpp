#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

#include "fields/map/FieldMap.h"
#include "foundation/Files.h"
#include "frontend/stream/ZplTokenizer.h"
#include "jobhost/model/PrintStream.h"
#include "tests/support/PagePictures.h"
#include "tests/support/StreamFiles.h"

// What the field map tells of the examples, of the golden pages, and of the hard cases below: the commands of each
// field are taken at their places, all others out of the stream, and the field is drawn alone. ZPL_STREAMS=DIR names a
// folder of further streams.

namespace {

using Scripting::PixelBox;
using ZplCore::ByteRange;
using ZplCore::FieldDetails;
using ZplCore::FieldPlace;

/// A page, and what is noted of it.
struct MappedPage {
    PixelBox ink;  ///< of the finished page
    struct Field {
        FieldDetails details;
        PixelBox shown;
        PixelBox drawn;
        bool isWhite;
        std::vector<ByteRange> ranges;  ///< of the stream, with what it is defined by
        std::optional<Scripting::PixelLine> baseline;
    };
    std::vector<Field> fields;
};

PixelBox InkOf(std::string_view rows, int width, int height) {
    PixelBox box;
    std::size_t const stride = static_cast<std::size_t>(width + 7) / 8;
    for (int y = 0; y < height; ++y) {
        auto const row = rows.substr(static_cast<std::size_t>(y) * stride, stride);
        auto const first = row.find_first_not_of('\0');
        if (first == row.npos) continue;
        auto const last = row.find_last_not_of('\0');
        int const left = static_cast<int>(first) * 8 + std::countl_zero(static_cast<std::uint8_t>(row[first]));
        int const right = static_cast<int>(last) * 8 + 8 - std::countr_zero(static_cast<std::uint8_t>(row[last]));
        box.Add({left, y, right, y + 1});
    }
    return box;
}

void AddRanges(FieldPlace const& place, ZplCore::FieldMap const& map, std::vector<ByteRange>& ranges) {
    if (place.inStream) ranges.push_back(*place.inStream);
    if (!place.inFormat) return;
    if (auto const source = map.Sources().Find(place.format, *place.inFormat)) ranges.push_back(*source);
}

MappedPage PageOf(ZplCore::FieldMap const& map, Scripting::ScriptGraphicContext& target) {
    auto const size = target.PageSize();
    MappedPage page{InkOf(target.PackedRows(), size.width, size.height), {}};
    for (auto const& field : map.Fields()) {
        auto const& ink = field.ink;
        bool const isWhite = field.IsEmpty() && !ink.white.IsEmpty();
        PixelBox const drawn = field.IsEmpty() ? PixelBox() : map.Gauge().OnPage(ink.All());
        auto& noted = page.fields.emplace_back(
            MappedPage::Field{*field.details, drawn.Within(map.Gauge().PrintArea()), drawn, isWhite, {}, {}});
        if (noted.shown.IsEmpty()) noted.shown = {};
        AddRanges(field.details->place, map, noted.ranges);
        AddRanges(field.details->definition, map, noted.ranges);
        if (ink.baseline) noted.baseline = map.Gauge().LineOnPage(*ink.baseline);
    }
    return page;
}

std::vector<MappedPage> DrawMapped(Desk& desk, std::string_view stream, unsigned mostCopies = 3) {
    std::vector<MappedPage> pages;
    desk.StartStream();
    Zpl::Host::PrintStream input([&desk] {
        auto session = desk.MakeSession();
        session->MapFields(ZplCore::FieldMap::Detail::Everything);
        session->Target().KeepPages();
        return session;
    });
    for (std::string_view rest = stream; !rest.empty();) {
        auto result = input.Consume(rest, false, true);
        rest = result.remaining;
        if (!result.label) continue;
        auto& label = std::get<1>(*result.label);
        for (unsigned copy = 0; copy < std::min(label.Quantity(), mostCopies); ++copy) {
            label.RenderLabel({}, copy, 0, false);
            pages.push_back(PageOf(*label.Fields(), input.Current().Target()));
        }
    }
    return pages;
}

bool IsOfFields(std::string_view command) {
    constexpr std::string_view Names = "FO FT FD FV FN FS FB TB FH FC FR FP GB GC GD GE GS GF XG IM SN SF RF WF FX";
    bool const isFont = command.starts_with('A');
    bool const isBarcode = command.starts_with('B') && command != "BY";
    return isFont || isBarcode || Names.find(command) != Names.npos;
}

/// What stays of a run of commands when its field is taken out: what holds for others too.
std::string WithoutField(std::string_view commands) {
    std::string rest;
    ZplTokenizer tokenizer;
    for (std::size_t position = 0; position < commands.size();) {
        auto const command =
            tokenizer.TokenizeString(commands, position, '^', '~', ',', true, Encoding::SingleByte).second;
        if (command && !IsOfFields(command->command)) rest += commands.substr(*command->offset, command->length);
    }
    return rest;
}

/// A typeset origin that goes on from the field before names its place where it stands alone.
std::string WithOwnOrigin(std::string_view commands, FieldDetails const& details) {
    std::string own(commands);
    auto const at = own.find("^FT");
    if (at == own.npos || !details.origin) return own;
    auto const end = std::min(own.find('^', at + 3), own.size());
    std::string const sent = own.substr(at + 3, end - at - 3);
    bool const isWhole =
        sent.find(',') != sent.npos && sent.front() != ',' && sent.back() != ',' && sent.find(",,") == sent.npos;
    if (isWhole) return own;
    auto const second = sent.find(',');
    auto const third = second == sent.npos ? sent.npos : sent.find(',', second + 1);
    return own.replace(at + 3, end - at - 3,
                       std::to_string(details.origin->x) + "," + std::to_string(details.origin->y) +
                           (third == sent.npos ? "" : sent.substr(third)));
}

std::string Alone(std::string const& stream, MappedPage const& page, MappedPage::Field const& field) {
    struct Piece {
        ByteRange range;
        bool stays;
    };
    std::vector<Piece> pieces;
    for (auto const& range : field.ranges) pieces.push_back({range, true});
    for (auto const& other : page.fields) {
        for (auto const& range : other.ranges) {
            auto const known = [&](Piece const& piece) { return piece.range == range; };
            if (std::none_of(pieces.begin(), pieces.end(), known)) pieces.push_back({range, false});
        }
    }
    std::sort(pieces.begin(), pieces.end(),
              [](Piece const& a, Piece const& b) { return a.range.offset < b.range.offset; });
    std::string alone;
    std::size_t done = 0;
    for (auto const& [range, stays] : pieces) {
        EXPECT_GE(range.offset, done) << "fields share commands";
        alone += stream.substr(done, range.offset - done);
        auto const commands = std::string_view(stream).substr(range.offset, range.length);
        alone += stays ? WithOwnOrigin(commands, field.details) : WithoutField(commands);
        done = range.End();
    }
    return alone + stream.substr(done);
}

/// All ink inside, and at most a dot more on each side; of what the page cuts, less may be left in sight.
bool Fits(PixelBox const& box, PixelBox const& ink, bool isCut) {
    if (ink.IsEmpty()) return box.IsEmpty() || isCut;
    auto const isTight = [isCut](int beyond) { return beyond == 0 || beyond == 1 || (isCut && beyond > 0); };
    return isTight(ink.left - box.left) && isTight(ink.top - box.top) && isTight(box.right - ink.right) &&
           isTight(box.bottom - ink.bottom);
}

std::string TextOf(PixelBox const& box) {
    return std::to_string(box.left) + "," + std::to_string(box.top) + " - " + std::to_string(box.right) + "," +
           std::to_string(box.bottom);
}

void ExpectBoxesHold(Desk& desk, std::string const& stream, std::string const& name) {
    // A page that begins with the picture of the one before shows no field alone.
    if (stream.find("^MCN") != stream.npos) return;
    auto const pages = DrawMapped(desk, stream);
    for (std::size_t p = 0; p < pages.size(); ++p) {
        for (auto const& field : pages[p].fields) {
            if (field.drawn.IsEmpty() || field.ranges.empty()) continue;
            auto const alone = Alone(stream, pages[p], field);
            auto const drawn = DrawMapped(desk, alone);
            ASSERT_GT(drawn.size(), p) << name << "\n" << alone;
            EXPECT_TRUE(Fits(field.shown, drawn[p].ink, field.shown != field.drawn))
                << name << " page " << p + 1 << ", " << NameOf(field.details.notes.kind) << " \"" << field.details.text
                << "\": the map says " << TextOf(field.shown) << ", there is " << TextOf(drawn[p].ink) << " of\n"
                << alone.substr(0, 1000);
        }
    }
}

TEST(FieldMap, BoxesHoldTheInkOfTheirFieldsAlone) {
    for (auto const& file : StreamFiles()) {
        auto const at = file.stem().string().rfind('@');
        unsigned const dpi =
            at == std::string::npos ? 203 : static_cast<unsigned>(std::atoi(file.stem().c_str() + at + 1));
        ExpectBoxesHold(*MakeStillDesk(dpi), ReadRegularFile(file), file.string());
    }
}

/// "barcode "12": ^FO1,1^BC^FD12^FS": what is told of a field, with the commands at its places.
std::string Told(MappedPage::Field const& field, std::string const& stream) {
    auto const& details = field.details;
    std::string told = std::string(NameOf(details.notes.kind)) + " \"" + details.text + "\"";
    if (details.number) told += " " + std::to_string(*details.number) + details.prompt;
    if (field.isWhite) told += " white";
    if (!field.isWhite && field.drawn.IsEmpty()) told += " undrawn";
    for (auto const& range : field.ranges) told += ": " + stream.substr(range.offset, range.length);
    return told;
}

struct HardCase {
    char const* name;
    std::string stream;
    std::vector<std::string> told;  ///< of the first page; may be empty where only the boxes count
    unsigned designDpi = 203;
    unsigned printerDpi = 203;
};

HardCase const HardCases[] = {
    {"what stands in front of an origin",
     "^XA^PW400^FX a^FS^BY2^FX b^A0N,30^FO9,9^FDa^FS^BY3\n^PW500^FWN^FO9,60^FX c^FDb^FS \r\n^FX d^FS^XZ",
     {"text \"a\": ^BY2^FX b^A0N,30^FO9,9^FDa^FS", "text \"b\": ^FO9,60^FX c^FDb^FS"}},
    {"fields without an end",
     "^XA^FO9,9^GFA,2,2,1,FF80\n ^FO40,9^GFA,1,1,1,F0 ^BY3 ^FO80,9^FDlast\n^PQ1^XZ",
     {"graphic \"\": ^FO9,9^GFA,2,2,1,FF80", "graphic \"\": ^FO40,9^GFA,1,1,1,F0",
      "text \"last\": ^BY3 ^FO80,9^FDlast"}},
    {"kinds",
     "^XA^FO9,9^GB50,50,2^FS^FO9,70^GB90,0,3^FS^FO9,80^GB40,9,9,W^FS^FO80,9^GC40,3^FS^FO130,9^GE60,30,2^FS"
     "^FO200,9^GD70,40,3,,L^FS^FO9,100^GS,40,40^FDA^FS^FO9,160^FB200,2,0,J^FDone "
     "\\&two^FS^FO9,220^TBN,200,40^FDx<<>y^FS"
     "^FO300,9^FV_41^FS^FO300,40^FH^FV_41^FS^FO300,90^BY2^BQN,2,3^FDLA,q^FS~DGR:P,1,1,FF^FO9,300^XGP,3,2^FS^XZ",
     {"box \"\": ^FO9,9^GB50,50,2^FS", "line \"\": ^FO9,70^GB90,0,3^FS", "box \"\" white: ^FO9,80^GB40,9,9,W^FS",
      "circle \"\": ^FO80,9^GC40,3^FS", "ellipse \"\": ^FO130,9^GE60,30,2^FS",
      "diagonal \"\": ^FO200,9^GD70,40,3,,L^FS", "graphic symbol \"A\": ^FO9,100^GS,40,40^FDA^FS",
      "text block \"one \ntwo\": ^FO9,160^FB200,2,0,J^FDone \\&two^FS",
      "text block \"x<y\": ^FO9,220^TBN,200,40^FDx<<>y^FS", "text \"_41\": ^FO300,9^FV_41^FS",
      "text \"A\": ^FO300,40^FH^FV_41^FS", "barcode \"LA,q\": ^FO300,90^BY2^BQN,2,3^FDLA,q^FS",
      "recalled picture \"\": ^FO9,300^XGP,3,2^FS"}},
    {"fields that draw nothing",
     "^XA^FO9,9^FDa^FS^FO9,40^FD^FS^FO9,60^B2N,50^FDx^FS^FO9,80^FN7\"Na,me\"^FS^FS^XZ",
     {"text \"a\": ^FO9,9^FDa^FS", "text \"\" undrawn: ^FO9,40^FD^FS", "barcode \"x\" undrawn: ^FO9,60^B2N,50^FDx^FS",
      "text \"\" 7Na,me undrawn: ^FO9,80^FN7\"Na,me\"^FS"}},
    {"numbers, one of them filled twice and one drawn twice",
     "^XA^FO9,9^FN1\"Who\"^FS^FT9,200^BCN,50^FN2^FS^FO9,250^FN2^FS^FN1^FDa^FS^FN2^FD12^FS^FN1^FDb^FS^XZ",
     {"text \"a\" 1Who: ^FN1^FDa^FS: ^FO9,9^FN1\"Who\"^FS", "barcode \"12\" 2: ^FN2^FD12^FS: ^FT9,200^BCN,50^FN2^FS",
      "text \"12\" 2: ^FN2^FD12^FS: ^FO9,250^FN2^FS", "text \"b\" 1Who: ^FN1^FDb^FS: ^FO9,9^FN1\"Who\"^FS"}},
    {"stored formats",
     "^XA^DFR:A^FS^FO9,9^A0N,30\n^FN1\"Who\"^FS^FO9,60\n^GB50,50,2^FS^FO99,60^FN2\"What\"^FS^XZ^XA^XFR:A^FS^FN1^FDa^FS^"
     "XZ",
     {"box \"\": ^FO9,60\n^GB50,50,2^FS", "text \"a\" 1Who: ^FN1^FDa^FS: ^FO9,9^A0N,30\n^FN1\"Who\"^FS",
      "text \"\" 2What undrawn: ^FO99,60^FN2\"What\"^FS"}},
    {"counting and clocks",
     "^XA^PQ3^FO9,9^A0N,40^SN007,9,Y^FS^FO9,60^A0N,40^FDAB9^SFAAd,1^FS^FO9,120^FC%^FD%H:%M^FS^XZ",
     {"text \"007\": ^FO9,9^A0N,40^SN007,9,Y^FS", "text \"AB9\": ^FO9,60^A0N,40^FDAB9^SFAAd,1^FS",
      "text \"03:04\": ^FO9,120^FC%^FD%H:%M^FS"}},
    {"turned fields",
     "^XA^CF0,30,25^FO99,50^A0R,30,25^FDAgj^FS^FO200,50^A0I,30,20^FDAb^FS^FT300,200^A0B,30,30^FDgj^FS^FO20,300^BY2^BCR,"
     "50^FD12^FS"
     "^FT300,500^BXI,4,200^FDx^FS^FO400,50^FB150,3,2,C^A0R,24,24^FDin a block^FS^FT500,400^FB150,3,2,R^A0B,24,24^FDin "
     "a "
     "block^FS^FO99,600^GSR,50,40^FDB^FS^XZ",
     {}},
    {"turned, mirrored and moved pages",
     "^XA^PMY^POI^LH20,30^LT12^PW500^LL400^FO10,10^A0N,30,30^FDAgb^FS^LH0,9^FO0,100^BY2^BCN,50,Y,Y^FD123^FS^XZ"
     "^XA^LT-12^FO10,30^ADR,36,20^FDAgb^FS^XZ^XA^POI^FO10,30^AFN,26,13^FDAgb^FS^FT90,200,1^FDright^FS^XZ"
     "^XA^JMB^FO10,30^AFN,26,13^FDAgb^FS^FO9,99^GD70,40,3^FS^XZ",
     {}},
    {"what runs past the page",
     "^XA^PMN^LT0^PW200^LL200^FO150,9^A0N,50,50^FDwide^FS^FO-20,50^GB90,90,4^FS^FT50,15^A0N,40,40^FDhigh^FS^FO300,9^"
     "FDoff^FS"
     "^FO9,180^BY3^BCN,80^FD12^FS^FO9,190^GC90,2^FS^XZ",
     {}},
    {"reversed", "^XA^FO9,9^GB200,60,60^FS^FO20,20^FR^A0N,40,40^FDinside^FS^LRY^FO150,9^GB90,60,9^FS^XZ", {}},
    {"ways of running",
     "^XA^FO99,9^FPV,3^A0N,30,30^FDdown^FS^FO200,9^FPR,2^ADN,36,20^FDback^FS^FO300,200^FPV^A0R,30,30^FDdo^FS^XZ",
     {}},
    {"units",
     "^XA^MUM^FO10,10^A0N,6,5^FDmm^FS^FO10,20^GB20,10,0.5^FS^MUD,200,600^FO100,100^A0N,30,30^FDscaled^FS^XZ",
     {}},
    {"another printer than the design's",
     "^XA^FO33,33^A0N,35,31^FDAgj^FS^FO33,99^ABN,22,14^FDAgj^FS^FO33,130^GD77,41,3^FS^FO33,180^BY3^BCN,51^FD12^FS^"
     "FO201,31^GC55,3^FS"
     "^FO201,99^GFA,4,4,2,F01F8001^FS^FO301,99^GE51,77,5^FS^FT333,333^A0R,35,31^FDAgj^FS^FO333,44^GB55,33,3,,4^FS^XZ",
     {},
     203,
     300},
    {"a coarser one",
     "^XA^FO33,33^A0N,35,31^FDAgj^FS^FO33,180^BY3^BCN,51^FD12^FS^FO201,99^GFA,4,4,2,F01F8001^FS^XZ",
     {},
     300,
     203},
};

TEST(FieldMap, TellsWhatAFieldIsAndWhereItStands) {
    for (auto const& [name, stream, expected, designDpi, printerDpi] : HardCases) {
        auto options = StillOptions(printerDpi);
        options.designDpi = designDpi;
        Desk desk(options);
        ExpectBoxesHold(desk, stream, name);
        if (expected.empty()) continue;
        std::vector<std::string> told;
        auto const pages = DrawMapped(desk, stream);
        for (auto const& field : pages.at(0).fields) told.push_back(Told(field, stream));
        EXPECT_EQ(told, expected) << name;
    }
}

TEST(FieldMap, TextStandsOnItsBaseline) {
    auto const desk = MakeStillDesk();
    for (auto const& [letter, x, y] : {std::tuple{'N', 100, 200}, {'R', 100, 200}, {'I', 100, 200}, {'B', 100, 200}}) {
        for (std::string const shape : {"", "^POI", "^PMY"}) {
            auto const page = DrawMapped(*desk, "^XA^PW400^LL400^FWN" + shape + "^FT" + std::to_string(x) + "," +
                                                    std::to_string(y) + "^A0" + letter + ",50,50^FDHHH^FS^XZ")
                                  .at(0);
            auto const& line = page.fields.at(0).baseline.value();
            bool const isLevel = letter == 'N' || letter == 'I';
            // The feet of the capitals are one side of their ink, and they read along it.
            auto const& ink = page.ink;
            EXPECT_TRUE(isLevel ? line.y1 == line.y2 && (line.y1 == ink.top || line.y1 == ink.bottom)
                                : line.x1 == line.x2 && (line.x1 == ink.left || line.x1 == ink.right))
                << letter << shape << TextOf(ink) << " " << line.x1 << "," << line.y1 << " " << line.x2 << ","
                << line.y2;
        }
    }
}

}  // namespace
